#pragma once

#include <sys/types.h>

#include <climits>
#include <cstdio>
#include <string>

#include "common/ProductCD.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// What became of a detection file.
enum class Outcome : unsigned char {
    kNone,  ///< No process has set it.
    kUnchanged,
    kChanged,        ///< The report was written. That of an earlier run, if any, was different.
    kFailed,         ///< It was named with the reason.
    kWithoutMemory,  ///< It failed, but the process could not say so.
};

/// A result that processes share.
struct Result {
    Outcome outcome = Outcome::kNone;
    bool isOfUnknownSystem = false;  ///< Of a file that was converted.
};

/// Converts detection files, one after the other, in a process of its own. If memory runs out, the
/// process ends with the status kMemoryRanOut.
class Conversion {
public:
    static constexpr int kMemoryRanOut = 1;

    /// Takes over the process: its stdout, stderr, umask and exit handlers. While a report is
    /// written, `partial` holds its temporary path; otherwise it is empty.
    Conversion(ProductCD& cd, CIniFile& configuration, char (&partial)[PATH_MAX]);
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    /// Converts a file. Says on standard error why it failed, or that its system is unknown.
    Result convert(const CString& path);

private:
    CString identify(const CString& path);
    CString checkSystemFiles();
    CString runConverter();
    CString saveReport(const CString& path);
    bool writeReport(const CString& path);

    ProductCD& cd;
    CIniFile& configuration;
    char* const partial;
    mode_t mode;         // of new reports
    std::string report;  // what the converter has printed

    CString machineType, systemID;  // those of the file at hand
    bool isChanged = false;         // its report was written
};

/// Says why the file failed, and removes the report of an earlier run.
void fail(const CString& path, CString reason);
