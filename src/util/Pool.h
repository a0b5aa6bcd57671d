#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

/// Allocates the many small blocks of a document: its line records and their short texts.
///
/// Small blocks cost less here than from malloc: no byte is spent around a block, and a freed block
/// is the next one of its size to be given out. The pool frees its memory when no small block is in
/// use: at the end of the process, as a rule, since the scratch string of CString keeps one. Larger
/// blocks come from malloc. Under an address sanitizer all blocks do, since it would not see an
/// overrun inside the pool.
///
/// All code is in this header: a program that is built from sources which use the pool needs no
/// further source for it.
class CPool {
public:
    CPool() = delete;

    static constexpr std::size_t kLargest = 128;  ///< The size of the largest small block.

    /// A block of `size` bytes (at least 1), aligned for pointers. Null if memory runs out.
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

    /// Frees a block. `size` is the size it was allocated with; for a block above kLargest, any
    /// size above kLargest will do.
    static void Free(void* block, std::size_t size) noexcept {
        if (!isSmall(size)) return std::free(block);
        Unit* freed = static_cast<Unit*>(block);
        freed->next = std::exchange(s_classes[unitsOf(size)].free, freed);
        if (--s_blocksInUse == 0) freeChunks();
    }

private:
    // The unit of all sizes. In a free block and in a chunk, the first unit links to the next one.
    struct Unit {
        Unit* next;
    };

    // The blocks of one size. Each size has its own chunks, so that the records of a document lie
    // side by side and a walk reads memory in order.
    struct SizeClass {
        Unit* free;  // the freed blocks, the latest first
        Unit* cut;   // the unused rest of the latest chunk is from `cut` to `end`
        Unit* end;
        std::size_t chunkLength;  // of the latest chunk, in units
    };

    // A chunk is twice as long as the one before it, within these limits. In units.
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
