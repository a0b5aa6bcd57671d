#pragma once

#include "util/CString.h"

// What the commands beside the converter have in common.

// Their exit statuses.
constexpr int kFine = 0;
constexpr int kFindings = 1;  ///< There are findings, or files that could not be converted.
constexpr int kCouldNotRun = 2;

/// Prints the message after the name of the command, on standard error. Returns kCouldNotRun.
int complain(const CString& message);

/// The answers to --help, to --version and to arguments that make no sense. Each returns the exit
/// status of the command.
int printHelp(const char* usage);
int printVersion();
int rejectArguments(const char* usage);

/// Runs the command and returns its exit status. If the output cannot be written, the status is
/// kCouldNotRun. If memory runs out, the process ends with that status, too.
int runCommand(int (*command)(int argc, char* argv[]), int argc, char* argv[]);
