#include "explain/Pairs.h"

#include <algorithm>

#include "pci/CustomPCIDeviceList.h"

void Pairs::add(const CString& path, const DeviceEntries& entries) {
    for (const DeviceEntry& entry : entries)
        if (entry.hasIDs()) count(get(*entry.device), *entry.device, path);
    ++currentFile;
}

// The pair of the device. If it is a new one, looks it up on the CD.
Pair& Pairs::get(const PCIDeviceItem& device) {
    const auto [place, isNew] = pairs.try_emplace({device.vendorID, device.deviceID});
    Pair& pair = place->second;
    if (!isNew) return pair;
    pair.classCode = device.classCode;
    pair.key = CustomPCIDeviceList().getDeviceINIFileEntry(&device);
    pair.isMissing = !configuration.hasKey(pair.key);
    found.push_back(&pair);
    return pair;
}

// Counts the file. In the first file, counts the position as well; functions may share one.
void Pairs::count(Pair& pair, const PCIDeviceItem& device, const CString& path) const {
    if (pair.lastFile != currentFile) ++pair.fileCount;
    pair.lastFile = currentFile;
    if (pair.fileCount > 1) return;
    pair.firstPath = path;
    const bool isNew = pair.knownPositions.insert({device.busNumber, device.deviceNumber}).second;
    if (isNew && pair.knownPositions.size() <= CustomPCIDeviceList::kMaxPositions)
        pair.positions.AddToken(CString(device.busNumber) + "," + CString(device.deviceNumber),
                                "; ");
}

std::vector<const Pair*> Pairs::getMissing() const {
    std::vector<const Pair*> missing;
    std::copy_if(found.begin(), found.end(), std::back_inserter(missing),
                 [](const Pair* pair) { return pair->isMissing; });
    std::stable_sort(missing.begin(), missing.end(), [](const Pair* a, const Pair* b) {
        return a->isBridge() != b->isBridge() ? b->isBridge() : a->fileCount > b->fileCount;
    });
    return missing;
}
