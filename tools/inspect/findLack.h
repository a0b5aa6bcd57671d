#pragma once

#include "inspect/Document.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"

/// Why a detection file cannot be complete.
struct Lack {
    CString reason;     ///< "" if nothing shows that it is not.
    unsigned line = 0;  ///< Where that shows; 0 if nothing does.
};

/// Looks for why no device entry is read: the file is empty, or there is no section PCI, no total,
/// or one without digits.
Lack findLackOfEntries(const Document& detection);

/// Looks for the first of these:
/// - what findLackOfEntries() finds;
/// - device entries below the total are not in the file;
/// - one that is in the file is not below the total;
/// - a device entry lacks a key that every one needs, or that another one has;
/// - a number that a report shows has no digits, or is cut;
/// - the total is cut.
///
/// A number is cut if it stands in the last line, and `endsInLine` says that this line has no line
/// end. Lost lines of section System cannot be noticed: no key there is owed.
Lack findLack(const Document& detection, bool endsInLine);

/// Whether the text of a number has any digits. Without them, it reads as 0.
bool hasDigits(const DeviceKey& key, const char* text);
