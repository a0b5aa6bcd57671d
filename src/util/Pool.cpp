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
constexpr std::size_t kFirstChunk = 128, kLastChunk = 4000;  // in units; each is twice the last one

// The blocks of one size. They have chunks of their own, so that a document's records lie side by
// side, and its texts too, also when they lie where those of another document were: a walk over
// them is as fast as memory can be read.
struct BlockSize {
    FreeBlock* free;  // given back, the last one first
    FreeBlock* cut;   // what is left of the last chunk: from here
    FreeBlock* end;   // to here
    std::size_t lastChunk;
};
BlockSize g_sizes[CPool::kLargest / kUnit + 1];  // by size in units
std::size_t g_blocksInUse = 0;

bool isSmall(std::size_t size) { return kPooled && size <= CPool::kLargest; }

std::size_t unitsOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }

FreeBlock* cutBlock(BlockSize& size, std::size_t units) {
    if (static_cast<std::size_t>(size.end - size.cut) < units) {
        const std::size_t length = std::clamp(2 * size.lastChunk, kFirstChunk, kLastChunk);
        FreeBlock* chunk = static_cast<FreeBlock*>(std::malloc((1 + length) * kUnit));
        if (!chunk) return nullptr;
        chunk->next = std::exchange(g_chunks, chunk);
        size.cut = chunk + 1;
        size.end = size.cut + length;
        size.lastChunk = length;
    }
    return std::exchange(size.cut, size.cut + units);
}

void freeChunks() {
    for (BlockSize& size : g_sizes) size = {};
    while (g_chunks) std::free(std::exchange(g_chunks, g_chunks->next));
}
}  // namespace

void* CPool::Allocate(std::size_t size) noexcept {
    if (!isSmall(size)) return std::malloc(size);
    BlockSize& blocks = g_sizes[unitsOf(size)];
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
    freed->next = std::exchange(g_sizes[unitsOf(size)].free, freed);
    if (--g_blocksInUse == 0) freeChunks();
}
