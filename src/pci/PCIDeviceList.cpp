#include "pci/PCIDeviceList.h"

PCIDeviceList::PCIDeviceList() = default;

PCIDeviceList::~PCIDeviceList() { delete head; }

bool PCIDeviceList::initialize() { return scanPCIBusAndCreateList(); }

int PCIDeviceList::getTotalNumDevices() const { return numDevices; }

void PCIDeviceList::resetList() { current = head; }

PCIDeviceItem* PCIDeviceList::getNextDeviceFromList() {
    PCIDeviceItem* item = current;
    if (item) current = item->next;
    return item;
}

bool PCIDeviceList::scanPCIBusAndCreateList() {
    PCIDeviceItem** end = endOfList();
    for (; (*end = PCIDeviceList::getNextPCIDevice()); end = &(*end)->next) ++numDevices;
    return true;
}

PCIDeviceItem* PCIDeviceList::getNextPCIDevice() { return nullptr; }

PCIDeviceItem** PCIDeviceList::endOfList() {
    PCIDeviceItem** end = &head;
    while (*end) end = &(*end)->next;
    return end;
}
