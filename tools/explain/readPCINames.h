#pragma once

#include "explain/Pairs.h"
#include "util/CString.h"

/// Fills in the vendor and device names of the pairs. The names come from the list of PCI IDs at
/// `path`, a file in the form of "pci.ids".
void readPCINames(Pairs& pairs, const CString& path);
