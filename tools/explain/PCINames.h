#pragma once

#include <cstdint>

#include "explain/Pairs.h"
#include "util/CString.h"

/// The base class of a class code in words, such as "bridge" for 0x060400. An unknown base class
/// gives "class " and the code.
CString classInWords(std::uint32_t classCode);

/// Fills in the vendor and device names of the pairs. The names come from the list of PCI IDs at
/// `path`, a file in the form of "pci.ids". Returns whether the file could be opened.
bool readPCINames(const Pairs& pairs, const CString& path);
