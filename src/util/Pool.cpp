#include "util/Pool.h"

#include <cstdlib>
#include <iterator>
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

// Small blocks are cut from chunks, in the order in which they are taken.
struct Chunk {
    Chunk* next;
    FreeBlock units[4000];
};
Chunk* g_chunks = nullptr;
std::size_t g_unitsLeft = 0;  // at the end of the first chunk

FreeBlock* g_free[CPool::kLargest / kUnit + 1];  // by size in units
std::size_t g_blocksInUse = 0;

bool isSmall(std::size_t size) { return kPooled && size <= CPool::kLargest; }

std::size_t unitsOf(std::size_t size) { return (size + kUnit - 1) / kUnit; }

FreeBlock* cut(std::size_t units) {
    if (g_unitsLeft < units) {
        Chunk* chunk = static_cast<Chunk*>(std::malloc(sizeof(Chunk)));
        if (!chunk) return nullptr;
        chunk->next = std::exchange(g_chunks, chunk);
        g_unitsLeft = std::size(chunk->units);
    }
    FreeBlock* block = std::end(g_chunks->units) - g_unitsLeft;
    g_unitsLeft -= units;
    return block;
}

void freeChunks() {
    for (FreeBlock*& list : g_free) list = nullptr;
    while (g_chunks) std::free(std::exchange(g_chunks, g_chunks->next));
    g_unitsLeft = 0;
}
}  // namespace

void* CPool::Allocate(std::size_t size) noexcept {
    if (!isSmall(size)) return std::malloc(size);
    FreeBlock*& list = g_free[unitsOf(size)];
    FreeBlock* block = list;
    if (block)
        list = block->next;
    else
        block = cut(unitsOf(size));
    if (block) ++g_blocksInUse;
    return block;
}

void CPool::Free(void* block, std::size_t size) noexcept {
    if (!isSmall(size)) return std::free(block);
    FreeBlock* freed = static_cast<FreeBlock*>(block);
    freed->next = std::exchange(g_free[unitsOf(size)], freed);
    if (--g_blocksInUse == 0) freeChunks();
}
