#pragma once

#include <cstddef>

/// The memory of what a document has by the thousand: its line records and their short texts.
///
/// Small blocks are taken and given back without the bookkeeping of malloc and free, and without a
/// byte around them. Those of one size lie side by side, in the order in which they are first
/// taken; one that was given back is the next of its size to be taken. The memory behind them goes
/// back to the system when no small block is left. Larger blocks are malloc's, as are all in builds
/// with an address sanitizer.
class CPool {
public:
    CPool() = delete;

    static constexpr std::size_t kLargest = 128;  ///< The size of the largest small block.

    /// A block of `size` bytes, 1 or more, aligned for pointers; null when memory runs out.
    static void* Allocate(std::size_t size) noexcept;
    /// Gives a block back. `size` is the one it was taken with, or any above kLargest for any such.
    static void Free(void* block, std::size_t size) noexcept;
};
