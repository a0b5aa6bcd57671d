#include "pci/PCIDeviceItem.h"

#include <utility>

PCIDeviceItem::PCIDeviceItem() = default;

// Each successor is unlinked before it goes, so that a chain of any length is freed without
// recursion.
PCIDeviceItem::~PCIDeviceItem() {
    while (PCIDeviceItem* item = next) {
        next = std::exchange(item->next, nullptr);
        delete item;
    }
}
