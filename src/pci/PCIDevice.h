#pragma once

#include <cstdint>

#include "util/CString.h"

/// One PCI function of the machine. The numbers are what the detection file says of it; the labels
/// below them are what the inventory finds out.
struct PCIDevice {
    std::uint16_t vendorID = 0;
    std::uint16_t deviceID = 0;
    std::uint16_t subVendorID = 0;
    std::uint16_t subDeviceID = 0;
    std::uint16_t busNumber = 0;
    std::uint16_t deviceNumber = 0;    ///< The slot on that bus.
    std::uint16_t functionNumber = 0;  ///< Always 0: the detection file does not give it.
    std::uint32_t classCode = 0;
    std::uint16_t revision = 0;
    std::uint16_t headerType = 0;

    CString adapterName;         ///< The name that the map gives these IDs; never empty in a list.
    CString adapterType;         ///< Its text holds "DASD", "NETWORK" and so on; may be empty.
    CString onBoard;             ///< "TRUE" or "FALSE"; empty until labelled.
    std::int32_t count = -1;     ///< How many devices of the list have this name; -1: not counted.
    std::int32_t instance = -1;  ///< Which of them this is, from 1, in list order; -1: not counted.

    PCIDevice();
    ~PCIDevice();
};
