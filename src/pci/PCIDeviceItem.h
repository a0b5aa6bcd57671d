#pragma once

#include "pci/PCIDevice.h"

/// A device in a list. An item owns its successor: deleting it deletes the whole rest of the chain.
/// Items live on the heap only.
struct PCIDeviceItem : PCIDevice {
    PCIDeviceItem* next = nullptr;

    PCIDeviceItem();
    ~PCIDeviceItem();
    PCIDeviceItem(const PCIDeviceItem&) = delete;
    PCIDeviceItem& operator=(const PCIDeviceItem&) = delete;
};
