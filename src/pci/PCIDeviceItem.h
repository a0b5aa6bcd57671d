#pragma once

#include "pci/PCIDevice.h"

/// A device in a list. An item owns the next one, which must be created with new. So deleting an
/// item deletes the rest of the list, too.
struct PCIDeviceItem : PCIDevice {
    PCIDeviceItem* next = nullptr;

    PCIDeviceItem();
    ~PCIDeviceItem();
    PCIDeviceItem(const PCIDeviceItem&) = delete;
    PCIDeviceItem& operator=(const PCIDeviceItem&) = delete;
};
