#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

/// Adds two counters to the results of a benchmark: "allocs", the calls of malloc in one pass of
/// its loop, and "bytes", the memory that they ask for. A block of the pool counts only if the pool
/// itself asks for more memory. Make the object just before the loop. It counts until it goes out
/// of scope.
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
    std::size_t m_allocations, m_bytes;  // the program's totals when counting began
};
