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

// A block as it lies in memory. The taker's bytes begin where a free block has its link.
struct Block {
    std::size_t units;  // its size; 0: a large one
    Block* nextFree;
};
constexpr std::size_t kHeader = offsetof(Block, nextFree);
constexpr std::size_t kUnit = sizeof(Block);

// Small blocks are cut from chunks, in the order in which they are taken: what is read together
// lies together.
struct Chunk {
    Chunk* next;
    Block units[2000];
};
Chunk* g_chunks = nullptr;
std::size_t g_unitsLeft = 0;  // at the end of the first chunk

Block* g_free[8];  // by size in units
std::size_t g_blocksInUse = 0;

Block* cut(std::size_t units) {
    if (g_unitsLeft < units) {
        Chunk* chunk = static_cast<Chunk*>(std::malloc(sizeof(Chunk)));
        if (!chunk) return nullptr;
        chunk->next = std::exchange(g_chunks, chunk);
        g_unitsLeft = std::size(chunk->units);
    }
    Block* block = std::end(g_chunks->units) - g_unitsLeft;
    g_unitsLeft -= units;
    return block;
}

Block* takeSmall(std::size_t units) {
    Block* block = g_free[units];
    if (block)
        g_free[units] = block->nextFree;
    else if (!(block = cut(units)))
        return nullptr;
    ++g_blocksInUse;
    return block;
}

void giveSmall(Block* block) {
    block->nextFree = std::exchange(g_free[block->units], block);
    if (--g_blocksInUse != 0) return;
    for (Block*& list : g_free) list = nullptr;
    while (g_chunks) std::free(std::exchange(g_chunks, g_chunks->next));
    g_unitsLeft = 0;
}
}  // namespace

void* CPool::Allocate(std::size_t size) noexcept {
    const std::size_t units = (size + kHeader - 1) / kUnit + 1;
    const bool isSmall = kPooled && units < std::size(g_free);
    Block* block = isSmall ? takeSmall(units) : static_cast<Block*>(std::malloc(kHeader + size));
    if (!block) return nullptr;
    block->units = isSmall ? units : 0;
    return reinterpret_cast<char*>(block) + kHeader;
}

void CPool::Free(void* block) noexcept {
    Block* taken = reinterpret_cast<Block*>(static_cast<char*>(block) - kHeader);
    if (taken->units == 0)
        std::free(taken);
    else
        giveSmall(taken);
}
