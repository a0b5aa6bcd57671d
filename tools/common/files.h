#pragma once

#include "util/CString.h"

/// Whether there is something at the path, be it a link that leads nowhere. True if the system does
/// not tell.
bool isThere(const CString& path);

/// Why the file cannot be read, in the system's words; "" if it can. A pipe, a device or a folder
/// is refused: the converter takes it as an empty file.
CString whyUnreadable(const CString& path);

/// Why a readable file is misread: "is UTF-16", or "begins with a byte-order mark", since the mark
/// becomes a part of the first line. "" if it is not.
CString whyMisread(const CString& path);

/// Why the converter does not read the file as it is meant: one of the two above.
CString faultOf(const CString& path);

/// Says with complain() that the file or folder cannot be read. Returns kCouldNotRun.
int complainUnreadable(const CString& path, const CString& reason);

/// What CIniFile::TakeLoadFault() tells, as "PATH: reason". "" if there is no fault.
CString takeLoadFault();

/// Takes a fault as takeLoadFault() told it. If it is not "", says with complain() that the file
/// cannot be read, and returns false.
bool requireWhole(const CString& fault);

/// "RWCD is " and its value, "RWCD is empty" or "RWCD is not set".
CString describeRoot();

/// The path of the system configuration file on the CD. If it cannot be read, says so with
/// complain() and returns "".
CString requireConfiguration();
