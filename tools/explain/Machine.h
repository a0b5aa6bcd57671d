#pragma once

#include "explain/Entries.h"
#include "inspect/Findings.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// The system configuration file of the CD.
struct ConfigurationFile {
    explicit ConfigurationFile(const CString& file) : path(file), document(file) {}

    const CString path;
    CIniFile document;
};

/// How many device entries there are: each is named, left out, unnamed or missing.
struct Counts {
    long long entries = 0;
    long long named = 0;
    long long leftOut = 0;  ///< In the file; the CD gives their IDs an empty name.
    long long unnamed = 0;  ///< In the file, without a name.
    long long missing = 0;  ///< Not in the file, and without a name.
    long long onBoard = 0;

    void operator+=(const Counts& other);
    /// Whether there are device entries, and each has a name or is left out.
    bool areComplete() const { return entries > 0 && named + leftOut == entries; }
};

/// What the converter makes of one detection file: the system, and the adapter of each device
/// entry.
///
/// The inventory runs as it does in the converter, and the device entries are read once more. The
/// adapters of the inventory are the device entries that have a name, in the same order.
class Machine {
public:
    Machine(const CString& detectionPath, ConfigurationFile& configuration);

    const CString path;
    Findings findings;    ///< What is wrong with the detection file.
    CString machineType;  ///< "" if the detection file gives none.
    CString systemID;
    CString directory;  ///< "" if the CD gives the system none.
    Entries entries;
    CString addedAdapters;  ///< Those of the report that have no device entry, joined by ",".
    CustomPCIDeviceList inventory;
    CIniFile positions;  ///< The per-system file.
    Counts counts;
    /// The file that was not read whole, as "PATH: reason": then nothing else here counts. "" if
    /// there is none. A per-system file that whyUnreadable() refuses is not a fault.
    CString fault;

private:
    void inspect();
    void identify(const CString& configurationPath);
    void takeInventory(const CString& configurationPath);
    void label(Entry& entry);
    void takeAdapter(Entry& entry);

    CIniFile& configuration;
    const PCIDeviceItem* nextAdapter = nullptr;
};
