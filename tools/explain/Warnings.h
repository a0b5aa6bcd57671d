#pragma once

#include <cstddef>
#include <set>

#include "inspect/Document.h"
#include "inspect/Findings.h"
#include "inspect/Names.h"
#include "util/CString.h"

/// Prints what is wrong with the files that the converter reads, with an empty line before the
/// first warning, and counts the warnings.
class Warnings {
public:
    explicit Warnings(const CString& configurationPath);

    void print(Findings& findings);  ///< Of any file.
    void printConfiguration();       ///< Of the system configuration file.
    /// Of the per-system file, or of what takes its place. Machines may share a system, and systems
    /// a file: its warnings are printed once.
    void printSystemFile(const CString& systemID);
    std::size_t getCount() const { return count; }  ///< Of all that were printed.

private:
    const CString configurationPath;
    const Document configuration;
    const Names systems;
    const Names adapters;
    std::set<CString> systemIDs;    // of the systems whose files were inspected
    std::set<CString> systemPaths;  // of these files
    std::size_t count = 0;
};
