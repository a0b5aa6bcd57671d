#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t g_allocations = 0, g_bytes = 0;

void countOne(std::size_t size) {
    ++g_allocations;
    g_bytes += size;
}
}  // namespace

// The other forms of new and delete, those for arrays and those that do not throw, come down to
// these.
void* operator new(std::size_t size) {
    countOne(size);
    void* memory = std::malloc(size ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}
// Not inlined, or g++ warns that memory of new goes to free.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

// CPool::Allocate. The link of the benchmarks sends every call of it here first.
extern "C" {
void* __real__ZN5CPool8AllocateEm(std::size_t size) noexcept;
void* __wrap__ZN5CPool8AllocateEm(std::size_t size) noexcept {
    countOne(size);
    return __real__ZN5CPool8AllocateEm(size);
}
}

AllocationCount::AllocationCount(benchmark::State& state)
    : m_state(state), m_allocations(g_allocations), m_bytes(g_bytes) {}

AllocationCount::~AllocationCount() {
    const auto perPass = [](std::size_t before, std::size_t after) {
        return benchmark::Counter(static_cast<double>(after - before),
                                  benchmark::Counter::kAvgIterations);
    };
    // Both are read first: a counter allocates its name.
    const benchmark::Counter allocations = perPass(m_allocations, g_allocations);
    const benchmark::Counter bytes = perPass(m_bytes, g_bytes);
    m_state.counters["allocs"] = allocations;
    m_state.counters["bytes"] = bytes;
}
