#pragma once

#include <vector>

#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"

/// One device entry of the detection file, or a gap: consecutive ones of which the file holds no
/// key.
struct DeviceEntry {
    int first = 0;                    ///< Its number, or that of the first one in the gap.
    int last = 0;                     ///< Its number, or that of the last one in the gap.
    PCIDeviceItem* device = nullptr;  ///< What the file says; null in a gap.
    /// Its adapter in the report, or that of the first one in the gap; null if there is none.
    const PCIDeviceItem* adapter = nullptr;
    bool isLeftOut = false;  ///< Whether the CD gives its IDs an empty name, so it has no adapter.

    /// Whether the file gives it an ID other than 0.
    bool hasIDs() const { return device && (device->vendorID != 0 || device->deviceID != 0); }
    int getCount() const { return last - first + 1; }
};

/// The device entries of a detection file, in order. It owns their devices.
class DeviceEntries {
public:
    explicit DeviceEntries(const CString& path);
    ~DeviceEntries();
    DeviceEntries(const DeviceEntries&) = delete;
    DeviceEntries& operator=(const DeviceEntries&) = delete;

    auto begin() { return entries.begin(); }
    auto end() { return entries.end(); }
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }
    int getTotal() const { return total; }  ///< How many there are, gaps included. Never negative.

private:
    int total = 0;
    std::vector<DeviceEntry> entries;
};
