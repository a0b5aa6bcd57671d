#pragma once

#include <cstddef>

/// The memory of what a document has by the thousand: its line records and their short texts.
///
/// Blocks are taken and given back as with malloc and free, at a tenth of the cost: a block that
/// was given back is the next one of its size to be taken. The memory behind them goes back to the
/// system when the last small block does. Large blocks are malloc's. Builds with an address
/// sanitizer leave all of them to it.
class CPool {
public:
    CPool() = delete;

    /// A block of at least `size` bytes, aligned for pointers; null when memory runs out.
    static void* Allocate(std::size_t size) noexcept;
    static void Free(void* block) noexcept;
};
