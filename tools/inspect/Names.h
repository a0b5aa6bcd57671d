#pragma once

#include <vector>

#include "inspect/Document.h"

/// The names that the entries of one section give as their values: the adapter names of PCIIDMap,
/// the system identifiers of SystemIDMap. Only what a lookup finds counts, and no empty value.
/// The document must outlive the object, which owns only the order of the names.
class Names {
public:
    /// Takes the entries whose key `isCounted` accepts.
    Names(const Document& document, const CString& section, bool (*isCounted)(const CString& key));
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;

    /// The first entry in the file that gives this name, without regard to the case of letters, as
    /// lookups compare names. Null if there is none.
    const Line* find(const CString& name) const;
    /// The entries. Those of one name are together, in the order of the file.
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }

private:
    std::vector<const Line*> entries;
};

/// For Names of a section in which every key counts.
inline bool isAnyKey(const CString&) { return true; }

/// Whether a key of PCIIDMap can be that of a device: "0x" and eight hexadecimal digits.
bool isDeviceID(const CString& key);
