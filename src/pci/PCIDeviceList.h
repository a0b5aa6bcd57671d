#pragma once

#include <cstdint>

#include "pci/PCIDeviceItem.h"

/// The devices of one machine, in the order in which they were found. The list owns its items.
///
/// A list is filled once and then walked any number of times with its one cursor:
///
///     list.resetList();
///     while (PCIDeviceItem* item = list.getNextDeviceFromList()) print(*item);
class PCIDeviceList {
public:
    PCIDeviceList();
    ~PCIDeviceList();
    PCIDeviceList(const PCIDeviceList&) = delete;
    PCIDeviceList& operator=(const PCIDeviceList&) = delete;

    bool
    initialize();  ///< Fills the list with scanPCIBusAndCreateList(); always true. Not virtual.
    /// How many items scanPCIBusAndCreateList() appended: NOT those that a derived class adds.
    int getTotalNumDevices() const;

    void resetList();  ///< Puts the cursor on the first item; before, it is at the end.
    /// The item at the cursor, which moves on; null at the end, again and again. The list keeps the
    /// item.
    PCIDeviceItem* getNextDeviceFromList();

    /// Appends every device of this class's own source, whatever a derived class has for a source.
    /// The cursor stays. Always true.
    bool scanPCIBusAndCreateList();
    /// A new item for the next device, owned by the caller; null when there is none. This source
    /// has no access to hardware, so there is never one.
    PCIDeviceItem* getNextPCIDevice();

protected:
    PCIDeviceItem** endOfList();  // the link that the next item is to go into

    PCIDeviceItem* head = nullptr;

private:
    std::int32_t numDevices = 0;
    PCIDeviceItem* current = nullptr;  // what getNextDeviceFromList() returns next
};
