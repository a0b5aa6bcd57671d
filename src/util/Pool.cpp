#include "util/Pool.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooled = false;
#elif defined(__has_feature)
constexpr bool kPooled = !__has_feature(address_sanitizer);
#else
constexpr bool kPooled = true;
#endif

// What a block holds while nobody has it. Sizes are counted in these.
struct FreeBlock {
    FreeBlock* next;
};
constexpr std::size_t kUnit = sizeof(FreeBlock);

// Small blocks are cut from chunks, the first unit of which links them.
FreeBlock* g_chunks = nullptr;
// A chunk is twice as long as the one before, within these limits, in units.
constexpr std::size_t kShortestChunk = 128, kLongestChunk = 4000;

// The blocks of one size. Each size has chunks of its own, so that the records of a document lie
// side by side, and a walk reads memory in order, also where an earlier document gave it back.
struct SizeClass {
    FreeBlock* free;  // given back, the last one first
    FreeBlock* cut;   // what is left of the latest chunk: from `cut` to `end`
    FreeBlock* end;
    std::size_t chunkLength;  // of the latest one
};
SizeClass g_classes[CPool::kLargest / kUnit + 1];  // by size in units
std::size_t g_blocksInUse = 0;

bool isSmall(std::size_t size) { return kPooled && size <= CPool::kLargest; }

std::size_t unitsOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }

FreeBlock* cutBlock(SizeClass& blocks, std::size_t units) {
    if (static_cast<std::size_t>(blocks.end - blocks.cut) < units) {
        const std::size_t length =
            std::clamp(2 * blocks.chunkLength, kShortestChunk, kLongestChunk);
        FreeBlock* chunk = static_cast<FreeBlock*>(std::malloc((1 + length) * kUnit));
        if (!chunk) return nullptr;
        chunk->next = std::exchange(g_chunks, chunk);
        blocks.cut = chunk + 1;
        blocks.end = blocks.cut + length;
        blocks.chunkLength = length;
    }
    return std::exchange(blocks.cut, blocks.cut + units);
}

void freeChunks() {
    for (SizeClass& blocks : g_classes) blocks = {};
    while (g_chunks) std::free(std::exchange(g_chunks, g_chunks->next));
}
}  // namespace

void* CPool::Allocate(std::size_t size) noexcept {
    if (!isSmall(size)) return std::malloc(size);
    SizeClass& blocks = g_classes[unitsOf(size)];
    FreeBlock* block = blocks.free;
    if (block)
        blocks.free = block->next;
    else
        block = cutBlock(blocks, unitsOf(size));
    if (block) ++g_blocksInUse;
    return block;
}

void CPool::Free(void* block, std::size_t size) noexcept {
    if (!isSmall(size)) return std::free(block);
    FreeBlock* freed = static_cast<FreeBlock*>(block);
    freed->next = std::exchange(g_classes[unitsOf(size)].free, freed);
    if (--g_blocksInUse == 0) freeChunks();
}
