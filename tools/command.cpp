#include "command.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "printable.h"

namespace {
bool isFinished = false;

// If memory runs out, the process exits with status 1. For a command, 1 means findings, so this
// handler replaces it.
void endUnfinished() {
    if (!isFinished) std::_Exit(kCouldNotRun);
}
}  // namespace

int complain(const CString& message) {
    std::fprintf(stderr, SLOTRPT_COMMAND ": %s\n", printable(message).c_str());
    return kCouldNotRun;
}

int printHelp(const char* usage) {
    std::fputs(usage, stdout);
    return kFine;
}

int printVersion() {
    std::puts(SLOTRPT_COMMAND " " SLOTRPT_VERSION);
    return kFine;
}

int rejectArguments(const char* usage) {
    std::fputs(usage, stderr);
    return kCouldNotRun;
}

int runCommand(int (*command)(int argc, char* argv[]), int argc, char* argv[]) {
    std::atexit(endUnfinished);
    int status = command(argc, argv);
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        status = complain(CString("cannot write: ") + std::strerror(errno));
    isFinished = true;
    return status;
}
