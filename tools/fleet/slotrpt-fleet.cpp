#include <dirent.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <vector>

#include "common/command.h"
#include "common/files.h"
#include "fleet/Conversion.h"
#include "util/CString.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-fleet [--jobs=N] PATH...\n"
    "Converts detection files as slotrpt does, and lets no wrong report pass. PATH is a file, or\n"
    "a directory with files *.ini. x.ini gives x.report, any other name gives name.report.\n"
    "\n"
    "  --jobs=N   convert N files at a time, 1 to 256; by default one for each processor\n"
    "  --help     print this text\n"
    "  --version  print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD.\n"
    "Exit status: 0 all files were converted, 1 some failed or are of an unknown system,\n"
    "2 the command line is wrong, or the run could not be made or finished.\n";

// A detection file. The numbers tell its folder, whatever the path to it looks like.
struct Input {
    CString path;
    dev_t device = 0;
    ino_t folder = 0;
};
std::vector<Input> inputs;

auto reportOf(const Input& input) {
    return std::make_tuple(input.device, input.folder, stemOf(input.path.c_str()));
}

// Those that *.ini matches in a shell, in any case of letters.
int isDetectionFile(const dirent* entry) {
    return entry->d_name[0] != '.' && stemOf(entry->d_name) != entry->d_name;
}

int collectFolder(const CString& path, const struct stat& status) {
    dirent** entries = nullptr;
    const int count = scandir(path.c_str(), &entries, isDetectionFile, nullptr);
    if (count < 0) return complainUnreadable(path, std::strerror(errno));
    const CString folder = path.EndsWith("/") ? path : path + "/";
    for (int i = 0; i < count; ++i) {
        inputs.push_back({folder + entries[i]->d_name, status.st_dev, status.st_ino});
        std::free(entries[i]);
    }
    std::free(entries);
    return count == 0 ? complain("there is no " + folder + "*.ini") : kFine;
}

int collect(const CString& path) {
    struct stat self, folder;
    if (stat(path.c_str(), &self) != 0 || stat((folderOf(path) + ".").c_str(), &folder) != 0)
        return complainUnreadable(path, std::strerror(errno));
    if (S_ISDIR(self.st_mode)) return collectFolder(path, self);
    if (path.EndsWith(".report")) return complain(path + " is a report");
    inputs.push_back({path, folder.st_dev, folder.st_ino});
    return kFine;
}

int collectInputs(char* operands[]) {
    for (; *operands; ++operands)
        if (collect(*operands) != kFine) return kCouldNotRun;
    std::stable_sort(inputs.begin(), inputs.end(),
                     [](const Input& a, const Input& b) { return reportOf(a) < reportOf(b); });
    for (auto a = inputs.begin(); a != inputs.end() && a + 1 != inputs.end(); ++a)
        if (reportOf(a[0]) == reportOf(a[1]))
            return complain(a[0].path + " and " + a[1].path + " have the same report");
    return kFine;
}

// A place in which one child at a time converts every jobCount-th file. When it fails with one of
// them, another child goes on with the next.
struct Job {
    pid_t process;  // 0: none
    std::size_t next;
    char partial[PATH_MAX];
};

constexpr long kMaxJobs = 256;
auto jobCount = static_cast<std::size_t>(std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, kMaxJobs));
Job* jobs = nullptr;
Job* endOfJobs = nullptr;
std::size_t failed = 0, unknown = 0;
bool isWatched = false;  // the progress is shown

// The children share the jobs, so that it is known which file a child had when it crashed.
void shareJobs() {
    constexpr int kAccess = PROT_READ | PROT_WRITE, kKind = MAP_SHARED | MAP_ANONYMOUS;
    void* const memory = mmap(nullptr, jobCount * sizeof(Job), kAccess, kKind, -1, 0);
    if (memory == MAP_FAILED) CString::OutOfMemory();
    jobs = static_cast<Job*>(memory);
    endOfJobs = jobs + jobCount;
    for (std::size_t i = 0; i < jobCount; ++i) jobs[i].next = i;
}

bool isRunning(const Job& job) { return job.process != 0; }

void finish(Job& job, int status) {
    job.process = 0;
    if (job.next >= inputs.size()) return;  // even if a signal killed it after its last file
    const int ending = WIFEXITED(status) ? WEXITSTATUS(status) : kFailed;
    const CString& path = inputs[job.next].path;
    if (WIFSIGNALED(status))
        fail(path, job.partial, CString("killed by signal ") + CString(WTERMSIG(status)));
    if (ending == kWithoutMemory) fail(path, job.partial, std::strerror(ENOMEM));
    ++(ending == kOfUnknownSystem ? unknown : failed);
    job.next += jobCount;
}

// Looks whether the child has ended.
void reap(Job& job) {
    int status = 0;
    if (isRunning(job) && waitpid(job.process, &status, WNOHANG) > 0) finish(job, status);
}

// Starts a child if none runs and there are files left. Returns 0, or an errno if there is no room
// for another process.
int start(Job& job) {
    if (isRunning(job) || job.next >= inputs.size()) return 0;
    const pid_t parent = getpid(), process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);       // when nobody is left to count the files, stop
        if (getppid() != parent) _exit(kDone);  // the signal would come no more
        for (; job.next < inputs.size(); job.next += jobCount)
            convert(inputs[job.next].path, job.partial);
        _exit(kDone);
    }
    job.process = std::max(0, process);
    return process < 0 ? errno : 0;
}

// Kills the children that still run, and removes what they have written.
void abandon() {
    for (Job* job = jobs; job != endOfJobs; ++job) {
        if (!isRunning(*job) || kill(job->process, SIGKILL) != 0) continue;
        waitpid(job->process, nullptr, 0);
        unlink(job->partial);
    }
}

// Two kinds of signals matter: one says that a child has ended, the others ask this program to end.
// They are blocked and waited for, so that none is missed and none comes at a bad moment.
sigset_t blockSignals() {
    std::signal(SIGPIPE, SIG_IGN);  // the run goes on when nobody reads the messages,
    std::signal(SIGXFSZ, SIG_IGN);  // and when their file may not grow
    sigset_t signals;
    sigemptyset(&signals);
    for (const int request : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        if (std::signal(request, SIG_DFL) == SIG_IGN)
            std::signal(request, SIG_IGN);  // a signal that the caller ignores stays ignored
        else
            sigaddset(&signals, request);
    std::signal(SIGCHLD, SIG_DFL);  // if a parent ignored this signal, it would never be sent
    sigaddset(&signals, SIGCHLD);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

// Ends the process so that the caller sees which signal it was.
[[noreturn]] void endBy(int signal, const sigset_t& blocked) {
    abandon();
    std::raise(signal);
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    _exit(kCouldNotRun);  // the first process of a container ignores the signal
}

void showProgress() {
    std::size_t done = 0;
    for (const Job* job = jobs; job != endOfJobs; ++job) done += job->next / jobCount;
    std::fprintf(stderr, "\r%zu of %zu", done, inputs.size());
}

// Returns 0, or an errno if no process can be started. Having no room for another one is not an
// error as long as a child runs: when it ends, there is room.
int convertAll() {
    constexpr timespec kPause = {0, 100'000'000};  // between two looks at the progress
    const sigset_t awaited = blockSignals();
    for (;;) {
        int error = 0;
        std::for_each(jobs, endOfJobs, reap);
        for (Job* job = jobs; job != endOfJobs; ++job)
            if (const int reason = start(*job)) error = reason;
        if (isWatched) showProgress();
        if (std::none_of(jobs, endOfJobs, isRunning)) return error;
        const int signal = sigtimedwait(&awaited, nullptr, &kPause);
        if (signal > 0 && signal != SIGCHLD) endBy(signal, awaited);
    }
}

constexpr option kOptions[] = {{"jobs", required_argument, nullptr, 'j'}, kHelp, kVersion, {}};

bool takeOption(int, const char* value) {
    const int count = CString(value).ToInt();
    jobCount = static_cast<std::size_t>(count);
    return count >= 1 && count <= kMaxJobs && CString(count) == value;
}

int run(int count, char* operands[]) {
    if (count == 0) return rejectArguments();
    if (requireConfiguration().IsEmpty() || collectInputs(operands) != kFine) return kCouldNotRun;
    const bool isFile = count == 1 && inputs[0].path == operands[0];
    isWatched = !isFile && isatty(STDERR_FILENO);
    shareJobs();
    std::atexit(abandon);  // for when memory runs out
    const int error = convertAll();
    if (isWatched) std::fputc('\n', stderr);
    if (error != 0) return complain(CString("cannot start a process: ") + std::strerror(error));
    if (!isFile)
        std::printf("%zu of %zu converted, %zu failed, %zu unknown system%s\n",
                    inputs.size() - failed, inputs.size(), failed, unknown,
                    unknown == 1 ? "" : "s");
    return failed + unknown == 0 ? kFine : kFindings;
}
}  // namespace

int main(int argc, char* argv[]) {
    return runCommand({"slotrpt-fleet", kUsage, kOptions, takeOption, run}, argc, argv);
}
