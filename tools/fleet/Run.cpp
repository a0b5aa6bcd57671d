#include "fleet/Run.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "common/command.h"

namespace {
// Two kinds of signals matter: one says that a child has ended, the others ask this program to end.
// They are blocked and waited for, so that none is missed and none comes at a bad moment.
sigset_t blockSignals() {
    std::signal(SIGPIPE, SIG_IGN);  // the run goes on when nobody reads the messages
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
}  // namespace

Run::Run(const std::vector<Input>& inputFiles, std::size_t jobCount, ProductCD& productCD,
         CIniFile& configurationFile)
    : files(inputFiles),
      cd(productCD),
      configuration(configurationFile),
      jobs(std::min(jobCount, inputFiles.size())),
      results(inputFiles.size()),
      next(1) {}

// Having no room for another process is not an error as long as one runs: when it ends, there is
// room. But a process that ended before it took a file ends the run, or it would be started again
// and again.
CString Run::convertAll(bool isWatched) {
    constexpr timespec kPause = {0, 100'000'000};  // between two looks at the progress
    const sigset_t awaited = blockSignals();
    for (;;) {
        for (Job& job : jobs) reap(job);
        if (!startError.IsEmpty()) return startError;
        for (Job& job : jobs) start(job);
        if (isWatched) showProgress();
        if (!isAnyRunning()) break;
        startError.Empty();
        const int signal = sigtimedwait(&awaited, nullptr, &kPause);
        if (signal > 0 && signal != SIGCHLD) endBy(signal, awaited);
    }
    if (startError.IsEmpty()) failRest();
    return startError;
}

std::size_t Run::count(bool (*isCounted)(const Result& result)) {
    return static_cast<std::size_t>(std::count_if(results.begin(), results.end(), isCounted));
}

bool Run::isAnyRunning() {
    return std::any_of(jobs.begin(), jobs.end(), [](const Job& job) { return job.process != 0; });
}

// Looks whether the process has ended.
void Run::reap(Job& job) {
    int status = 0;
    if (job.process == 0 || waitpid(job.process, &status, WNOHANG) <= 0) return;
    job.process = 0;
    if (job.partial[0] != '\0') unlink(job.partial);
    const bool isWithoutMemory =
        WIFEXITED(status) && WEXITSTATUS(status) == Conversion::kMemoryRanOut;
    if (!job.hasBegun)
        startError = isWithoutMemory ? std::strerror(ENOMEM) : "it was killed";
    else if (isWithoutMemory)
        results[job.current].outcome = Outcome::kWithoutMemory;
}

// Starts a process if none runs and there are files left.
void Run::start(Job& job) {
    if (job.process != 0 || next[0] >= files.size()) return;
    job.hasBegun = false;
    job.partial[0] = '\0';
    const pid_t parent = getpid(), process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);   // when nobody is left to count the files, stop
        if (getppid() != parent) _exit(0);  // the signal would come no more
        work(job);
    }
    job.process = std::max(0, process);
    if (process < 0) startError = std::strerror(errno);
}

void Run::work(Job& job) {
    Conversion conversion(cd, configuration, job.partial);
    job.hasBegun = true;
    for (std::size_t file; (file = next[0]++) < files.size();) {
        job.current = file;
        results[file] = conversion.convert(files[file].path);
    }
    _exit(0);
}

void Run::showProgress() {
    std::fprintf(stderr, "\r%zu of %zu", std::min(next[0].load(), files.size()), files.size());
}

// Kills the processes that still run, and removes what they have written.
void Run::abandon() {
    for (Job& job : jobs) {
        if (job.process == 0 || kill(job.process, SIGKILL) != 0) continue;
        waitpid(job.process, nullptr, 0);
        if (job.partial[0] != '\0') unlink(job.partial);
    }
}

// Ends the process so that the caller sees which signal it was.
void Run::endBy(int signal, const sigset_t& blocked) {
    abandon();
    std::raise(signal);
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    _exit(kCouldNotRun);  // the first process of a container ignores the signal
}

// Names the files without a result. A process may have been killed even between taking a file and
// noting which one.
void Run::failRest() {
    for (std::size_t i = 0; i != files.size(); ++i) {
        const Outcome outcome = results[i].outcome;
        if (outcome == Outcome::kNone) fail(files[i].path, "its process was killed");
        if (outcome == Outcome::kWithoutMemory) fail(files[i].path, std::strerror(ENOMEM));
    }
}
