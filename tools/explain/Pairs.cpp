#include "explain/Pairs.h"

void Pairs::add(const CString& path, const Entries& entries) {
    for (const Entry& entry : entries)
        if (entry.hasIDs()) addTo(require(*entry.device), *entry.device, path);
    ++currentFile;
}

Pair* Pairs::find(std::uint16_t vendorID, std::uint16_t deviceID) {
    const auto pair = pairs.find({vendorID, deviceID});
    return pair != pairs.end() ? &pair->second : nullptr;
}

// The pair of the device. If it is a new one, looks it up on the CD.
Pair& Pairs::require(const PCIDeviceItem& device) {
    const auto [entry, isNew] = pairs.try_emplace({device.vendorID, device.deviceID});
    Pair& pair = entry->second;
    if (!isNew) return pair;
    found.push_back(&pair);
    pair.vendorID = device.vendorID;
    pair.deviceID = device.deviceID;
    pair.classCode = device.classCode;
    pair.key = CustomPCIDeviceList().getDeviceINIFileEntry(&device);
    CString line;
    pair.isMissing = !configuration.FindItem(CustomPCIDeviceList::kMapSection, pair.key, line);
    return pair;
}

// Counts the file. In the first file, counts the position as well; functions that follow each other
// may share one. Keeps only as many positions as a per-system file may list.
void Pairs::addTo(Pair& pair, const PCIDeviceItem& device, const CString& path) const {
    if (pair.lastFile != currentFile) ++pair.fileCount;
    pair.lastFile = currentFile;
    if (pair.fileCount > 1) return;
    pair.firstPath = path;
    const CString position = CString(device.busNumber) + "," + CString(device.deviceNumber);
    if (position == pair.lastPosition) return;
    pair.lastPosition = position;
    if (++pair.positionCount <= CustomPCIDeviceList::kMaxPositions)
        pair.positions.AddToken(position, "; ");
}
