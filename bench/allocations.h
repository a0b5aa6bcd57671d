#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

/// Adds to a benchmark's results what one pass of its loop allocates, from the pool or with new:
/// "allocs", how often, and "bytes". Make it just before the loop; it counts until it goes out of
/// scope.
///
///     const AllocationCount count(state);
///     for (auto _ : state) benchmark::DoNotOptimize(left + right);
class AllocationCount {
public:
    explicit AllocationCount(benchmark::State& state);
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

private:
    benchmark::State& m_state;
    std::size_t m_allocations, m_bytes;  // of the program, when counting began
};
