#pragma once

#include "util/CString.h"

/// Holds the text of an error. The system never throws it.
struct PCIException {
    CString message;

    explicit PCIException(CString text);
};
