#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

/// The memory of what a document has by the thousand: its line records and their short texts.
///
/// A small block is taken and given back without the bookkeeping of malloc and free, and without a
/// byte around it. A block that was given back is the next of its size to be taken. When no small
/// block is left in use, the memory behind them goes back to the system. Larger blocks are
/// malloc's; so are all blocks under an address sanitizer, which would not see an overrun in the
/// pool.
///
/// All of it stands in this header, so that each source that uses it links alone.
class CPool {
public:
    CPool() = delete;

    static constexpr std::size_t kLargest = 128;  ///< The size of the largest small block.

    /// A block of `size` bytes, 1 or more, aligned for pointers; null when memory runs out.
    static void* Allocate(std::size_t size) noexcept {
        if (!isSmall(size)) return std::malloc(size);
        SizeClass& blocks = s_classes[unitsOf(size)];
        Unit* block = blocks.free;
        if (block)
            blocks.free = block->next;
        else
            block = cutBlock(blocks, unitsOf(size));
        if (block) ++s_blocksInUse;
        return block;
    }

    /// Gives a block back. `size` is the one it was taken with, or any above kLargest for any such.
    static void Free(void* block, std::size_t size) noexcept {
        if (!isSmall(size)) return std::free(block);
        Unit* freed = static_cast<Unit*>(block);
        freed->next = std::exchange(s_classes[unitsOf(size)].free, freed);
        if (--s_blocksInUse == 0) freeChunks();
    }

private:
    // What sizes are counted in. The first unit of a free block, and of a chunk, links to the next.
    struct Unit {
        Unit* next;
    };

    // The blocks of one size. Each size has chunks of its own, so that the records of a document
    // lie side by side and a walk reads memory in order.
    struct SizeClass {
        Unit* free;  // given back, the last one first
        Unit* cut;   // what is left of the latest chunk: from `cut` to `end`
        Unit* end;
        std::size_t chunkLength;  // of the latest chunk, in units
    };

    // A chunk is twice as long as the one before, within these limits, in units.
    static constexpr std::size_t kShortestChunk = 128, kLongestChunk = 4000;

#if defined(__SANITIZE_ADDRESS__)
    static constexpr bool kPooled = false;
#elif defined(__has_feature)
    static constexpr bool kPooled = !__has_feature(address_sanitizer);
#else
    static constexpr bool kPooled = true;
#endif

    static bool isSmall(std::size_t size) { return kPooled && size <= kLargest; }
    static std::size_t unitsOf(std::size_t size) {
        return (size + sizeof(Unit) - 1) / sizeof(Unit);
    }

    static Unit* cutBlock(SizeClass& blocks, std::size_t units) {
        if (static_cast<std::size_t>(blocks.end - blocks.cut) < units) {
            const std::size_t length =
                std::clamp(2 * blocks.chunkLength, kShortestChunk, kLongestChunk);
            Unit* chunk = static_cast<Unit*>(std::malloc((1 + length) * sizeof(Unit)));
            if (!chunk) return nullptr;
            chunk->next = std::exchange(s_chunks, chunk);
            blocks.cut = chunk + 1;
            blocks.end = blocks.cut + length;
            blocks.chunkLength = length;
        }
        return std::exchange(blocks.cut, blocks.cut + units);
    }

    static void freeChunks() {
        for (SizeClass& blocks : s_classes) blocks = {};
        while (s_chunks) std::free(std::exchange(s_chunks, s_chunks->next));
    }

    static inline SizeClass s_classes[kLargest / sizeof(Unit) + 1];  // by size in units
    static inline Unit* s_chunks = nullptr;
    static inline std::size_t s_blocksInUse = 0;
};
