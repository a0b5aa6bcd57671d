#include "inspect/Configuration.h"

#include "pci/CustomPCIDeviceList.h"

Configuration::Configuration(const CString& file)
    : path(file),
      document(file),
      systems(document, CustomPCIDeviceList::kSystemMapSection, isAnyKey),
      adapters(document, CustomPCIDeviceList::kMapSection, isAnyKey),
      mappedAdapters(document, CustomPCIDeviceList::kMapSection, isDeviceID),
      iniFile(file) {}

bool Configuration::hasKey(const CString& key) const {
    return document.findEntry(document.findSection(CustomPCIDeviceList::kMapSection), key);
}
