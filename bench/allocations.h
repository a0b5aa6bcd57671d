#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

/// Adds to a benchmark's results what one pass of its loop asks of malloc: "allocs", how often, and
/// "bytes". A block of the pool counts only when the pool itself asks for more memory. Make the
/// object just before the loop; it counts until it goes out of scope.
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
