// The INI document: loading, lookups and edits.

#include <benchmark/benchmark.h>

#include <string>

#include "allocations.h"
#include "scratch.h"
#include "util/IniFile.h"

namespace {
// A document of about `lines` lines. Its sections are [SECTION_0], [SECTION_1] and so on. Each has
// eight entries, Key_0 to Key_7, and a blank line stands between two sections.
class Document {
public:
    explicit Document(std::int64_t lines) : m_sections(lines / kLines), m_file(text()) {}

    CString path() const { return m_file.path(); }
    CString lastSection() const { return ("SECTION_" + std::to_string(m_sections - 1)).c_str(); }

private:
    static constexpr int kLines = 10;  // of a section

    std::string text() const {
        std::string text;
        for (std::int64_t i = 0; i < m_sections; ++i) {
            text += "[SECTION_" + std::to_string(i) + "]\n";
            for (int key = 0; key < kLines - 2; ++key)
                text += "Key_" + std::to_string(key) + " = value\n";
            text += '\n';
        }
        return text;
    }

    std::int64_t m_sections;
    ScratchFile m_file;
};

// Documents of 1,000, 10,000 and 100,000 lines.
void documentSizes(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(10)->Range(1000, 100000)->Complexity()->Unit(benchmark::kMicrosecond);
}

void Load(benchmark::State& state) {
    const Document document(state.range(0));
    const AllocationCount count(state);
    for (auto _ : state) benchmark::DoNotOptimize(CIniFile(document.path()).Exists());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(Load)->Apply(documentSizes);

void Lookup(benchmark::State& state, const char* key) {
    const Document document(state.range(0));
    CIniFile ini(document.path());
    const CString section = document.lastSection(), wanted = key;
    const AllocationCount count(state);
    for (auto _ : state) benchmark::DoNotOptimize(ini.ReadString(section, wanted));
    state.SetComplexityN(state.range(0));
}
BENCHMARK_CAPTURE(Lookup, Hit, "Key_7")->Apply(documentSizes);
BENCHMARK_CAPTURE(Lookup, Miss, "Key_8")->Apply(documentSizes);

// As many lookups as the document has lines. The two series of edits are compared with this one.
void MissedLookups(benchmark::State& state) {
    const Document document(state.range(0));
    CIniFile ini(document.path());
    const CString section = document.lastSection();
    for (auto _ : state)
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(ini.ReadString(section, "Key_8"));
    state.SetComplexityN(state.range(0));
}

// As many edits of the last section as the document has lines, then one write-back.
template <class KeyOf>
void edit(benchmark::State& state, KeyOf keyOf) {
    for (auto _ : state) {
        state.PauseTiming();
        const Document document(state.range(0));
        const CString section = document.lastSection();
        CIniFile ini(document.path());
        state.ResumeTiming();
        for (std::int64_t i = 0; i < state.range(0); ++i)
            ini.WriteString(section, keyOf(i), "changed", false, false);
        benchmark::DoNotOptimize(ini.Flush());
        state.PauseTiming();
        ini.DeleteLines();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
void ReplaceEntries(benchmark::State& state) {
    edit(state, [](std::int64_t) { return CString("Key_7"); });
}
// The section grows with each edit, so the last edits walk through twice as many lines.
void AddEntries(benchmark::State& state) {
    edit(state, [](std::int64_t i) { return CString("Added_") + CString(long{i}); });
}

void seriesSizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(4000)->Arg(10000)->Complexity()->Unit(benchmark::kMillisecond);
}
BENCHMARK(MissedLookups)->Apply(seriesSizes);
BENCHMARK(ReplaceEntries)->Apply(seriesSizes);
BENCHMARK(AddEntries)->Apply(seriesSizes);
}  // namespace
