#pragma once

#include "explain/Machine.h"

/// Prints what becomes of the machine: first the system, then a row for each device entry, then
/// the adapters without one.
void printMachine(Machine& machine, const CString& configurationPath);

/// Prints how many device entries there are, in one line.
void printCounts(const Counts& counts);
