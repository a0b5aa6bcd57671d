#pragma once

#include <cstddef>
#include <memory>
#include <new>

#include "util/CString.h"

/// A new array of this size. If memory runs out, ends the process with the fatal report.
template <class T>
std::unique_ptr<T[]> makeArray(std::size_t size) {
    auto* array = new (std::nothrow) T[size];
    if (!array) CString::OutOfMemory();
    return std::unique_ptr<T[]>(array);
}
