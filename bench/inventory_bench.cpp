// Counting the adapters of one name. No other step grows with the square of the list.

#include <benchmark/benchmark.h>

#include <string>

#include "pci/CustomPCIDeviceList.h"
#include "scratch.h"

namespace {
// A system configuration file that names each PCI function of the machine. Four functions have the
// same name.
std::string configurationOf(std::int64_t functions) {
    std::string configuration = "[PCIIDMap]\n";
    for (std::int64_t i = 0; i < functions / 4; ++i) {
        char entry[64];
        std::snprintf(entry, sizeof entry, "0x1ACE%04X = SINGLE_PORT_CONTROLLER_%d\n",
                      static_cast<unsigned>(i), static_cast<int>(i));
        configuration += entry;
    }
    return configuration;
}

std::string scanOf(std::int64_t functions) {
    std::string scan = "[PCI]\nTotal_Number_Of_Devices = " + std::to_string(functions) + "\n";
    for (std::int64_t i = 0; i < functions; ++i) {
        char keys[64];
        std::snprintf(keys, sizeof keys, "Vendor_ID.%d = 0x1ACE\nDevice_ID.%d = 0x%04X\n",
                      static_cast<int>(i), static_cast<int>(i),
                      static_cast<unsigned>(i % (functions / 4)));
        scan += keys;
    }
    return scan;
}

void CountDuplicates(benchmark::State& state) {
    const ScratchFile configuration(configurationOf(state.range(0))), scan(scanOf(state.range(0)));
    CustomPCIDeviceList adapters;
    adapters.setMapFileLocation(configuration.path());
    adapters.setInputFile(scan.path());
    adapters.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE |
                        CustomPCIDeviceList::INIT_NAME_ADAPTERS);
    for (auto _ : state) {
        adapters.resetList();
        while (PCIDeviceItem* item = adapters.getNextDeviceFromList())
            item->count = item->instance = -1;
        benchmark::DoNotOptimize(adapters.countDuplicateAdapters());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CountDuplicates)
    ->RangeMultiplier(4)
    ->Range(64, 1024)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);
}  // namespace
