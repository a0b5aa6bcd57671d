#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "util/CString.h"

/// A growing array. If memory runs out, ends as CString does.
template <class T>
class List {
public:
    List() = default;
    ~List() { delete[] elements; }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    void append(T element) {
        if (count == room) grow();
        elements[count++] = std::move(element);
    }
    std::size_t size() const { return count; }
    T& operator[](std::size_t i) { return elements[i]; }
    const T& operator[](std::size_t i) const { return elements[i]; }
    T* begin() { return elements; }
    T* end() { return elements + count; }
    const T* begin() const { return elements; }
    const T* end() const { return elements + count; }

private:
    void grow() {
        room = 2 * room + 64;
        T* const moved = new (std::nothrow) T[room];
        if (!moved) CString::OutOfMemory();
        std::move(begin(), end(), moved);
        delete[] std::exchange(elements, moved);
    }

    T* elements = nullptr;
    std::size_t count = 0, room = 0;
};
