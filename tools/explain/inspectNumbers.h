#pragma once

#include "explain/Entries.h"
#include "inspect/Document.h"
#include "inspect/Findings.h"

/// Finds the numbers of a detection file that do not read as they look: those that end before a
/// letter or digit, have no digits or are too wide, a total that is not a plain number, and one
/// that hides device entries.
void inspectNumbers(const Entries& entries, const Document& detection, Findings& findings);
