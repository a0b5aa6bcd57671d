#pragma once

#include <cstdint>

#include "pci/PCIDeviceItem.h"

/// The devices of one machine, in the order in which they were found. The list owns its items.
///
/// A list is filled once. Then it can be walked any number of times, with its one cursor:
///
///     list.resetList();
///     while (PCIDeviceItem* item = list.getNextDeviceFromList()) print(*item);
class PCIDeviceList {
public:
    PCIDeviceList();
    ~PCIDeviceList();
    PCIDeviceList(const PCIDeviceList&) = delete;
    PCIDeviceList& operator=(const PCIDeviceList&) = delete;

    /// Fills the list by scanPCIBusAndCreateList(). Always true. Not virtual.
    bool initialize();
    /// How many items scanPCIBusAndCreateList() added. Does NOT count those of a derived class.
    int getTotalNumDevices() const;

    void resetList();  ///< Moves the cursor to the first item. A new list's cursor is at the end.
    /// Returns the item at the cursor and moves the cursor on. At the end, always returns null. The
    /// list keeps the item.
    PCIDeviceItem* getNextDeviceFromList();

    /// Appends all devices of this class's getNextPCIDevice(), never those of a derived class. Does
    /// not move the cursor. Always true.
    bool scanPCIBusAndCreateList();
    /// A new item for the next device, which the caller owns. Null if there is none: always, since
    /// this class cannot read hardware.
    PCIDeviceItem* getNextPCIDevice();

protected:
    PCIDeviceItem** endOfList();  // the null pointer at the end, where the next item goes

    PCIDeviceItem* head = nullptr;

private:
    std::int32_t numDevices = 0;
    PCIDeviceItem* current = nullptr;  // the cursor: the item that a walk returns next
};
