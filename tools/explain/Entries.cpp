#include "explain/Entries.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

bool Entry::isSamePair(const Entry& other) const {
    return device && other.device && device->vendorID == other.device->vendorID &&
           device->deviceID == other.device->deviceID;
}

Entries::Entries(const CString& configurationPath, const CString& systemID,
                 const CString& inputPath) {
    inventory.setMapFileLocation(configurationPath);
    inventory.setSystemKeyword(systemID);
    inventory.setInputFile(inputPath);
    inventory.initialize(
        CustomPCIDeviceList::INIT_FROM_INPUT_FILE | CustomPCIDeviceList::INIT_NAME_ADAPTERS |
        CustomPCIDeviceList::INIT_LABEL_ONBOARD | CustomPCIDeviceList::INIT_COUNT_DUPLICATES);
    inventory.sortDevicesByType();
    inventory.resetList();
    nextAdapter = inventory.getNextDeviceFromList();

    groups[0] = {"DASDAdapters", inventory.getDASDDevices(), nullptr};
    groups[1] = {"NetworkAdapters", inventory.getNetworkDevices(), nullptr};
    groups[2] = {"VideoAdapter", inventory.getVideoDevices(), nullptr};
    groups[3] = {"ServiceProcessor", inventory.getServiceProcessorDevices(), nullptr};
    for (Group& group : groups) group.rest = group.names.c_str();

    readAll(inputPath);
}

Entries::~Entries() {
    while (Entry* entry = head) {
        head = entry->next;
        delete entry;
    }
}

void Entries::readAll(const CString& inputPath) {
    CustomPCIDeviceList reader;
    reader.setInputFile(inputPath);
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
        label(*entry);
    }
}

Entry* Entries::append(int number) {
    auto* entry = new (std::nothrow) Entry;
    if (!entry) CString::OutOfMemory();
    entry->first = entry->last = number;
    *end = entry;
    end = &entry->next;
    return entry;
}

// Finds the adapter of the entry, if it has one. All entries of a gap read as zeros, so either each
// of them has an adapter or none has.
void Entries::label(Entry& entry) {
    const PCIDeviceItem zeros;
    const PCIDeviceItem& device = entry.device ? *entry.device : zeros;
    const bool isNamed = nextAdapter && nextAdapter->vendorID == device.vendorID &&
                         nextAdapter->deviceID == device.deviceID;
    const int count = entry.last - entry.first + 1;
    (isNamed ? named : entry.device ? unnamed : missing) += count;
    if (!isNamed) return;
    for (int i = 0; i < count; ++i) takeAdapter(entry);
}

// Gives the entry the next adapter, and takes the name of the adapter off its group.
void Entries::takeAdapter(Entry& entry) {
    entry.adapter = nextAdapter;
    entry.group = nullptr;
    for (Group& group : groups) {
        if (!takeName(group, nextAdapter->adapterName)) continue;
        entry.group = group.key;
        break;  // the name may stand in a later group, but an adapter is in one only
    }
    if (nextAdapter->onBoard == "TRUE") ++onBoard;
    nextAdapter = inventory.getNextDeviceFromList();
}

// If the rest of the group begins with the name, takes the name off it and returns true. Only the
// first name has to be compared: groups list their adapters in the order of the inventory.
bool Entries::takeName(Group& group, const CString& name) {
    const std::size_t length = name.GetLength();
    if (std::strncmp(group.rest, name.c_str(), length) != 0) return false;
    if (group.rest[length] != ',' && group.rest[length] != '\0') return false;
    group.rest += length + (group.rest[length] == ',' ? 1 : 0);
    return true;
}
