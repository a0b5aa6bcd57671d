#include "pci/PCIException.h"

PCIException::PCIException(CString text) : message(std::move(text)) {}
