#include <csignal>
#include <cstdio>
#include <string_view>
#include <utility>

#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// Prints how to call the program, on standard output.
void printUsage() {
    std::fputs(
        "Usage: slotrpt /rwpm:[in_file]\n"
        "Description:\n"
        " /rwpm:[in_file] -- Prints hardware detection information to screen in the\n"
        "          format typically used by Rackwise and Patchmoor.\n"
        "          [in_file] is the INI file output of the \"slotscan\" program.\n"
        "          It is expected that the user will direct output of this program\n"
        "          to an output file by using \"> file\".\n"
        "\n"
        "NOTE: This program relies on \\rwise\\ini\\syscfg.ini on the cd drive\n"
        "defined by RWCD.\n",
        stdout);
}

/// Returns the list with the name appended, after a "," unless the list was empty.
CString addToList(CString list, CString name) {
    list.AddToken(std::move(name), ",");
    return list;
}

namespace {
using Inventory = CustomPCIDeviceList;

// What gives the value of an identity line.
enum class Source {
    kSystem,    // a key in section System of the detection file
    kOwn,       // a key in the system's own section of the system configuration file
    kConstant,  // a fixed text
};

struct IdentityLine {
    const char* key;
    Source source;
    const char* keyOrText;
};
// In the order of the report.
constexpr IdentityLine kIdentityLines[] = {
    {"MachTypeModelNumber", Source::kSystem, Inventory::kMachineTypeKey},
    {"ModelNumber", Source::kSystem, Inventory::kModelNumberKey},
    {"SerialNumber", Source::kSystem, Inventory::kSerialNumberKey},
    {"TotalNumEnclosures", Source::kSystem, Inventory::kNumberOfEnclosuresKey},
    {"BIOSVersion", Source::kSystem, Inventory::kBIOSVersionKey},
    {"BuildID", Source::kSystem, Inventory::kBIOSBuildLevelKey},
    {"Directory", Source::kOwn, Inventory::kDirectoryKey},
    {"DiagBuildID", Source::kSystem, Inventory::kDiagnosticsBuildLevelKey},
    {"DiagVersion", Source::kConstant, ""},
    {"Bus", Source::kConstant, "PCI"},
    {"DiskDrivesToUpdate", Source::kConstant, "0"},
    {"SPROMLevel", Source::kConstant, ""},
    {"SPBuildID", Source::kConstant, ""},
    {"SPVersion", Source::kConstant, ""},
    {"Processors", Source::kSystem, Inventory::kActiveProcessorsKey},
    {"ProcessorSlots", Source::kSystem, Inventory::kProcessorSlotsKey},
    {"Memory", Source::kSystem, Inventory::kTotalMemoryKey},
};

constexpr bool isSystemKey(std::string_view text) {
    for (const char* key : Inventory::kSystemKeys)
        if (text == key) return true;
    return false;
}

constexpr bool haveSystemKeys() {
    for (const IdentityLine& line : kIdentityLines)
        if (line.source == Source::kSystem && !isSystemKey(line.keyOrText)) return false;
    return true;
}
// The commands that look for misspelt keys know only those of the list.
static_assert(haveSystemKeys());

// Errors go to standard output, like the report.
void printError(const char* text) { std::printf("!Error!  %s  !Error!\n", text); }

void printLine(const char* key, const CString& value) {
    std::printf("%s = %s\n", key, value.c_str());
}

CString valueOf(const IdentityLine& line, CIniFile& detection, CIniFile& configuration,
                const CString& systemID) {
    switch (line.source) {
        case Source::kSystem:
            return detection.ReadString(Inventory::kSystemSection, line.keyOrText);
        case Source::kOwn:
            return configuration.ReadString(systemID, line.keyOrText);
        case Source::kConstant:
            break;
    }
    return line.keyOrText;
}

// Prints the identity of the system, and returns its identifier.
CString printIdentity(const CString& configurationPath, const CString& inputPath) {
    CIniFile configuration(configurationPath), detection(inputPath);
    const CString machineType = Inventory::getMachineType(detection);
    const CString systemID = Inventory::getSystemID(configuration, machineType);

    std::printf("[MACH]\n");
    printLine("SystemID", systemID);
    std::printf("\n[%s]\n", systemID.c_str());
    for (const IdentityLine& line : kIdentityLines)
        printLine(line.key, valueOf(line, detection, configuration, systemID));
    detection.Flush();
    configuration.Flush();
    return systemID;
}

bool isSameDevice(const PCIDevice& a, const PCIDevice& b) {
    return a.busNumber == b.busNumber && a.deviceNumber == b.deviceNumber;
}

void printAdapter(const PCIDeviceItem& item, int function) {
    std::printf("\n[%s", item.adapterName.c_str());
    if (item.instance > 1) std::printf("%d", item.instance);
    std::printf("]\n");
    if (item.count > 1) std::printf("Count = %d\n", item.count);
    std::printf("Type = %s\nBusN = %d\nDevN = %d\nFunN = %d\n", item.adapterType.c_str(),
                item.busNumber, item.deviceNumber, function);
    if (item.onBoard.IsSubstring(Inventory::kOnBoard)) printLine("On-Board", item.onBoard);
    std::printf("SubSysID = %.4hX%.4hX\nPCIID = %.4hX%.4hX\n", item.subVendorID, item.subDeviceID,
                item.vendorID, item.deviceID);
}

void printNames(Inventory& inventory) {
    CString adapters;
    inventory.resetList();
    while (const PCIDeviceItem* item = inventory.getNextDeviceFromList())
        adapters = addToList(std::move(adapters), item->adapterName);
    std::printf("\n[PCI]\n");
    printLine("Adapters", adapters);
}

// The detection file has no function numbers. Items that follow each other on one device are
// numbered from 0.
void printSections(Inventory& inventory) {
    int function = 0;
    const PCIDeviceItem* previous = nullptr;
    inventory.resetList();
    while (const PCIDeviceItem* item = inventory.getNextDeviceFromList()) {
        function = previous && isSameDevice(*previous, *item) ? function + 1 : 0;
        printAdapter(*item, function);
        previous = item;
    }
}

void printGroups(const Inventory& inventory) {
    std::printf("\n[DETECTED_BY_GROUP]");
    for (const Inventory::GroupDef& group : Inventory::kGroups) {
        std::printf("\n");  // ends the header, and leaves an empty line between two lines
        printLine(group.name, inventory.getDevices(group.group));
    }
}

void printAdapters(Inventory& inventory) {
    printNames(inventory);
    inventory.sortDevicesByType();  // fills the groups, and keeps the order of the items
    printSections(inventory);
    printGroups(inventory);
}
}  // namespace

int main(int argc, char* argv[]) {
    // Output errors do not end a run. That includes a closed pipe and a file at its size limit,
    // which would raise these signals.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);

    CString inputPath = argc > 1 ? argv[1] : "";
    inputPath.RemoveSubstring("/rwpm:");  // anywhere in the argument; it may be missing
    if (inputPath.IsEmpty()) {
        printError("You must supply the path to slotscan input file.");
        printUsage();
        return 1;
    }
    const CString configurationPath = Inventory::getConfigurationPathName();
    const CString systemID = printIdentity(configurationPath, inputPath);

    Inventory inventory;
    inventory.setMapFileLocation(configurationPath);
    inventory.setSystemKeyword(systemID);
    inventory.setInputFile(inputPath);
    const bool hasAdapters =
        inventory.initialize(Inventory::INIT_FROM_INPUT_FILE | Inventory::INIT_NAME_ADAPTERS |
                             Inventory::INIT_LABEL_ONBOARD | Inventory::INIT_COUNT_DUPLICATES);
    if (!hasAdapters) {
        printError("Could not find PCI information.");
        return 1;
    }
    printAdapters(inventory);
    return 0;
}
