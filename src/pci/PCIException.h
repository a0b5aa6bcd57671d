#pragma once

#include "util/CString.h"

/// Holds the text of an error. For a program that uses the device layer and throws exceptions of
/// its own: it needs no other type for them. The system itself never throws.
struct PCIException {
    CString message;

    explicit PCIException(CString text);
};
