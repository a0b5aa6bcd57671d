#pragma once

#include "inspect/Document.h"
#include "inspect/Findings.h"
#include "inspect/Names.h"

// What slotrpt-check-cd looks for besides the mistakes of inspect/inspect.h. Each function adds
// what it finds to the findings of the file.

/// The system configuration file, and the names in its maps.
struct Configuration {
    explicit Configuration(const CString& path);

    const Document document;
    const Names systems;
    const Names adapters;
    const Names mappedAdapters;  ///< Those that a well-formed ID is mapped to.
};

/// Looks at the maps and at the sections that their names need.
void checkMaps(const Configuration& configuration, Findings& findings);

/// Looks at the lists of the systems that have a system adapter.
void checkSystemLists(const Configuration& configuration, Findings& findings);

/// Looks at the positions in a per-system file.
void checkPositions(const Document& document, const Configuration& configuration,
                    Findings& findings);
