#include "explain/printMachine.h"

#include <algorithm>
#include <cstdio>

#include "common/printable.h"
#include "explain/classInWords.h"
#include "explain/columns.h"
#include "inspect/inspect.h"

namespace {
// ---------------------------------------------------------------- The system

CString describeSystemID(const Machine& machine) {
    if (machine.systemID != CustomPCIDeviceList::kUnknownSystem) return machine.systemID;
    return machine.systemID +
           (machine.machineType.IsEmpty()
                ? ": the detection file gives no machine type"
                : ": [SystemIDMap] has no identifier for " + machine.machineType);
}

// Why no per-system file is read.
CString describeMissingFile(const Machine& machine) {
    CString asWritten, inLowerCase;
    if (!machine.inventory.getSysINICandidates(asWritten, inLowerCase))
        return "none: the system identifier has no \"_\"";
    if (!machine.systemFiles.empty()) {
        const ProductCD::File& file = *machine.systemFiles.front();
        return "none: cannot read " + file.path + ": " + file.copy.reason;
    }
    if (asWritten == inLowerCase) return "none: there is no " + asWritten;
    return "none: there is neither " + asWritten + " nor " + inLowerCase;
}

CString describeSystemFile(const Machine& machine) {
    const CString path = machine.getSystemPath();
    return path.IsEmpty() ? describeMissingFile(machine) : path;
}

void printFact(const char* name, const CString& value) {
    std::printf("%-20s%s\n", name, printable(value).c_str());
}

void printSystem(const Machine& machine, const CString& configurationPath) {
    printFact("Detection file", machine.path);
    printFact("Configuration file", configurationPath);
    printFact("Machine type", orNone(machine.machineType));
    printFact("System identifier", describeSystemID(machine));
    printFact("Directory", orNone(machine.directory));
    printFact("Per-system file", describeSystemFile(machine));
}

// ---------------------------------------------------------------- The table

// The widths of the columns that depend on the device entries. At first, those of their heads.
struct Widths {
    int number = 5, name = 7, type = 4, group = 5;
};

CString numberOf(const DeviceEntry& entry) {
    const CString first = entry.first;
    return entry.first == entry.last ? first : first + "-" + CString(entry.last);
}

Widths measure(const DeviceEntries& entries) {
    Widths widths;
    for (const DeviceEntry& entry : entries) {
        widen(widths.number, numberOf(entry));
        if (!entry.adapter) continue;
        widen(widths.name, printable(entry.adapter->adapterName));
        widen(widths.type, printable(entry.adapter->adapterType));
        widen(widths.group, orNone(groupOf(*entry.adapter)));
    }
    return widths;
}

void printHead(const Widths& widths) {
    std::printf("%*s  BusN  DevN  PCIID     SubSysID  ", widths.number, "Entry");
    printColumn("Adapter", widths.name);
    printColumn("Type", widths.type);
    printColumn("Group", widths.group);
    std::printf("On-Board\n");
}

void printNumbers(const DeviceEntry& entry, const Widths& widths) {
    std::printf("%*s  ", widths.number, numberOf(entry).c_str());
    if (const PCIDevice* device = entry.device)
        std::printf("%4d  %4d  %.4hX%.4hX  %.4hX%.4hX  ", device->busNumber, device->deviceNumber,
                    device->vendorID, device->deviceID, device->subVendorID, device->subDeviceID);
    else
        std::printf("%4s  %4s  %-8s  %-8s  ", kNone, kNone, kNone, kNone);
}

// Why the report has no adapter for the device entry.
CString describeAbsence(const DeviceEntry& entry, const CustomPCIDeviceList& inventory) {
    if (!entry.device) return "not in the file";
    if (!entry.hasIDs()) return "no vendor ID and no device ID";
    if (entry.isLeftOut)
        return "left out: " + inventory.getDeviceINIFileEntry(entry.device) + " has an empty name";
    return "no name for " + inventory.getDeviceINIFileEntry(entry.device) +
           " in [PCIIDMap]: " + classInWords(entry.device->classCode);
}

// Whether the adapter is on-board. If not, the positions that the per-system file lists for it.
CString describeOnBoard(const PCIDevice& adapter, CIniFile& positions) {
    if (isOnBoard(adapter)) return "yes";
    const CString listed =
        positions.ReadString(adapter.adapterName, CustomPCIDeviceList::kOnBoardKey);
    return listed.IsEmpty() ? "no" : "no, only at " + listed;
}

void printEntry(const DeviceEntry& entry, Machine& machine, const Widths& widths) {
    printNumbers(entry, widths);
    if (const PCIDevice* adapter = entry.adapter) {
        printColumn(printable(adapter->adapterName), widths.name);
        printColumn(orNone(printable(adapter->adapterType)), widths.type);
        printColumn(orNone(groupOf(*adapter)), widths.group);
        std::printf("%s%s\n", printable(describeOnBoard(*adapter, machine.positions)).c_str(),
                    entry.device ? "" : ", and not in the file");
    } else {
        printColumn(kNone, widths.name);
        std::printf("%s\n", describeAbsence(entry, machine.inventory).c_str());
    }
}

void printEntries(Machine& machine) {
    if (machine.entries.getTotal() == 0) {
        std::printf("There are no device entries.\n");
        return;
    }
    const Widths widths = measure(machine.entries);
    printHead(widths);
    for (const DeviceEntry& entry : machine.entries) printEntry(entry, machine, widths);
}

// ---------------------------------------------------------------- Below the table

// Why the report has an adapter that no device entry gives it.
CString describePresence(const CString& adapter, const CString& systemID) {
    return isSystemAdapter(adapter) ? "since Systems in [" + adapter + "] contains " + systemID
                                    : "as in every report";
}

void printAddedAdapters(const Machine& machine) {
    std::printf("\n");
    if (machine.counts.named == 0) {
        std::printf("There is no report, since no device entry has a name.\n");
        return;
    }
    for (const CString& name : machine.addedAdapters)
        std::printf("In the report without a device entry: %s, %s\n", name.c_str(),
                    printable(describePresence(name, machine.systemID)).c_str());
}
}  // namespace

void printMachine(Machine& machine, const CString& configurationPath) {
    printSystem(machine, configurationPath);
    std::printf("\n");
    printEntries(machine);
    printAddedAdapters(machine);
}

void printCounts(const Counts& counts) {
    std::printf("%lld device %s: %lld named", counts.entries,
                counts.entries == 1 ? "entry" : "entries", counts.named);
    if (counts.leftOut != 0) std::printf(", %lld left out", counts.leftOut);
    std::printf(", %lld unnamed, %lld on-board", counts.unnamed, counts.onBoard);
    if (counts.absent != 0) std::printf(", %lld not in the file", counts.absent);
    std::printf("\n");
}
