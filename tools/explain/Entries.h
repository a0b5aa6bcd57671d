#pragma once

#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"

/// One entry of the detection file, or a gap: consecutive entries of which the file holds no key.
struct Entry {
    int first = 0;                    ///< The number of the entry, or of the first one in the gap.
    int last = 0;                     ///< The same, or the number of the last one in the gap.
    PCIDeviceItem* device = nullptr;  ///< What the file says; null in a gap. Owned.
    const PCIDeviceItem* adapter = nullptr;  ///< The adapter in the report; null when left out.
    const char* group = nullptr;             ///< The report's line for its type; null when none.
    CString vendorName;      ///< From the list of PCI IDs; "" when it was not looked up.
    CString deviceName;      ///< The same.
    bool isPrinted = false;  ///< Whether the lines for the map already hold its pair of IDs.
    Entry* next = nullptr;

    Entry() = default;
    ~Entry() { delete device; }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    /// Whether the file gives the entry an ID that the map could name.
    bool hasIDs() const { return device && (device->vendorID != 0 || device->deviceID != 0); }
    bool isUnnamed() const { return hasIDs() && !adapter; }
    bool isSamePair(const Entry& other) const;
};

/// The entries of a detection file, in order, each with its adapter in the report. It owns them.
///
/// The inventory runs as it does in the converter, and a second one reads the same file entry by
/// entry. The adapters of the first are the named entries of the second, in the same order. A pair
/// of IDs either has a name or has none. So an entry has a name exactly if its IDs are those of the
/// next adapter.
class Entries {
public:
    Entries(const CString& configurationPath, const CString& systemID, const CString& inputPath);
    ~Entries();
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;

    Entry* getFirst() const { return head; }
    const CustomPCIDeviceList& getInventory() const { return inventory; }
    /// Whether there are entries, and the report has an adapter for every entry in the file.
    bool areComplete() const { return total > 0 && named == total && firstBeyondTotal < 0; }

    // How many entries there are. Each entry of the total is named, unnamed or missing.
    int total = 0;
    int named = 0;
    int unnamed = 0;  ///< In the file, without a name.
    int missing = 0;  ///< Not in the file, and without a name.
    int onBoard = 0;
    int firstBeyondTotal = -1;  ///< The first entry number that is not below the total, or -1.

private:
    // A line of the report's last section. `rest` is the part of `names` whose adapters have not
    // been given to an entry yet.
    struct Group {
        const char* key;
        CString names;
        const char* rest;
    };

    void readAll(const CString& inputPath);
    Entry* append(int number);
    void label(Entry& entry);
    void takeAdapter(Entry& entry);
    static bool takeName(Group& group, const CString& name);

    CustomPCIDeviceList inventory;
    const PCIDeviceItem* nextAdapter = nullptr;
    Group groups[4];
    Entry* head = nullptr;
    Entry** end = &head;
};
