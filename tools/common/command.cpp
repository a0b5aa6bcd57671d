#include "common/command.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

#include "common/printable.h"

namespace {
const Command* running = nullptr;
bool isFinished = false;

// If memory runs out, the process exits with status 1. For a command, 1 means findings, so this
// handler replaces it.
void endUnfinished() {
    if (!isFinished) std::_Exit(kCouldNotRun);
}

// What the standard library throws, nothing catches.
[[noreturn]] void endByException() {
    try {
        std::rethrow_exception(std::current_exception());
    } catch (const std::exception& error) {
        complain(CString("unexpected error: ") + error.what());
    }
    std::_Exit(kCouldNotRun);
}

// Occupies the descriptors that the caller closed, or a file would be opened in their place and
// take what is printed. Each is opened so that its use fails: the input only for writing, the
// outputs only for reading.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) < 0)
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

int printHelp() {
    std::fputs(running->usage, stdout);
    return kFine;
}

// After a wrong call.
int printUsageLine() {
    const char* const usage = running->usage;
    std::fprintf(stderr, "%.*s\n", static_cast<int>(std::strcspn(usage, "\n")), usage);
    return kCouldNotRun;
}

int printVersion() {
    std::printf("%s %s\n", running->name, SLOTRPT_VERSION);
    return kFine;
}

// Asks the system once more for its reason: that of the first refusal may be long gone.
int complainUnwritten() {
    const bool isTaken = write(STDOUT_FILENO, "\n", 1) == 1;
    return complain(CString("cannot write: ") +
                    (isTaken ? "a part was refused" : std::strerror(errno)));
}

// Takes the options and does the work. getopt_long itself reports an option that it does not know.
int parseAndRun(int argc, char* argv[]) {
    CString name = running->name;
    if (argc > 0) argv[0] = name.c_str();  // messages of getopt_long begin with it
    for (int option;
         (option = getopt_long(argc, argv, running->letters, running->options, nullptr)) != -1;) {
        if (option == kHelp.val) return printHelp();
        if (option == kVersion.val) return printVersion();
        if (option == '?') return printUsageLine();
        const CString reason = running->takeOption(option, optarg);
        if (!reason.IsEmpty()) return rejectArguments(reason);
    }
    return running->run(argc - optind, argv + optind);
}
}  // namespace

int runCommand(const Command& command, int argc, char* argv[]) {
    running = &command;
    occupyStandardDescriptors();
    std::atexit(endUnfinished);
    std::set_new_handler(CString::OutOfMemory);
    std::set_terminate(endByException);
    std::signal(SIGXFSZ, SIG_IGN);  // writing to a file at its size limit fails, as to a full disk
    int status = parseAndRun(argc, argv);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) status = complainUnwritten();
    isFinished = true;
    return status;
}

int complain(const CString& message) {
    std::fprintf(stderr, "%s: %s\n", running->name, printable(message).c_str());
    return kCouldNotRun;
}

int complainUnreadable(const CString& path, const CString& reason) {
    return complain("cannot read " + path + ": " + reason);
}

int rejectArguments(const CString& reason) {
    complain(reason);
    return printUsageLine();
}
