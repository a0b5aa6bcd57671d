#pragma once

#include <fcntl.h>

#include <map>
#include <string>
#include <vector>

#include "util/CString.h"
#include "util/MyFileIO.h"

/// A file as it was when the run read it, once.
struct Copy {
    /// What became of the file.
    enum State {
        kWhole,       ///< It was read to its end.
        kAbsent,      ///< There is none.
        kNotOpened,   ///< The system does not open it.
        kNotRegular,  ///< It is a folder, a pipe or a device: the converter takes it as empty.
        kBroken,      ///< It was not read to its end, or another process holds a lease on it.
    };

    State state = kWhole;
    CString reason;  ///< Why it was not read, in the system's words; "" if it was.
    CString mark;    ///< Why a whole file is misread: "is UTF-16" or "begins with a byte-order
                     ///< mark", which becomes a part of the first line. "" if it is not.
    bool endsInLine = false;  ///< The last line has no line end.
    std::string text;         ///< Without NULs and carriage returns, as the converter reads it.

    bool isWhole() const { return state == kWhole; }
    /// Why the converter does not read the file as it is meant: the reason or the mark.
    const CString& getFault() const { return isWhole() ? mark : reason; }
};

/// Reads a regular file, and waits for nothing. A relative path begins in `folder`, a descriptor. A
/// link that leads nowhere is there, but not opened.
Copy copyFile(const CString& path, int folder = AT_FDCWD);

/// Reads a file that the command line names, as copyFile() does. But "-", "/dev/stdin", "/dev/fd/N"
/// and "/proc/self/fd/N" stand for a descriptor of this process. A file, a pipe, a socket or a
/// terminal is read from there, from where it stands, and waited for. The text of a descriptor is
/// kept, so naming it once more gives the same copy.
Copy copyOperand(const CString& path);

/// The files that CMyFileIO reads: after the first set(), these and none on disk. They last as long
/// as the process.
class Copies {
public:
    Copies() = delete;

    /// From now on, a file of this path has this text. Streams of an earlier text must be closed.
    static void set(const CString& path, std::string text);

private:
    static std::map<std::string, std::string> texts;
    static std::vector<CMyFileIO::MemoryFileDef> files;  // the texts, in the order of their paths
};

/// The path under which the detection file at hand is in memory, whatever it is called. No file of
/// the CD is called so: the path of each has a "/".
constexpr const char* kDetectionCopy = "detection file";
