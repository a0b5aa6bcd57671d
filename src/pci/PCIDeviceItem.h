#pragma once

#include "pci/PCIDevice.h"

/// A device in a list. An item owns the next one, so deleting it deletes the rest of the list too.
/// Items must be created with new.
struct PCIDeviceItem : PCIDevice {
    PCIDeviceItem* next = nullptr;

    PCIDeviceItem();
    ~PCIDeviceItem();
    PCIDeviceItem(const PCIDeviceItem&) = delete;
    PCIDeviceItem& operator=(const PCIDeviceItem&) = delete;
};
