#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t g_allocations = 0, g_bytes = 0;
}  // namespace

// The linker option --wrap=malloc sends every call of malloc to __wrap_malloc.
extern "C" {
void* __real_malloc(std::size_t size) noexcept;
void* __wrap_malloc(std::size_t size) noexcept {
    ++g_allocations;
    g_bytes += size;
    return __real_malloc(size);
}
}

// The operator new of the standard library would call malloc without __wrap_malloc. Its forms for
// arrays and without exceptions call these.
void* operator new(std::size_t size) {
    void* memory = std::malloc(size ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}
// If this is inlined, g++ warns that memory from new is passed to free.
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

AllocationCount::AllocationCount(benchmark::State& state)
    : m_state(state), m_allocations(g_allocations), m_bytes(g_bytes) {}

AllocationCount::~AllocationCount() {
    const auto perPass = [](std::size_t before, std::size_t after) {
        return benchmark::Counter(static_cast<double>(after - before),
                                  benchmark::Counter::kAvgIterations);
    };
    // Read both before a counter is added, since adding one allocates its name.
    const benchmark::Counter allocations = perPass(m_allocations, g_allocations);
    const benchmark::Counter bytes = perPass(m_bytes, g_bytes);
    m_state.counters["allocs"] = allocations;
    m_state.counters["bytes"] = bytes;
}
