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

    /// Whether PCIIDMap has this key, even with an empty name.
    bool hasKey(const CString& key) const;

    const CString path;
    const Document document;
    const Names systems;         ///< The system identifiers of SystemIDMap.
    const Names adapters;        ///< The adapter names of PCIIDMap.
    const Names mappedAdapters;  ///< Those that a well-formed ID is mapped to.
    CIniFile iniFile;            ///< For the lookups of the inventory.
};
