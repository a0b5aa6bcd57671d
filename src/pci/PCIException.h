#pragma once

#include "util/CString.h"

/// Carries the text of an error. Nothing in the system throws it.
struct PCIException {
    CString message;

    explicit PCIException(CString text);
};
