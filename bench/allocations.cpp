#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t g_allocations = 0, g_bytes = 0;
}  // namespace

// malloc. The link of the benchmarks sends every call of it here first.
extern "C" {
void* __real_malloc(std::size_t size) noexcept;
void* __wrap_malloc(std::size_t size) noexcept {
    ++g_allocations;
    g_bytes += size;
    return __real_malloc(size);
}
}

// The library's own new would call malloc behind that link. Its other forms, those for arrays and
// those that do not throw, come down to these.
void* operator new(std::size_t size) {
    void* memory = std::malloc(size ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}
// Not inlined, or g++ warns that memory of new goes to free.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

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
