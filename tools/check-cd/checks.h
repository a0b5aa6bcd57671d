#pragma once

#include "inspect/Configuration.h"
#include "inspect/Document.h"
#include "inspect/Findings.h"

// What slotrpt-check-cd looks for besides the mistakes of inspect/inspect.h. Each function adds
// what it finds to the findings of the file.

/// Looks at the maps and at the sections that their names need.
void checkMaps(const Configuration& configuration, Findings& findings);

/// Looks at the lists of the systems that have a system adapter.
void checkSystemLists(const Configuration& configuration, Findings& findings);

/// Looks at the positions in a per-system file.
void checkPositions(const Document& document, const Configuration& configuration,
                    Findings& findings);
