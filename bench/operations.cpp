// The operations of a run, and of programs that use the utility classes, whose cost grows with
// their data: on documents, on the list of adapters and on strings.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"
#include "util/IniFile.h"

namespace {
// A file in the temporary folder, removed again with the object.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& text) {
        static int number = 0;
        m_path = std::filesystem::temp_directory_path() /
                 ("slotrpt_bench." + std::to_string(getpid()) + "." + std::to_string(number++));
        std::ofstream(m_path) << text;
    }
    ~ScratchFile() { std::filesystem::remove(m_path); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    CString path() const { return m_path.c_str(); }

private:
    std::filesystem::path m_path;
};

// ---------------------------------------------------------------- Documents

// The text of about `lines` lines: sections of a header, eight entries and a blank line each. The
// last section is [LAST].
std::string documentOf(std::int64_t lines) {
    std::string text;
    for (std::int64_t left = lines / 10; left > 0; --left) {
        text += left > 1 ? "[SECTION_" + std::to_string(left) + "]\n" : "[LAST]\n";
        for (int key = 0; key < 8; ++key) text += "Key_" + std::to_string(key) + " = value\n";
        text += '\n';
    }
    return text;
}

void Load(benchmark::State& state) {
    const ScratchFile document(documentOf(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(CIniFile(document.path()).Exists());
}

// A lookup that ends at the last entry.
void Lookup(benchmark::State& state) {
    const ScratchFile document(documentOf(state.range(0)));
    CIniFile ini(document.path());
    const CString section = "LAST", key = "Key_7";
    for (auto _ : state) benchmark::DoNotOptimize(ini.ReadString(section, key));
}

// As many edits of the last section as the document has lines, then one write-back. If each edit
// adds an entry, the last ones walk through twice as many lines.
void Edit(benchmark::State& state, bool isAdded) {
    for (auto _ : state) {
        state.PauseTiming();
        const ScratchFile document(documentOf(state.range(0)));
        CIniFile ini(document.path());
        state.ResumeTiming();
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const CString key = isAdded ? CString("Added_") + CString(long{i}) : CString("Key_7");
            ini.WriteString("LAST", key, "changed", false, false);
        }
        benchmark::DoNotOptimize(ini.Flush());
    }
}

// ---------------------------------------------------------------- Adapters

// A machine whose adapters have names in groups of four. Counting those of one name is the only
// step whose cost grows with the square of the list.
void CountDuplicates(benchmark::State& state) {
    std::string configuration = "[PCIIDMap]\n", scan = "[PCI]\nTotal_Number_Of_Devices = 9999\n";
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const std::string number = std::to_string(i), id = std::to_string(1000 + i / 4);
        configuration += "0x1ACE" + id + " = SINGLE_PORT_CONTROLLER_" + id + "\n";
        scan += "Vendor_ID." + number + " = 0x1ACE\nDevice_ID." + number + " = 0x" + id + "\n";
    }
    const ScratchFile configurationFile(configuration), scanFile(scan);
    CustomPCIDeviceList adapters;
    adapters.setMapFileLocation(configurationFile.path());
    adapters.setInputFile(scanFile.path());
    adapters.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE |
                        CustomPCIDeviceList::INIT_NAME_ADAPTERS);
    for (auto _ : state) {
        adapters.resetList();
        while (PCIDeviceItem* item = adapters.getNextDeviceFromList())
            item->count = item->instance = -1;
        benchmark::DoNotOptimize(adapters.countDuplicateAdapters());
    }
}

// ---------------------------------------------------------------- Strings

void Append(benchmark::State& state) {
    for (auto _ : state) {
        CString text;
        for (std::int64_t i = 0; i < state.range(0); ++i) text += 'x';
        benchmark::DoNotOptimize(text.GetBuffer());
    }
}

// As many tokens as the array has room for.
void ParseTokens(benchmark::State& state) {
    CString list;
    for (std::int64_t i = 0; i < state.range(0); ++i) list += "12,3; ";
    const unsigned max = static_cast<unsigned>(state.range(0));
    std::vector<CString> tokens(max);
    for (auto _ : state) benchmark::DoNotOptimize(list.ParseTokens(tokens.data(), max, ";"));
}

// Ten times the data show how the cost grows.
void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}
BENCHMARK(Load)->Apply(sizes);
BENCHMARK(Lookup)->Apply(sizes);
BENCHMARK_CAPTURE(Edit, replace, false)->Apply(sizes);
BENCHMARK_CAPTURE(Edit, add, true)->Apply(sizes);
BENCHMARK(CountDuplicates)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Append)->Apply(sizes);
BENCHMARK(ParseTokens)->Apply(sizes);
}  // namespace
