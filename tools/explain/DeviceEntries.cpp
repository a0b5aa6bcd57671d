#include "explain/DeviceEntries.h"

#include <algorithm>
#include <utility>

DeviceEntries::DeviceEntries(const CString& path) {
    CustomPCIDeviceList reader;
    reader.setInputFile(path);
    reader.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE);
    total = std::max(0, reader.getTotalNumEntries());

    for (int number = 0; PCIDeviceItem* device = reader.getNextPCIDevice();) {
        DeviceEntry& entry = entries.emplace_back();
        entry.first = entry.last = number;
        entry.device = device;
        if (!entry.hasIDs() && reader.findEntry(number) != number) {
            // The file has no key of it: a gap, up to the next device entry that has one.
            delete std::exchange(entry.device, nullptr);
            entry.last = reader.skipMissingEntries() - 1;
        }
        number = entry.last + 1;
    }
}

DeviceEntries::~DeviceEntries() {
    for (const DeviceEntry& entry : entries) delete entry.device;
}
