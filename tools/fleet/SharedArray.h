#pragma once

#include <sys/mman.h>

#include <cstddef>

#include "util/CString.h"

/// An array that this process shares with those that it starts. At first, all its bytes are 0. If
/// memory runs out, ends as CString does.
template <class T>
class SharedArray {
public:
    explicit SharedArray(std::size_t count) : size(count) {
        constexpr int kAccess = PROT_READ | PROT_WRITE, kKind = MAP_SHARED | MAP_ANONYMOUS;
        void* const memory = mmap(nullptr, size * sizeof(T), kAccess, kKind, -1, 0);
        if (memory == MAP_FAILED) CString::OutOfMemory();
        first = static_cast<T*>(memory);
    }
    ~SharedArray() { munmap(first, size * sizeof(T)); }
    SharedArray(const SharedArray&) = delete;
    SharedArray& operator=(const SharedArray&) = delete;

    T& operator[](std::size_t i) { return first[i]; }
    T* begin() { return first; }
    T* end() { return first + size; }

private:
    T* first;
    std::size_t size;
};
