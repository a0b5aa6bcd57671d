#pragma once

#include <string_view>

#include "util/CString.h"

/// The name of a section or key that the converter reads.
struct KnownName {
    const char* name = nullptr;
    bool isNumbered = false;  ///< "." and a number follow, as in Vendor_ID.0.

    /// Whether a lookup takes this text for the name.
    bool isNameOf(std::string_view text) const;
    /// Whether a text that is not a known name must be a slip of this one. It may have one letter
    /// more, less or different, or two neighbours that changed places; in a name as short as "PCI",
    /// all letters must be the same. "_", "-", blanks, leading zeros of the number and the case of
    /// letters do not count. True for the name itself, too.
    bool isMeantBy(std::string_view text) const;
    /// How such a text must be written.
    CString correct(std::string_view text) const;
};
