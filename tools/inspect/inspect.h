#pragma once

#include "inspect/Document.h"
#include "inspect/Findings.h"
#include "inspect/Names.h"

// The mistakes for which slotrpt-explain and slotrpt-check-cd both look. Each function adds what it
// finds to the findings of the file. For one file:
//
//     Findings findings(path);
//     if (inspectFile(path, findings)) {
//         const Document detection(path);
//         inspectDetectionFile(detection, findings);
//     }
//     findings.print();
//
// The three functions for documents look only where the converter reads: names that it does not
// read may be anything. But inspectSystemFile() looks at the keys of all sections. They find
// - a section, and a key in its section, that repeats an earlier one and so is never read;
// - a section or key whose name is nearly one that is read, as KnownName.h says;
// - a line without "=" in a section that is read;
// - in the system configuration file, a type that selects a group only if case did not count.

/// Finds a file that is there, but cannot be read or understood: no permission, a folder or a pipe
/// in its place, a byte-order mark, UTF-16. Returns whether its document is worth a look.
bool inspectFile(const CString& path, Findings& findings);

/// Whether a section of this name is read for a system.
bool isSystem(const Names& systems, const CString& name);

/// Gives the paths that the converter tries for the per-system file, if there is something at them:
/// first those that it cannot open, then the one that it takes, if any. Returns how many.
unsigned findSystemFiles(const CString& systemID, CString (&paths)[2]);

void inspectDetectionFile(const Document& document, Findings& findings);

/// `systems` are the names of SystemIDMap, `adapters` those of PCIIDMap. Names that only malformed
/// IDs have may be left out: they get into no report.
void inspectConfiguration(const Document& document, const Names& systems, const Names& adapters,
                          Findings& findings);

/// For a per-system file.
void inspectSystemFile(const Document& document, const Names& adapters, Findings& findings);
