#pragma once

#include <cstdint>

#include "util/CString.h"

/// One PCI function of the machine. The numbers up to headerType, and the last one, come from the
/// detection file. The inventory adds the rest.
struct PCIDevice {
    std::uint16_t vendorID = 0;
    std::uint16_t deviceID = 0;
    std::uint16_t subVendorID = 0;
    std::uint16_t subDeviceID = 0;
    std::uint16_t busNumber = 0;
    std::uint16_t deviceNumber = 0;    ///< The slot on that bus.
    std::uint16_t functionNumber = 0;  ///< Always 0, since the detection file does not have it.
    std::uint32_t classCode = 0;
    std::uint16_t revision = 0;
    std::uint16_t headerType = 0;

    CString adapterName;         ///< The name of these IDs on the CD. Never empty in a list.
    CString adapterType;         ///< A word in it, such as "DASD", selects a group. May be empty.
    CString onBoard;             ///< "TRUE" or "FALSE". Empty before labelling.
    std::int32_t count = -1;     ///< How many devices in the list have this name. -1: not counted.
    std::int32_t instance = -1;  ///< The number of this one among them, from 1. -1: not counted.

    std::int32_t entryNumber = -1;  ///< Of its device entry. -1: not from a detection file.

    PCIDevice();
    ~PCIDevice();
};
