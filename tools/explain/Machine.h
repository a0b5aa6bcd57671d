#pragma once

#include <vector>

#include "common/ProductCD.h"
#include "explain/DeviceEntries.h"
#include "inspect/Configuration.h"
#include "inspect/Findings.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// How many device entries there are: each is named, left out, unnamed or absent.
struct Counts {
    long long entries = 0;
    long long named = 0;
    long long leftOut = 0;  ///< In the file; the CD gives their IDs an empty name.
    long long unnamed = 0;  ///< In the file, without a name.
    long long absent = 0;   ///< Not in the file, and without a name.
    long long onBoard = 0;

    void operator+=(const Counts& other);
    /// Whether there are device entries, and each has a name or is left out.
    bool areComplete() const { return entries > 0 && named + leftOut == entries; }
};

/// The line of the report that lists the adapter by its type; "" if none does.
CString groupOf(const PCIDevice& adapter);
bool isOnBoard(const PCIDevice& adapter);

/// What the converter makes of one detection file: the system, and the adapter of each device
/// entry.
///
/// The inventory runs as it does in the converter, and the device entries are read once more. Each
/// adapter of the inventory knows its device entry.
class Machine {
public:
    /// The text of the detection file is in memory as kDetectionCopy. `copy` is what else is known
    /// of the file.
    Machine(const CString& path, const Copy& copy, ProductCD& cd, Configuration& configuration);

    const CString path;    ///< What the file is called.
    Findings findings;     ///< What is wrong with the detection file.
    CString machineType;   ///< "" if the detection file gives none.
    CString serialNumber;  ///< The same.
    CString systemID;
    CString directory;  ///< "" if the CD gives the system none.
    DeviceEntries entries;
    std::vector<CString> addedAdapters;  ///< Those of the report that have no device entry.
    CustomPCIDeviceList inventory;
    std::vector<const ProductCD::File*> systemFiles;  ///< As ProductCD gives them.
    CIniFile positions;                               ///< The per-system file.
    Counts counts;

    bool isFine() const;  ///< Whether it is complete and has no warning.
    /// The path of the per-system file that is read; "" if none is.
    CString getSystemPath() const;
    /// The per-system file that could not be read to its end: then nothing else here counts. Null
    /// if there is none.
    const ProductCD::File* getBrokenFile() const;

private:
    void inspect(const Copy& copy);
    void identify(ProductCD& cd);
    void takeInventory();
    void label(DeviceEntry& entry);
    void takeAdapter(DeviceEntry& entry);

    Configuration& configuration;
    const PCIDeviceItem* nextAdapter = nullptr;
};
