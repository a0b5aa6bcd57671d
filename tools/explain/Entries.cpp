#include "explain/Entries.h"

#include <algorithm>
#include <utility>

Entries::Entries(const CString& path) {
    CustomPCIDeviceList reader;
    reader.setInputFile(path);
    reader.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE);
    total = std::max(0, reader.getTotalNumEntries());
    firstBeyondTotal = reader.findEntry(total);

    for (int number = 0; PCIDeviceItem* device = reader.getNextPCIDevice();) {
        Entry& entry = entries.emplace_back();
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

Entries::~Entries() {
    for (const Entry& entry : entries) delete entry.device;
}
