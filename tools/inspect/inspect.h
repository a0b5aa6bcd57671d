#pragma once

#include "common/Copy.h"
#include "inspect/Configuration.h"
#include "inspect/Document.h"
#include "inspect/Findings.h"
#include "inspect/Names.h"

// The mistakes for which slotrpt-explain and slotrpt-check-cd both look. Each function adds what it
// finds to the findings of the file. For one file:
//
//     Findings findings(path);
//     if (inspectCopy(copy, findings)) {
//         const Document detection(kDetectionCopy);
//         inspectDetectionFile(detection, findings);
//     }
//     findings.print(stdout);
//
// Names that the converter does not read may be anything. But inspectSystemFile() looks at the keys
// of all sections, since one with OnBoard is meant for an adapter. The three functions for
// documents find
// - a section, and a key in its section, that repeats an earlier one and so is never read;
// - a section or key whose name is nearly one that is read, as KnownName.h says;
// - a line without "=" in a section that is read;
// - lines above the first header, other than comments and empty ones;
// - in the system configuration file, a type that selects a group only if case did not count.

/// Finds a file that is there, but could not be read or is misread: no permission, a folder or a
/// pipe in its place, a byte-order mark, UTF-16. Returns whether its document is worth a look.
bool inspectCopy(const Copy& copy, Findings& findings);

/// Whether a section of this name is read for a system.
bool isSystem(const Names& systems, const CString& name);

/// Whether this is one of the system adapters, as the name of a section.
bool isSystemAdapter(const CString& name);

void inspectDetectionFile(const Document& document, Findings& findings);

/// A section is an adapter's only if a well-formed ID is mapped to its name: other names get into
/// no report. The same holds in a per-system file.
void inspectConfiguration(const Configuration& configuration, Findings& findings);

/// For a per-system file.
void inspectSystemFile(const Document& document, const Configuration& configuration,
                       Findings& findings);
