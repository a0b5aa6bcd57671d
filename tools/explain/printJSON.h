#pragma once

#include "explain/Machine.h"

/// Prints the machine as a JSON object, in one line.
void printJSON(Machine& machine);
