#include "pci/PCIException.h"

#include <utility>

PCIException::PCIException(CString text) : message(std::move(text)) {}
