#include <cstdio>

#include "common/command.h"
#include "common/files.h"
#include "common/printable.h"
#include "explain/Machine.h"
#include "explain/Overview.h"
#include "explain/Pairs.h"
#include "explain/Warnings.h"
#include "explain/classInWords.h"
#include "explain/printMachine.h"
#include "explain/readPCINames.h"
#include "util/CString.h"
#include "util/IniFile.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-explain [--missing] [--pci-ids=LIST] FILE...\n"
    "Shows what slotrpt makes of each device entry of the detection file FILE, and why.\n"
    "For several files, shows one row each.\n"
    "\n"
    "  --missing       print lines for section [PCIIDMap] of syscfg.ini instead, one for\n"
    "                  each pair of vendor and device ID that is not there\n"
    "  --pci-ids=LIST  with --missing, take the names of vendors and devices from LIST,\n"
    "                  not from the pci.ids of this system\n"
    "  --help          print this text\n"
    "  --version       print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD.\n"
    "Exit status: 0 all device entries have a name or are left out on purpose, and there\n"
    "is no warning; 1 there are others, or warnings; 2 a file cannot be read. With\n"
    "--missing: 0 no pair is missing, 1 some are, 2 a file cannot be read.\n";

// Where systems have their list of PCI IDs.
constexpr const char* kPCILists[] = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids"};

// If the file has a fault, says that it cannot be read, and returns false.
bool requireFine(const CString& path, const CString& fault) {
    if (!fault.IsEmpty()) complainUnreadable(path, fault);
    return fault.IsEmpty();
}
bool requireReadable(const CString& path) { return requireFine(path, whyUnreadable(path)); }

// ---------------------------------------------------------------- One machine, or several

int explainOne(const CString& path, ConfigurationFile& configuration, Warnings& warnings) {
    if (!requireReadable(path)) return kCouldNotRun;
    Machine machine(path, configuration);
    if (!requireWhole(machine.fault)) return kCouldNotRun;
    printMachine(machine, configuration.path);
    warnings.print(machine.findings);
    warnings.printConfiguration();
    warnings.printSystemFile(machine.systemID);
    std::printf("\n");
    printCounts(machine.counts);
    return machine.counts.areComplete() && warnings.getCount() == 0 ? kFine : kFindings;
}

// Adds the machine to the overview. Returns false, and says why, if its file cannot be read.
bool addMachine(const CString& path, ConfigurationFile& configuration, Overview& overview) {
    if (!requireReadable(path)) return false;
    const Machine machine(path, configuration);
    if (!requireWhole(machine.fault)) return false;
    overview.add(machine);
    return true;
}

int explainSeveral(int count, char* paths[], ConfigurationFile& configuration, Warnings& warnings) {
    Overview overview;
    bool areAllRead = true;
    for (int i = 0; i != count; ++i)
        areAllRead = addMachine(paths[i], configuration, overview) && areAllRead;
    overview.print();
    warnings.printConfiguration();
    overview.printSystemFiles(warnings);
    if (!areAllRead) return kCouldNotRun;
    return overview.isFine() && warnings.getCount() == 0 ? kFine : kFindings;
}

int explainMachines(int count, char* paths[], ConfigurationFile& configuration) {
    Warnings warnings(configuration.path);
    if (!requireWhole(takeLoadFault())) return kCouldNotRun;
    const int status = count == 1 ? explainOne(paths[0], configuration, warnings)
                                  : explainSeveral(count, paths, configuration, warnings);
    return requireWhole(takeLoadFault()) ? status : kCouldNotRun;
}

// ---------------------------------------------------------------- Lines for section PCIIDMap

void printPair(const Pair& pair) {
    std::printf("; %s, in %d file%s\n", classInWords(pair.classCode).c_str(), pair.fileCount,
                pair.fileCount == 1 ? "" : "s");
    std::printf("; %s: %s", printable(pair.firstPath).c_str(), pair.positions.c_str());
    if (pair.positionCount > CustomPCIDeviceList::kMaxPositions)
        std::printf(" and %u more", pair.positionCount - CustomPCIDeviceList::kMaxPositions);
    std::printf("\n");
    if (!pair.vendorName.IsEmpty()) {
        std::printf("; %s", printable(pair.vendorName).c_str());
        if (!pair.deviceName.IsEmpty()) std::printf(": %s", printable(pair.deviceName).c_str());
        std::printf("\n");
    }
    std::printf(";%s = \n", pair.key.c_str());
}

// Prints the missing pairs, bridges last, with an empty line between two. Returns whether there are
// any.
bool printMissing(const Pairs& pairs) {
    bool isAny = false;
    for (const bool areBridges : {false, true}) {
        for (const Pair* pair : pairs) {
            if (!pair->isMissing || pair->isBridge() != areBridges) continue;
            if (isAny) std::printf("\n");
            isAny = true;
            printPair(*pair);
        }
    }
    return isAny;
}

// Fills in the names from the given list. If none is given, takes the list of the system, if any.
void fillInNames(Pairs& pairs, const CString& listPath) {
    if (!listPath.IsEmpty()) {
        readPCINames(pairs, listPath);
        return;
    }
    for (const char* path : kPCILists)
        if (readPCINames(pairs, path)) return;
}

// Adds the pairs of the file. Returns false, and says why, if it cannot be read as it is meant: the
// list has no warnings, so nothing else would say that it lacks the pairs of this file.
bool addPairs(const CString& path, Pairs& pairs) {
    if (!requireFine(path, faultOf(path))) return false;
    const Entries entries(path);
    if (!requireWhole(takeLoadFault())) return false;
    pairs.add(path, entries);
    return true;
}

int listMissing(int count, char* paths[], ConfigurationFile& configuration,
                const CString& listPath) {
    if (!requireFine(configuration.path, whyMisread(configuration.path))) return kCouldNotRun;
    if (!requireWhole(takeLoadFault())) return kCouldNotRun;
    Pairs pairs(configuration.document);
    bool areAllRead = true;
    for (int i = 0; i != count; ++i) areAllRead = addPairs(paths[i], pairs) && areAllRead;
    fillInNames(pairs, listPath);
    const bool isAnyMissing = printMissing(pairs);
    return !areAllRead ? kCouldNotRun : isAnyMissing ? kFindings : kFine;
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
    return option != 'p' || *value != '\0';
}

int explain(int count, char* paths[]) {
    if (count == 0) return rejectArguments();
    if (!listPath.IsEmpty() && !requireReadable(listPath)) return kCouldNotRun;
    const CString configurationPath = requireConfiguration();
    if (configurationPath.IsEmpty()) return kCouldNotRun;
    ConfigurationFile configuration(configurationPath);
    return isMissingWanted ? listMissing(count, paths, configuration, listPath)
                           : explainMachines(count, paths, configuration);
}

constexpr Command kExplain = {"slotrpt-explain", kUsage, kOptions, takeOption, explain};
}  // namespace

int main(int argc, char* argv[]) { return runCommand(kExplain, argc, argv); }
