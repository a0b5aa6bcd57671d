#pragma once

#include <climits>
#include <string_view>

#include "util/CString.h"

/// The name of the report without ".report": x.ini gives x, any other name gives itself.
std::string_view stemOf(const char* path);
CString reportPathOf(const CString& path);
CString folderOf(const CString& path);  ///< The path up to its last "/"; "" if there is none.

/// How a child process ends. It converts one file after the other, until it has to say something
/// about one. If memory runs out, it cannot even say that.
enum Ending { kDone, kFailed, kOfUnknownSystem, kWithoutMemory };

/// In a child: converts the file. While the report is written, its path is in `partial`. Returns
/// only if the report and all that it was made from are whole, and its system is known.
void convert(const CString& path, char (&partial)[PATH_MAX]);

/// Says why the file failed, and removes its partial report and the one of an earlier run.
void fail(const CString& path, const char* partial, CString reason);
