#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "common/command.h"
#include "common/printable.h"
#include "util/CString.h"
#include "util/MyFileIO.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-fleet FOLDER [JOBS]\n"
    "Converts every detection file FOLDER/*.ini with slotrpt, JOBS of them at a time, and\n"
    "writes the report of x.ini to x.report beside it. JOBS is a number from 1 to 256, by\n"
    "default that of the processors.\n"
    "\n"
    "  --help     print this text\n"
    "  --version  print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD. SLOTRPT may\n"
    "name another converter.\n"
    "Exit status: 0 all files were converted, 1 some failed, 2 nothing could be done.\n";

constexpr int kMaxJobs = 256;
constexpr std::string_view kExtension = ".ini";

// ---------------------------------------------------------------- The files and the converter

// The names of the detection files in a folder: those that *.ini matches in a shell, in byte order.
class FileList {
public:
    FileList() = default;
    ~FileList() { delete[] m_names; }
    FileList(const FileList&) = delete;
    FileList& operator=(const FileList&) = delete;

    // Returns whether the folder could be read to its end. If not, errno says why.
    bool read(const CString& folder);
    std::size_t size() const { return m_size; }
    const CString& operator[](std::size_t i) const { return m_names[i]; }

private:
    void add(const char* name);

    CString* m_names = nullptr;
    std::size_t m_size = 0, m_room = 0;
};

bool FileList::read(const CString& folder) {
    DIR* const directory = opendir(folder.c_str());
    if (!directory) return false;
    errno = 0;
    while (const dirent* entry = readdir(directory)) {
        const std::string_view name = entry->d_name;
        if (name[0] != '.' && name.size() > kExtension.size() &&
            name.substr(name.size() - kExtension.size()) == kExtension)
            add(entry->d_name);
        errno = 0;
    }
    const int error = errno;
    closedir(directory);
    std::sort(m_names, m_names + m_size);
    errno = error;
    return error == 0;
}

void FileList::add(const char* name) {
    if (m_size == m_room) {
        m_room = 2 * m_room + 64;
        auto* names = new (std::nothrow) CString[m_room];
        if (!names) CString::OutOfMemory();
        std::move(m_names, m_names + m_size, names);
        delete[] std::exchange(m_names, names);
    }
    m_names[m_size++] = name;
}

bool canRun(const CString& program) { return access(program.c_str(), X_OK) == 0; }

// The path of the program in the first folder of PATH that has it. If none has, the name itself.
CString findOnPath(const CString& name) {
    CString folders = std::getenv("PATH");
    const unsigned total = folders.GetNumberTokens(":");
    for (unsigned i = 0; i < total; ++i) {
        const CString program = folders.GetToken(i, ":") + "/" + name;
        if (canRun(program)) return program;
    }
    return name;
}

// The program to run: what SLOTRPT names, or the converter beside this program, or on PATH.
CString findConverter() {
    const CString chosen = std::getenv("SLOTRPT");
    if (chosen.Find("/") >= 0) return chosen;
    if (!chosen.IsEmpty()) return findOnPath(chosen);
    char self[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    self[std::max<ssize_t>(0, length)] = '\0';
    const CString beside = CString(self).GetPath() + "/slotrpt";
    return canRun(beside) ? beside : findOnPath("slotrpt");
}

// x.ini becomes x.report.
CString reportPathOf(const CString& input) {
    return input.Left(static_cast<int>(input.GetLength() - kExtension.size())) + ".report";
}

// ---------------------------------------------------------------- One conversion

// A place where one converter runs at a time.
struct Job {
    pid_t process = 0;            // 0: none
    CString input;                // the detection file
    CString partial;              // the report while it is written
    std::FILE* errors = nullptr;  // what the converter writes to standard error
};

// The last line of the file, with its line feed; "" for an empty file.
CString lastLineOf(const CString& path) {
    CMyFileIO file;
    CString line, last;
    if (file.OpenFile(path))
        while (file.ReadString(line)) last = std::move(line);
    return last;
}

// The first line that is not blank of what the converter wrote to standard error; "" if there is
// none. The file is read without its stream, whose buffer may still hold text of the last run.
CString firstLineOf(std::FILE* errors) {
    char text[512];
    const ssize_t length = pread(fileno(errors), text, sizeof text - 1, 0);
    text[std::max<ssize_t>(0, length)] = '\0';
    CString line = text;
    line.Trim();
    return line.GetToken(0, "\n");
}

// Why a run that ended with this status wrote no complete report; "" when it wrote one. The
// converter does not notice a full disk, so the last line of the report is checked.
CString failureOf(const Job& job, int status) {
    const CString error = firstLineOf(job.errors);
    if (!error.IsEmpty()) return error;
    if (WIFSIGNALED(status)) return CString("killed by signal ") + CString(WTERMSIG(status));
    CString lastLine = lastLineOf(job.partial);
    if (WEXITSTATUS(status) != 0) {
        lastLine.Trim();
        return lastLine.IsEmpty() ? "exit status " + CString(WEXITSTATUS(status)) : lastLine;
    }
    const bool isComplete =
        lastLine.StartsWith("OnBoardAdapters = ") && lastLine.GetLastChar() == '\n';
    return isComplete ? "" : "the report is not complete";
}

// ---------------------------------------------------------------- All conversions

// Keeps a number of converters running until all files are done.
//
// Two kinds of signals matter: one says that a converter has ended, the others ask this program to
// end. They are blocked, and convertAll() waits for them, so that none is missed and none comes at
// a bad moment. The destructor kills the converters that still run, and removes their partial
// reports.
class Fleet {
public:
    Fleet(const CString& path, const FileList& fileList, const CString& program, int count);
    ~Fleet();
    Fleet(const Fleet&) = delete;
    Fleet& operator=(const Fleet&) = delete;

    // Returns the exit status, or minus the signal that asks for the end.
    int convertAll();

private:
    bool openErrors();
    bool startIdle();
    bool start(Job& job);
    int launch(Job& job, int output) const;
    void finishEnded();
    void finish(Job& job, int status);
    void endProgress() const;

    const CString folder;
    const FileList& files;
    const CString converter;
    const int jobCount;
    const bool isWatched = isatty(STDERR_FILENO) != 0;
    Job jobs[kMaxJobs];
    int running = 0;
    bool isBroken = false;  // no further file can be converted
    std::size_t started = 0, converted = 0, failed = 0;
    sigset_t awaited;   // what convertAll() waits for
    sigset_t original;  // what was blocked before; a converter gets this
    sigset_t restored;  // ignored here, but set to the default in a converter
};

Fleet::Fleet(const CString& path, const FileList& fileList, const CString& program, int count)
    : folder(path), files(fileList), converter(program), jobCount(count) {
    for (int i = 0; i < jobCount; ++i)
        jobs[i].partial =
            folder + "/.slotrpt-fleet." + CString(static_cast<long>(getpid())) + "." + CString(i);
    std::signal(SIGCHLD, SIG_DFL);  // if a parent ignored this signal, it would never be sent
    std::signal(SIGPIPE, SIG_IGN);  // the conversion goes on when nobody reads the messages
    sigemptyset(&restored);
    sigaddset(&restored, SIGPIPE);
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGCHLD);
    for (const int request : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action;
        const bool isIgnored =
            sigaction(request, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
        if (!isIgnored) sigaddset(&awaited, request);
    }
    sigprocmask(SIG_BLOCK, &awaited, &original);
}

Fleet::~Fleet() {
    for (Job& job : jobs) {
        if (job.process != 0) {
            kill(job.process, SIGKILL);
            waitpid(job.process, nullptr, 0);
            unlink(job.partial.c_str());
        }
        if (job.errors) std::fclose(job.errors);
    }
    sigprocmask(SIG_SETMASK, &original, nullptr);
}

int Fleet::convertAll() {
    if (!openErrors()) return kCouldNotRun;
    while (startIdle() && running != 0) {
        int signal = 0;
        sigwait(&awaited, &signal);
        if (signal != SIGCHLD) {
            endProgress();
            return -signal;
        }
        finishEnded();
    }
    if (isBroken) return kCouldNotRun;
    endProgress();
    std::printf("%zu of %zu converted, %zu failed\n", converted, files.size(), failed);
    return failed == 0 ? kFine : kFindings;
}

bool Fleet::openErrors() {
    for (int i = 0; i < jobCount; ++i) {
        std::FILE* const file = jobs[i].errors = std::tmpfile();
        if (file && fcntl(fileno(file), F_SETFD, FD_CLOEXEC) == 0) continue;
        complain(CString("cannot make a temporary file: ") + std::strerror(errno));
        return false;
    }
    return true;
}

// Starts a converter in each idle job, as long as there are files. Returns whether to go on.
bool Fleet::startIdle() {
    for (int i = 0; i < jobCount && started < files.size(); ++i)
        if (jobs[i].process == 0 && !start(jobs[i])) break;
    return !isBroken;
}

// Starts a converter for the next file. Returns false if none was started. If the system has no
// room for another process, that is no error as long as a converter runs: when it ends, there will
// be room.
bool Fleet::start(Job& job) {
    const char* const path = job.partial.c_str();
    const int output = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (output < 0) {
        complain("cannot write " + job.partial + ": " + std::strerror(errno));
        isBroken = true;
        return false;
    }
    job.input = folder + "/" + files[started];
    const int error = launch(job, output);
    close(output);
    if (error == 0) {
        ++started;
        ++running;
        return true;
    }
    unlink(path);
    if (error == EAGAIN && running != 0) return false;
    complain("cannot run " + converter + ": " + std::strerror(error));
    isBroken = true;
    return false;
}

// Runs the converter on the job's file. The result is an errno, or 0.
int Fleet::launch(Job& job, int output) const {
    const int errors = fileno(job.errors);
    if (ftruncate(errors, 0) != 0 || lseek(errors, 0, SEEK_SET) != 0) return errno;

    posix_spawn_file_actions_t redirections;
    posix_spawn_file_actions_init(&redirections);
    posix_spawn_file_actions_adddup2(&redirections, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&redirections, errors, STDERR_FILENO);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawnattr_setsigmask(&attributes, &original);
    posix_spawnattr_setsigdefault(&attributes, &restored);

    CString program = converter, argument = CString("/rwpm:") + job.input;
    char* const argv[] = {program.c_str(), argument.c_str(), nullptr};
    const int error =
        posix_spawn(&job.process, program.c_str(), &redirections, &attributes, argv, environ);
    if (error != 0) job.process = 0;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&redirections);
    return error;
}

void Fleet::finishEnded() {
    int status = 0;
    for (pid_t ended; (ended = waitpid(-1, &status, WNOHANG)) > 0;)
        for (Job& job : jobs)
            if (job.process == ended) finish(job, status);
}

// Gives the report its name, or says why there is none.
void Fleet::finish(Job& job, int status) {
    job.process = 0;
    --running;
    CString reason = failureOf(job, status);
    if (reason.IsEmpty() && std::rename(job.partial.c_str(), reportPathOf(job.input).c_str()) != 0)
        reason = std::strerror(errno);
    if (reason.IsEmpty()) {
        ++converted;
    } else {
        ++failed;
        unlink(job.partial.c_str());
        // The carriage return lets the line replace the progress.
        std::fprintf(stderr, "%sfailed: %s: %s\n", isWatched ? "\r" : "",
                     printable(job.input).c_str(), printable(reason).c_str());
    }
    if (isWatched) std::fprintf(stderr, "\r%zu of %zu", converted + failed, files.size());
}

void Fleet::endProgress() const {
    if (isWatched) std::fputc('\n', stderr);
}

// ---------------------------------------------------------------- The command

// The number of jobs that a text asks for; 0 if the text is no valid number of jobs.
int jobCountOf(const char* text) {
    const CString number = text;
    const int count = number.ToInt();
    return count >= 1 && count <= kMaxJobs && CString(count) == number ? count : 0;
}

int processorCount() {
    const long count = sysconf(_SC_NPROCESSORS_ONLN);
    return static_cast<int>(std::clamp(count, 1L, static_cast<long>(kMaxJobs)));
}

int convertFolder(const CString& folder, int jobCount) {
    FileList files;
    if (!files.read(folder)) return complain("cannot read " + folder + ": " + std::strerror(errno));
    if (files.size() == 0) return complain("there is no " + folder + "/*.ini");
    const CString converter = findConverter();
    if (!canRun(converter))
        return complain("cannot run " + converter + ": " + std::strerror(errno));
    int result = 0;
    {
        Fleet fleet(folder, files, converter, jobCount);
        result = fleet.convertAll();
    }
    if (result < 0) {
        std::signal(-result, SIG_DFL);
        std::raise(-result);  // so that the caller sees which signal ended the program
    }
    return result;
}

constexpr option kOptions[] = {kHelp, kVersion, {}};

bool takeOption(int, const char*) { return true; }

int run(int count, char* operands[]) {
    const int jobCount = count == 2 ? jobCountOf(operands[1]) : processorCount();
    if (count < 1 || count > 2 || jobCount == 0 || *operands[0] == '\0') return rejectArguments();
    return convertFolder(operands[0], jobCount);
}

constexpr Command kFleet = {"slotrpt-fleet", kUsage, kOptions, takeOption, run};
}  // namespace

int main(int argc, char* argv[]) { return runCommand(kFleet, argc, argv); }
