#pragma once

#include <cstdio>
#include <set>

#include "common/ProductCD.h"
#include "inspect/Configuration.h"
#include "inspect/Findings.h"
#include "util/CString.h"

/// Prints what is wrong with the files that the converter reads, and counts the warnings. On
/// standard output, an empty line stands before the first one.
class Warnings {
public:
    Warnings(ProductCD& productCD, const Configuration& systemConfiguration, std::FILE* output);

    void print(Findings& findings);  ///< Of any file.
    void printConfiguration();       ///< Of the system configuration file.
    /// Of the per-system file, or of what takes its place. Machines may share a system, and systems
    /// a file: its warnings are printed once.
    void printSystemFile(const CString& systemID);
    std::size_t getCount() const { return count; }  ///< Of all that were printed.

private:
    ProductCD& cd;
    std::FILE* const stream;
    const Configuration& configuration;
    std::set<CString> systemPaths;  // of the per-system files that were inspected
    std::size_t count = 0;
};
