#include "pci/PCIDeviceItem.h"

#include <utility>

PCIDeviceItem::PCIDeviceItem() = default;

// Unlinks each item before it is deleted, so that a list of any length is freed without recursion.
PCIDeviceItem::~PCIDeviceItem() {
    while (PCIDeviceItem* item = next) {
        next = std::exchange(item->next, nullptr);
        delete item;
    }
}
