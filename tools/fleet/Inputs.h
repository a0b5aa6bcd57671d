#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "util/CString.h"

/// A detection file of the run. The numbers tell its folder, whatever the path to it looks like.
struct Input {
    CString path;
    dev_t device = 0;
    ino_t folder = 0;
};

/// What the operands of the command stand for.
struct Inputs {
    std::vector<Input> files;     ///< Those of one folder are sorted by the names of their reports.
    std::vector<CString> strays;  ///< Reports without a detection file, in the operands' folders.
    bool isOneFile = false;       ///< The only operand is a file.
};

/// Finds out what the operands stand for, which end with a null. Returns kFine. If an operand is
/// refused, says why with complain() and returns kCouldNotRun.
int collectInputs(char* operands[], Inputs& inputs);

CString reportPathOf(const CString& path);
CString folderOf(const CString& path);  ///< The path up to its last "/"; "" if there is none.
