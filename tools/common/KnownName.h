#pragma once

#include <string_view>

#include "util/CString.h"

/// The name of a section or key that the converter reads.
struct KnownName {
    const char* name = nullptr;
    bool isNumbered = false;  ///< "." and a number follow, as in Vendor_ID.0.

    /// Whether a lookup takes this text for the name.
    bool isNameOf(std::string_view text) const;
    /// Whether a text that is no known name is so near to this one that it must be a slip: the same
    /// but for "_", "-", blanks and leading zeros of the number, and for one letter more, less or
    /// different, or for two neighbours that changed places. The case of letters does not count. In
    /// a name as short as "PCI", all letters must be the same.
    bool isMeantBy(std::string_view text) const;
    /// How such a text must be written.
    CString correct(std::string_view text) const;
};
