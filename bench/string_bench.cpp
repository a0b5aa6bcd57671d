// The operations of a string whose cost grows with its text. "allocs" and "bytes" count what one
// pass allocates. A pass builds the whole text, joins two texts, searches once or takes all tokens.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "allocations.h"
#include "util/CString.h"

namespace {
std::size_t sizeOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Texts of 1,000, 10,000 and 100,000 characters.
void textSizes(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(10)->Range(1000, 100000)->Complexity()->Unit(benchmark::kMicrosecond);
}

void Append(benchmark::State& state) {
    const AllocationCount count(state);
    for (auto _ : state) {
        CString text;
        for (std::size_t i = 0; i < sizeOf(state); ++i) text += 'x';
        benchmark::DoNotOptimize(text.GetBuffer());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Append)->Apply(textSizes);

void Concatenate(benchmark::State& state) {
    const std::string half(sizeOf(state) / 2, 'x');
    const CString left = half.c_str(), right = left;
    const AllocationCount count(state);
    for (auto _ : state) benchmark::DoNotOptimize(left + right);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Concatenate)->Apply(textSizes);

void Find(benchmark::State& state) {
    const CString text = (std::string(sizeOf(state), 'x') + "end").c_str(), wanted = "xend";
    const AllocationCount count(state);
    for (auto _ : state) benchmark::DoNotOptimize(text.Find(wanted));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Find)->Apply(textSizes);

// As many tokens as the array has room for. The converter takes at most 4, the positions of an
// adapter.
void ParseTokens(benchmark::State& state) {
    std::string list = "0,0";
    for (std::size_t i = 1; i < sizeOf(state); ++i) list += "; " + std::to_string(i) + ",12";
    CString text = list.c_str();
    std::vector<CString> tokens(sizeOf(state));
    const unsigned max = static_cast<unsigned>(tokens.size());
    const AllocationCount count(state);
    for (auto _ : state) benchmark::DoNotOptimize(text.ParseTokens(tokens.data(), max, ";"));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(ParseTokens)->Arg(4)->Arg(64)->Arg(1024)->Complexity()->Unit(benchmark::kMicrosecond);
}  // namespace
