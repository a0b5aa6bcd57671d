#pragma once

#include <vector>

#include "inspect/Findings.h"
#include "inspect/Names.h"
#include "util/CString.h"

/// The per-system files on the CD, each once, in the order of the systems.
class SystemFiles {
public:
    /// Looks for the files of these systems, and for that of the unknown system, which may be
    /// absent. A system without a file is a finding.
    SystemFiles(const Names& systems, Findings& findings);
    SystemFiles(const SystemFiles&) = delete;
    SystemFiles& operator=(const SystemFiles&) = delete;

    struct File {
        CString path;
        unsigned order = 0;  // the line of its first system
    };
    auto begin() const { return files.begin(); }
    auto end() const { return files.end(); }

private:
    bool addFilesOf(const CString& system, unsigned order);
    void dropRepeated();

    std::vector<File> files;
};
