#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "explain/DeviceEntries.h"
#include "inspect/Configuration.h"
#include "util/CString.h"

/// A pair of vendor and device ID, and where the detection files have it.
struct Pair {
    std::uint32_t classCode = 0;  ///< Of its first function.
    CString key;                  ///< Its key in section PCIIDMap.
    bool isMissing = false;       ///< Whether the section does not have the key.
    int fileCount = 0;
    int lastFile = -1;  ///< The number, from 0, of the last file that was counted.
    CString firstPath;  ///< The first of the files that have it.
    CString positions;  ///< In that file, each once, written as in a per-system file. Only as many
                        ///< as such a file may list.
    std::set<std::pair<int, int>> knownPositions;  ///< All of them: bus and device number.
    CString vendorName;  ///< From the list of PCI IDs; "" if no list has it.
    CString deviceName;  ///< The same.

    bool isBridge() const { return classCode >> 16 == 0x06; }
};

/// The pairs of vendor and device ID in all detection files, each once.
class Pairs {
public:
    using IDs = std::pair<std::uint16_t, std::uint16_t>;  ///< Of the vendor and of the device.

    explicit Pairs(const Configuration& names) : configuration(names) {}
    Pairs(const Pairs&) = delete;
    Pairs& operator=(const Pairs&) = delete;

    /// Adds the pairs of one more detection file.
    void add(const CString& path, const DeviceEntries& entries);
    /// Those that the configuration does not have: bridges last, then those of most files first,
    /// then in the order in which they were found.
    std::vector<const Pair*> getMissing() const;
    /// All pairs, in the order of their IDs.
    std::map<IDs, Pair>& getAll() { return pairs; }

private:
    Pair& get(const PCIDeviceItem& device);
    void count(Pair& pair, const PCIDeviceItem& device, const CString& path) const;

    const Configuration& configuration;
    std::map<IDs, Pair> pairs;
    std::vector<const Pair*> found;  // the pairs in the order in which they were found
    int currentFile = 0;             // the number, from 0, of the file whose pairs are added
};
