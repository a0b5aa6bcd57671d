#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "common/command.h"
#include "common/files.h"
#include "common/printable.h"
#include "explain/Entries.h"
#include "explain/PCINames.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"
#include "util/IniFile.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-explain [--missing] [--pci-ids=LIST] FILE\n"
    "Shows what slotrpt makes of each entry of the detection file FILE, and why.\n"
    "\n"
    "  --missing       print lines for section [PCIIDMap] of syscfg.ini instead, one for\n"
    "                  each pair of vendor and device ID that has no name there\n"
    "  --pci-ids=LIST  with --missing, take the names of vendors and devices from LIST,\n"
    "                  not from the pci.ids of this system\n"
    "  --help          print this text\n"
    "  --version       print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD.\n"
    "Exit status: 0 all entries have a name, 1 some do not, 2 a file cannot be read.\n";

// Where systems have their list of PCI IDs.
constexpr const char* kPCILists[] = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids"};

constexpr const char* kNone = "-";

// Whether the file can be read. If not, prints the reason and the hint.
bool canRead(const CString& path, const CString& hint) {
    const CString reason = whyUnreadable(path);
    if (!reason.IsEmpty()) complain("cannot read " + path + ": " + reason + hint);
    return reason.IsEmpty();
}

// ---------------------------------------------------------------- The system

CString describeSystemID(const CString& systemID, const CString& machineType) {
    if (systemID != CustomPCIDeviceList::kUnknownSystem) return systemID;
    if (machineType.IsEmpty()) return systemID + ", for the detection file gives no machine type";
    return systemID + ", for [SystemIDMap] has no identifier for " + machineType;
}

CString describeSystemFile(const CustomPCIDeviceList& inventory) {
    const CString path = inventory.getSysINIPathName();
    if (!path.IsEmpty()) {
        const CString reason = whyUnreadable(path);
        return reason.IsEmpty() ? path : path + ", which cannot be read: " + reason;
    }
    CString asWritten, inLowerCase;
    if (!inventory.getSysINICandidates(asWritten, inLowerCase))
        return "none, for the system identifier has no \"_\"";
    if (asWritten == inLowerCase) return "none, for there is no " + asWritten;
    return "none, for there is neither " + asWritten + " nor " + inLowerCase;
}

void printFact(const char* name, const CString& value) {
    std::printf("%-20s%s\n", name, printable(value).c_str());
}

void printSystem(const CString& inputPath, const CString& configurationPath,
                 const CString& machineType, const CString& systemID,
                 const CustomPCIDeviceList& inventory) {
    printFact("Detection file", inputPath);
    const bool isRootSet = std::getenv("RWCD") != nullptr;
    printFact("Configuration file",
              isRootSet ? configurationPath : configurationPath + ", for " + describeRoot());
    printFact("Machine type", machineType.IsEmpty() ? kNone : machineType);
    printFact("System identifier", describeSystemID(systemID, machineType));
    printFact("Per-system file", describeSystemFile(inventory));
}

// ---------------------------------------------------------------- The table

// The widths of the columns that depend on the entries.
struct Widths {
    int number = 5, name = 7, type = 4, group = 5;
};

// A column is no wider than this. A longer text shifts only its own row.
constexpr int kMaxWidth = 32;

void widen(int& width, const CString& text) {
    const int columns = countColumns(text);
    if (columns <= kMaxWidth) width = std::max(width, columns);
}

CString orNone(const CString& text) { return text.IsEmpty() ? kNone : printable(text); }

CString numberOf(const Entry& entry) {
    const CString first = entry.first;
    return entry.first == entry.last ? first : first + "-" + CString(entry.last);
}

Widths measure(const Entries& entries) {
    Widths widths;
    for (const Entry* entry = entries.getFirst(); entry; entry = entry->next) {
        widen(widths.number, numberOf(*entry));
        if (!entry->adapter) continue;
        widen(widths.name, orNone(entry->adapter->adapterName));
        widen(widths.type, orNone(entry->adapter->adapterType));
        widen(widths.group, orNone(entry->group));
    }
    return widths;
}

void printColumn(const CString& text, int width) {
    std::printf("%s%*s", text.c_str(), std::max(0, width - countColumns(text)) + 2, "");
}

void printHead(const Widths& widths) {
    std::printf("%*s  BusN  DevN  PCIID     SubSysID  ", widths.number, "Entry");
    printColumn("Adapter", widths.name);
    printColumn("Type", widths.type);
    printColumn("Group", widths.group);
    std::printf("On-Board\n");
}

void printNumbers(const Entry& entry, const Widths& widths) {
    std::printf("%*s  ", widths.number, numberOf(entry).c_str());
    if (const PCIDevice* device = entry.device)
        std::printf("%4d  %4d  %.4hX%.4hX  %.4hX%.4hX  ", device->busNumber, device->deviceNumber,
                    device->vendorID, device->deviceID, device->subVendorID, device->subDeviceID);
    else
        std::printf("%4s  %4s  %-8s  %-8s  ", kNone, kNone, kNone, kNone);
}

// Why the report has no adapter for the entry.
CString describeAbsence(const Entry& entry, const CustomPCIDeviceList& inventory) {
    if (!entry.device) return "not in the file";
    if (!entry.hasIDs()) return "no vendor ID and no device ID";
    return "no name for " + inventory.getDeviceINIFileEntry(entry.device) +
           " in [PCIIDMap]: " + classInWords(entry.device->classCode);
}

// Whether the adapter is on-board. If not, the positions that the per-system file lists for it.
CString describeOnBoard(const PCIDevice& adapter, CIniFile& positions) {
    if (adapter.onBoard == "TRUE") return "yes";
    const CString listed = positions.ReadString(adapter.adapterName, "OnBoard");
    return listed.IsEmpty() ? "no" : "no, only at " + listed;
}

void printEntry(const Entry& entry, const CustomPCIDeviceList& inventory, CIniFile& positions,
                const Widths& widths) {
    printNumbers(entry, widths);
    if (const PCIDevice* adapter = entry.adapter) {
        printColumn(orNone(adapter->adapterName), widths.name);
        printColumn(orNone(adapter->adapterType), widths.type);
        printColumn(orNone(entry.group), widths.group);
        std::printf("%s%s\n", printable(describeOnBoard(*adapter, positions)).c_str(),
                    entry.device ? "" : ", and not in the file");
    } else {
        printColumn(kNone, widths.name);
        std::printf("%s\n", describeAbsence(entry, inventory).c_str());
    }
}

void printTable(const Entries& entries) {
    const Widths widths = measure(entries);
    const CustomPCIDeviceList& inventory = entries.getInventory();
    CIniFile positions(inventory.getSysINIPathName());
    printHead(widths);
    for (const Entry* entry = entries.getFirst(); entry; entry = entry->next)
        printEntry(*entry, inventory, positions, widths);
}

void printCounts(const Entries& entries) {
    std::printf("%d entries: %d named, %d unnamed, %d on-board", entries.total, entries.named,
                entries.unnamed, entries.onBoard);
    if (entries.missing != 0) std::printf(", %d not in the file", entries.missing);
    std::printf("\n");
}

// Prints what follows the facts about the system, with an empty line before each part.
void printEntries(const Entries& entries) {
    std::printf("\n");
    if (entries.getFirst())
        printTable(entries);
    else
        std::printf("No entries: Total_Number_Of_Devices in [PCI] is no number above 0.\n");
    if (entries.firstBeyondTotal >= 0)
        std::printf(
            "\nEntry %d is in the file, but not below Total_Number_Of_Devices.\n"
            "Neither it nor any entry after it is read.\n",
            entries.firstBeyondTotal);
    std::printf("\n");
    printCounts(entries);
}

// ---------------------------------------------------------------- Lines for the map

// Prints the class of this pair of IDs, and the positions of its functions as a per-system file
// writes them. A position of several functions in a row is printed once.
void printPositions(Entry& first) {
    constexpr int kMargin = 72;
    int column = std::printf("; %s at", classInWords(first.device->classCode).c_str());
    CString previous;
    for (Entry* entry = &first; entry; entry = entry->next) {
        if (!entry->isSamePair(first)) continue;
        entry->isPrinted = true;
        const CString position =
            " " + CString(entry->device->busNumber) + "," + CString(entry->device->deviceNumber);
        if (position == previous) continue;
        if (!previous.IsEmpty()) column += std::printf(";");
        if (column > kMargin) column = std::printf("\n;  ") - 1;
        column += std::printf("%s", position.c_str());
        previous = position;
    }
    std::printf("\n");
}

void printNames(const Entry& entry) {
    if (entry.vendorName.IsEmpty()) return;
    std::printf("; %s", printable(entry.vendorName).c_str());
    if (!entry.deviceName.IsEmpty()) std::printf(": %s", printable(entry.deviceName).c_str());
    std::printf("\n");
}

void printLinesForMap(Entries& entries) {
    const char* separator = "";
    for (Entry* entry = entries.getFirst(); entry; entry = entry->next) {
        if (!entry->isUnnamed() || entry->isPrinted) continue;
        std::printf("%s", separator);
        printPositions(*entry);
        printNames(*entry);
        std::printf("%s = \n", entries.getInventory().getDeviceINIFileEntry(entry->device).c_str());
        separator = "\n";
    }
}

// Fills in the names from the given list. If none is given, takes the list of the system, if any.
void nameUnnamed(Entries& entries, const CString& listPath) {
    if (!listPath.IsEmpty()) {
        fillInNames(entries.getFirst(), listPath);
        return;
    }
    for (const char* path : kPCILists)
        if (fillInNames(entries.getFirst(), path)) return;
}

// ---------------------------------------------------------------- The command

constexpr option kOptions[] = {{"missing", no_argument, nullptr, 'm'},
                               {"pci-ids", required_argument, nullptr, 'p'},
                               kHelp,
                               kVersion,
                               {}};

bool isMissingWanted = false;
CString listPath;

bool takeOption(int option, const char* value) {
    if (option == 'm') isMissingWanted = true;
    if (option == 'p') listPath = value;
    return true;
}

int explain(int count, char* operands[]) {
    if (count != 1) return rejectArguments();
    const CString inputPath = operands[0];
    if (!canRead(inputPath, "") || (!listPath.IsEmpty() && !canRead(listPath, "")))
        return kCouldNotRun;
    const CString configurationPath = requireConfiguration();
    if (configurationPath.IsEmpty()) return kCouldNotRun;

    CString machineType, systemID;
    {
        CIniFile configuration(configurationPath), detection(inputPath);
        machineType = CustomPCIDeviceList::getMachineType(detection);
        systemID = CustomPCIDeviceList::getSystemID(configuration, machineType);
    }
    Entries entries(configurationPath, systemID, inputPath);
    if (isMissingWanted) {
        nameUnnamed(entries, listPath);
        printLinesForMap(entries);
    } else {
        printSystem(inputPath, configurationPath, machineType, systemID, entries.getInventory());
        printEntries(entries);
    }
    return entries.areComplete() ? kFine : kFindings;
}

constexpr Command kExplain = {"slotrpt-explain", kUsage, kOptions, takeOption, explain};
}  // namespace

int main(int argc, char* argv[]) { return runCommand(kExplain, argc, argv); }
