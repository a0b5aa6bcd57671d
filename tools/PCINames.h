#pragma once

#include <cstdint>

#include "Entries.h"
#include "util/CString.h"

/// The words for the base class of a class code, "bridge" for 0x060400; for a class that has none,
/// "class " and the code.
CString classInWords(std::uint32_t classCode);

/// Fills in the vendor and device names of the unnamed entries from the list of PCI IDs at `path`,
/// "pci.ids" as systems install it. Whether it could be opened.
bool fillInNames(Entry* first, const CString& path);
