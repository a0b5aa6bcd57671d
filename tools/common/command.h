#pragma once

#include <getopt.h>

#include "util/CString.h"

// What the commands around the converter have in common: how they are called and how they end.

// Their exit statuses.
constexpr int kFine = 0;
constexpr int kFindings = 1;  ///< There are findings, or files that could not be converted.
constexpr int kCouldNotRun = 2;

/// One command. runCommand() does what is the same in all of them.
struct Command {
    const char* name;
    const char* usage;      ///< The whole help text. Its first line is shown after a wrong call.
    const char* letters;    ///< The options of one letter, as getopt_long takes them, with "h".
    const option* options;  ///< The long ones, with kHelp and kVersion.
    /// Takes an option's value, which is null for one without. Returns why it makes no sense, or
    /// "".
    CString (*takeOption)(int option, const char* value);
    /// Does the work on the operands, which end with a null. Returns the exit status.
    int (*run)(int count, char* operands[]);
};

constexpr option kHelp = {"help", no_argument, nullptr, 'h'};
constexpr option kVersion = {"version", no_argument, nullptr, 'V'};

/// Runs the command and returns its exit status. If the output cannot be written, the status is
/// kCouldNotRun. If memory runs out, the process ends with that status, too. Standard input, output
/// and error are open in the whole run: one that the caller closed fails when it is used.
int runCommand(const Command& command, int argc, char* argv[]);

/// Prints the message after the name of the command, on standard error. Returns kCouldNotRun.
int complain(const CString& message);

/// Says with complain() that the file or folder cannot be read. Returns kCouldNotRun.
int complainUnreadable(const CString& path, const CString& reason);

/// Says with complain() what is wrong with the call, then prints how to call the command. Returns
/// kCouldNotRun.
int rejectArguments(const CString& reason);
