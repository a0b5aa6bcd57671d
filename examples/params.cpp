// Parses its command line by a table, shows what it found, and runs a command.
//
//     params /run:COMMAND [/shell] [/in:FOLDER]

#include <unistd.h>

#include <cstdio>
#include <iterator>

#include "util/CLParams.h"
#include "util/Exec.h"

namespace {
struct Parameter {
    const char* name;
    CCLParams::CLParamModes mode;
    bool isRequired;
    const char* meaning;
};
constexpr Parameter kParameters[] = {
    {"/run:", CCLParams::CLParam, true, "the command, up to the next switch"},
    {"/shell", CCLParams::CLSwitch, false, "run it in the command interpreter"},
    {"/in:", CCLParams::CLPathParam, false, "the folder to run it in"},
};

void printUsage() {
    std::fputs("usage: params\n", stderr);
    for (const Parameter& parameter : kParameters)
        std::fprintf(stderr, "    %-7s %s%s\n", parameter.name, parameter.meaning,
                     parameter.isRequired ? " (required)" : "");
}

void printTable(const CCLParams& params) {
    CString value;
    for (unsigned position = 1; position <= std::size(kParameters); ++position) {
        const bool isGiven = params.GetValue(position, value);
        std::printf("%-7s %-9s [%s]\n", kParameters[position - 1].name,
                    isGiven ? "given" : "not given", value.c_str());
    }
}
}  // namespace

int main(int argc, char* argv[]) {
    CCLParams params;
    for (const Parameter& parameter : kParameters)
        if (!params.Add(parameter.name, parameter.mode, parameter.isRequired))
            CString::OutOfMemory();
    if (params.Parse(argc, argv, false) != CCLParams::kParsed) {
        printUsage();
        return 2;
    }
    printTable(params);
    std::fflush(stdout);  // Execute() replaces the process, and what it has not written is lost

    CString folder;
    if (params.GetValue("/in:", folder) && chdir(folder.c_str()) != 0) {
        std::perror("params: /in:");
        return 1;
    }
    CString command;
    params.GetValue("/run:", command);
    CExec exec(command);
    if (params.GetValue("/shell") ? exec.Run() : exec.Execute()) return 0;
    exec.DisplayLastError();
    return 1;
}
