#include "util/ErrorHandler.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

namespace {
// The text before the detail in the message of each kind. The index is the kind.
constexpr const char* kOpenings[] = {
    nullptr,
    "General System Error\n\n",
    "General Program Error\n\n",
    "",
    "Memory Allocation Error\n\n"
    "Not enough memory is available for this application.\n\n"
    "Please close some programs to free up memory and try running\n"
    "this application again.\n\n",
    "File Open Error\n\nUnable to open file...\n\n",
    "File Read Error\n\nUnable to read from file...\n\n",
    "File Write Error\n\nUnable to write to file...\n\n",
    "File Close Error\n\nUnable to close file...\n\n",
    "Parse Error\n\nUnable to parse data file...\n\n",
    "TCP/IP Error\n\n",
};
constexpr const char* kParseClosing =
    "The data file may not be in the correct format or it may be corrupt.\n\n";

bool isKind(int kind) { return kind > 0 && kind <= CErrorHandler::ecTcpIp; }

// Whether the answer is yes. Reads its whole line, so that nothing is left for the next question.
bool readYes() {
    int c = std::getchar();
    while (std::isspace(c)) c = std::getchar();
    const bool isYes = c == 'y' || c == 'Y';
    while (c != '\n' && c != EOF) c = std::getchar();
    return isYes;
}
}  // namespace

void CErrorHandler::ErrorHandler(ErrorCodeDef reaction, ErrorCodeDef kind, const char* detail) {
    // On the stack, since memory may have run out.
    char message[512] = "\n";
    if (!detail) detail = "";
    if (kind == ecParse)
        std::snprintf(message, sizeof message, "\n%s%s%s%s", kOpenings[kind], detail,
                      *detail ? "\n\n" : "", kParseClosing);
    else if (isKind(kind))
        std::snprintf(message, sizeof message, "\n%s%s", kOpenings[kind], detail);
    std::fprintf(stderr, "\n%s\n", message);

    if (reaction == ecAsk) {
        std::fputs("\nContinue anyway? ", stderr);
        if (!readYes()) reaction = ecAbort;
    }
    if (reaction == ecAbort) std::exit(1);
}
