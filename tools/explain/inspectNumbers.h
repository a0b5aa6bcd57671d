#pragma once

#include "explain/DeviceEntries.h"
#include "inspect/Document.h"
#include "inspect/Findings.h"

/// Finds the numbers of a detection file that do not read as they look: those that end before a
/// letter or digit, have no digits or are too wide, and a total that is not a plain number.
void inspectNumbers(const DeviceEntries& entries, const Document& detection, Findings& findings);
