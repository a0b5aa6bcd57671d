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

    /// Returns the new element. It stays where it is until the list outgrows its room.
    T& append(T element) {
        if (count == room) reserve(2 * room + 16);
        elements[count] = std::move(element);
        return elements[count++];
    }
    /// Makes room for `size` elements, which must not be fewer than there are.
    void reserve(std::size_t size) {
        T* const moved = CString::Required(new (std::nothrow) T[size]);
        std::move(begin(), end(), moved);
        delete[] std::exchange(elements, moved);
        room = size;
    }
    void cut(std::size_t size) { count = size; }  ///< Keeps the first elements.
    std::size_t size() const { return count; }
    T& operator[](std::size_t i) { return elements[i]; }
    const T& operator[](std::size_t i) const { return elements[i]; }
    T* begin() { return elements; }
    T* end() { return elements + count; }
    const T* begin() const { return elements; }
    const T* end() const { return elements + count; }

private:
    T* elements = nullptr;
    std::size_t count = 0, room = 0;
};
