#include "pci/PCIDevice.h"

PCIDevice::PCIDevice() = default;

PCIDevice::~PCIDevice() = default;
