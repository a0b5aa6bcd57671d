#include "explain/Entries.h"

#include <algorithm>
#include <new>
#include <utility>

Entries::Entries(const CString& path) {
    CustomPCIDeviceList reader;
    reader.setInputFile(path);
    reader.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE);
    total = std::max(0, reader.getTotalNumEntries());
    firstBeyondTotal = reader.findEntry(total);

    for (int number = 0; PCIDeviceItem* device = reader.getNextPCIDevice();) {
        Entry* entry = append(number);
        entry->device = device;
        if (!entry->hasIDs() && reader.findEntry(number) != number) {
            delete std::exchange(entry->device, nullptr);
            entry->last = reader.skipMissingEntries() - 1;
        }
        number = entry->last + 1;
    }
}

Entries::~Entries() {
    while (Entry* entry = head) {
        head = entry->next;
        delete entry;
    }
}

Entry* Entries::append(int number) {
    auto* entry = CString::Required(new (std::nothrow) Entry);
    entry->first = entry->last = number;
    *end = entry;
    end = &entry->next;
    return entry;
}
