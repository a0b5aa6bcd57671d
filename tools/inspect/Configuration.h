#pragma once

#include "inspect/Document.h"
#include "inspect/Names.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// The system configuration file of the CD, and the names in its maps.
struct Configuration {
    explicit Configuration(const CString& file);
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

    /// Whether PCIIDMap has the key of a pair of IDs, be it with an empty name.
    bool hasID(const CString& key) const;

    const CString path;
    const Document document;
    const Names systems;         ///< The system identifiers of SystemIDMap.
    const Names adapters;        ///< The adapter names of PCIIDMap.
    const Names mappedAdapters;  ///< Those that a well-formed ID is mapped to.
    CIniFile iniFile;            ///< For the lookups of the inventory.
};
