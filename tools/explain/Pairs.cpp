#include "explain/Pairs.h"

#include <search.h>

#include <new>

namespace {
int compareIDs(const void* left, const void* right) {
    const auto& a = *static_cast<const Pair*>(left);
    const auto& b = *static_cast<const Pair*>(right);
    return a.vendorID != b.vendorID ? a.vendorID - b.vendorID : a.deviceID - b.deviceID;
}
}  // namespace

Pairs::~Pairs() {
    for (Pair* pair : pairs) {
        tdelete(pair, &tree, compareIDs);
        delete pair;
    }
}

void Pairs::add(const CString& path, const Entries& entries) {
    for (const Entry& entry : entries)
        if (entry.hasIDs()) addTo(require(*entry.device), *entry.device, path);
    ++currentFile;
}

Pair* Pairs::find(std::uint16_t vendorID, std::uint16_t deviceID) const {
    Pair wanted;
    wanted.vendorID = vendorID;
    wanted.deviceID = deviceID;
    void* const node = tfind(&wanted, &tree, compareIDs);
    return node ? *static_cast<Pair**>(node) : nullptr;
}

// The pair of the device. If it is a new one, looks it up on the CD.
Pair& Pairs::require(const PCIDeviceItem& device) {
    if (Pair* known = find(device.vendorID, device.deviceID)) return *known;
    auto* pair = CString::Required(new (std::nothrow) Pair);
    pair->vendorID = device.vendorID;
    pair->deviceID = device.deviceID;
    pair->classCode = device.classCode;
    pair->key = CustomPCIDeviceList().getDeviceINIFileEntry(&device);
    CString line;
    pair->isMissing = !configuration.FindItem(CustomPCIDeviceList::kMapSection, pair->key, line);
    CString::Required(tsearch(pair, &tree, compareIDs));
    return *pairs.append(pair);
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
