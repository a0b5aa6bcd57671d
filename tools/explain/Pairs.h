#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "explain/Entries.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// A pair of vendor and device ID, and where the detection files have it.
struct Pair {
    std::uint16_t vendorID = 0;
    std::uint16_t deviceID = 0;
    std::uint32_t classCode = 0;  ///< Of its first function.
    CString key;                  ///< Its key in section PCIIDMap.
    bool isMissing = false;       ///< Whether the section does not have the key.
    CString firstPath;            ///< The first of the files that have it.
    CString positions;            ///< In that file, written as in a per-system file.
    unsigned positionCount = 0;   ///< How many there are. `positions` holds only the first ones.
    int fileCount = 0;
    CString lastPosition;  ///< The last position that was counted.
    int lastFile = -1;     ///< The number, from 0, of the last file that was counted.
    CString vendorName;    ///< From the list of PCI IDs; "" if no list has it.
    CString deviceName;    ///< The same.

    bool isBridge() const { return classCode >> 16 == 0x06; }
};

/// The pairs of vendor and device ID in all detection files, each once, in the order in which they
/// were found. It owns them.
class Pairs {
public:
    explicit Pairs(CIniFile& configurationFile) : configuration(configurationFile) {}
    Pairs(const Pairs&) = delete;
    Pairs& operator=(const Pairs&) = delete;

    /// Adds the pairs of one more detection file.
    void add(const CString& path, const Entries& entries);
    auto begin() const { return found.begin(); }
    auto end() const { return found.end(); }
    Pair* find(std::uint16_t vendorID, std::uint16_t deviceID);  ///< Null if it is not there.

private:
    Pair& require(const PCIDeviceItem& device);
    void addTo(Pair& pair, const PCIDeviceItem& device, const CString& path) const;

    CIniFile& configuration;
    std::map<std::pair<std::uint16_t, std::uint16_t>, Pair> pairs;  // by vendor and device ID
    std::vector<Pair*> found;  // the same, in the order in which they were found
    int currentFile = 0;       // the number, from 0, of the file whose pairs are added
};
