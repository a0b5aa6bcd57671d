#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "common/Copy.h"
#include "common/ProductCD.h"
#include "common/command.h"
#include "common/printable.h"
#include "explain/Machine.h"
#include "explain/Overview.h"
#include "explain/Pairs.h"
#include "explain/Warnings.h"
#include "explain/classInWords.h"
#include "explain/printJSON.h"
#include "explain/printMachine.h"
#include "explain/readPCINames.h"
#include "inspect/Document.h"
#include "inspect/findLack.h"
#include "util/CString.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-explain [--json | --missing [--pci-ids=LIST]] FILE...\n"
    "Shows what slotrpt makes of each device entry of the detection file FILE, and why.\n"
    "For several files, shows one row each. If FILE is -, standard input is read.\n"
    "\n"
    "  --json          print one JSON object for each FILE instead, each in one line\n"
    "  --missing       print lines for section [PCIIDMap] of syscfg.ini instead, one for\n"
    "                  each pair of vendor and device ID that is not there\n"
    "  --pci-ids=LIST  with --missing, take the names of vendors and devices from LIST,\n"
    "                  not from the pci.ids of this system\n"
    "  -h, --help      print this text\n"
    "  --version       print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD.\n"
    "Exit status: 0 all device entries have a name or are left out on purpose, and there\n"
    "is no warning; 1 there are others, or warnings; 2 the command line is wrong, a file\n"
    "cannot be read, or the output cannot be written. With --missing: 0 no pair is\n"
    "missing, 1 some are, 2 as above.\n";

// Where systems have their list of PCI IDs.
constexpr const char* kPCILists[] = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids"};

// The CD of the run, and the system configuration file on it.
struct Files {
    ProductCD cd;
    Configuration configuration{cd.getConfiguration().path};
};

// Reads the detection file into memory, as kDetectionCopy. Returns false, and says why, if it could
// not be read.
bool takeCopy(const CString& path, Copy& copy) {
    copy = copyOperand(path);
    if (!copy.isWhole()) complainUnreadable(path, copy.reason);
    Copies::set(kDetectionCopy, std::exchange(copy.text, {}));
    return copy.isWhole();
}

// Reads the detection file and explains its machine. Returns null, and says why, if this or the
// per-system file cannot be read to its end.
std::unique_ptr<Machine> takeMachine(const CString& path, Files& files) {
    Copy copy;
    if (!takeCopy(path, copy)) return nullptr;
    auto machine = std::make_unique<Machine>(path, copy, files.cd, files.configuration);
    const ProductCD::File* const broken = machine->getBrokenFile();
    if (!broken) return machine;
    complainUnreadable(broken->path, broken->copy.reason);
    return nullptr;
}

// ---------------------------------------------------------------- One machine, or several

int explainOne(const CString& path, Files& files, Warnings& warnings) {
    const auto machine = takeMachine(path, files);
    if (!machine) return kCouldNotRun;
    printMachine(*machine, files.configuration.path);
    warnings.print(machine->findings);
    warnings.printConfiguration();
    warnings.printSystemFile(machine->systemID);
    std::printf("\n");
    printCounts(machine->counts);
    return machine->isFine() && warnings.getCount() == 0 ? kFine : kFindings;
}

int explainSeveral(int count, char* paths[], Files& files, Warnings& warnings) {
    Overview overview;
    bool areAllRead = true;
    for (int i = 0; i != count; ++i)
        if (const auto machine = takeMachine(paths[i], files))
            overview.add(*machine);
        else
            areAllRead = false;
    overview.print();
    warnings.printConfiguration();
    overview.printSystemFiles(warnings);
    if (!areAllRead) return kCouldNotRun;
    return overview.isFine() && warnings.getCount() == 0 ? kFine : kFindings;
}

// Prints the machine as JSON. Returns kFine or kFindings; if it cannot be explained, says why and
// returns kCouldNotRun.
int printAsJSON(const CString& path, Files& files, Warnings& warnings) {
    const auto machine = takeMachine(path, files);
    if (!machine) return kCouldNotRun;
    printJSON(*machine);
    warnings.printSystemFile(machine->systemID);
    return machine->isFine() ? kFine : kFindings;
}

// What is wrong with the CD goes to standard error, so that the output is JSON alone.
int printAllAsJSON(int count, char* paths[], Files& files) {
    Warnings warnings(files.cd, files.configuration, stderr);
    warnings.printConfiguration();
    int status = kFine;
    for (int i = 0; i != count; ++i)
        status = std::max(status, printAsJSON(paths[i], files, warnings));
    return warnings.getCount() == 0 ? status : std::max(status, kFindings);
}

int explainMachines(int count, char* paths[], Files& files) {
    Warnings warnings(files.cd, files.configuration, stdout);
    return count == 1 ? explainOne(paths[0], files, warnings)
                      : explainSeveral(count, paths, files, warnings);
}

// ---------------------------------------------------------------- Lines for section PCIIDMap

void printPair(const Pair& pair) {
    std::printf("; %s, in %d file%s\n", classInWords(pair.classCode).c_str(), pair.fileCount,
                pair.fileCount == 1 ? "" : "s");
    std::printf("; %s: %s", printable(pair.firstPath).c_str(), pair.positions.c_str());
    const std::size_t positions = pair.knownPositions.size();
    if (positions > CustomPCIDeviceList::kMaxPositions)
        std::printf(" and %zu more", positions - CustomPCIDeviceList::kMaxPositions);
    std::printf("\n");
    if (!pair.vendorName.IsEmpty()) {
        std::printf("; %s", printable(pair.vendorName).c_str());
        if (!pair.deviceName.IsEmpty()) std::printf(": %s", printable(pair.deviceName).c_str());
        std::printf("\n");
    }
    std::printf(";%s = \n", pair.key.c_str());
}

// Prints the missing pairs, with an empty line between two. Returns whether there are any.
bool printMissing(const Pairs& pairs) {
    const std::vector<const Pair*> missing = pairs.getMissing();
    for (const Pair* pair : missing) {
        if (pair != missing.front()) std::printf("\n");
        printPair(*pair);
    }
    return !missing.empty();
}

// The list of PCI IDs in memory.
constexpr const char* kListCopy = "list of PCI IDs";

// Reads the list of PCI IDs at `path` into memory. If `path` is "", takes the list of the system,
// if any. Returns false, and says why, if the given list cannot be read.
bool takeList(const CString& path) {
    Copy list;
    list.state = Copy::kAbsent;
    if (!path.IsEmpty()) {
        list = copyOperand(path);
        if (!list.isWhole()) complainUnreadable(path, list.reason);
    } else {
        for (const char* known : kPCILists)
            if (!list.isWhole()) list = copyFile(known);
    }
    Copies::set(kListCopy, std::move(list.text));
    return path.IsEmpty() || list.isWhole();
}

// Adds the pairs of the file. Returns false, and says why, if it cannot be read as it is meant: the
// list has no warnings, so nothing else would say that it lacks the pairs of this file.
bool addPairs(const CString& path, Pairs& pairs) {
    Copy copy;
    if (!takeCopy(path, copy)) return false;
    const CString reason =
        copy.mark.IsEmpty() ? findLackOfEntries(Document(kDetectionCopy)).reason : copy.mark;
    if (reason.IsEmpty())
        pairs.add(path, DeviceEntries(kDetectionCopy));
    else
        complainUnreadable(path, reason);
    return reason.IsEmpty();
}

int listMissing(int count, char* paths[], Files& files) {
    const ProductCD::File& file = files.cd.getConfiguration();
    if (!file.copy.mark.IsEmpty()) return complainUnreadable(file.path, file.copy.mark);
    Pairs pairs(files.configuration);
    bool areAllRead = true;
    for (int i = 0; i != count; ++i) areAllRead = addPairs(paths[i], pairs) && areAllRead;
    readPCINames(pairs, kListCopy);
    const bool isAnyMissing = printMissing(pairs);
    return !areAllRead ? kCouldNotRun : isAnyMissing ? kFindings : kFine;
}

// ---------------------------------------------------------------- The command

constexpr option kOptions[] = {{"json", no_argument, nullptr, 'J'},
                               {"missing", no_argument, nullptr, 'm'},
                               {"pci-ids", required_argument, nullptr, 'p'},
                               kHelp,
                               kVersion,
                               {}};

bool isMissingWanted = false, isJSONWanted = false;
CString listPath;

CString takeOption(int option, const char* value) {
    if (option == 'm') isMissingWanted = true;
    if (option == 'J') isJSONWanted = true;
    if (option != 'p') return "";
    listPath = value;
    return listPath.IsEmpty() ? "--pci-ids takes the path of a list" : "";
}

int explain(int count, char* paths[]) {
    if (count == 0) return rejectArguments("no FILE is given");
    if (isMissingWanted && isJSONWanted)
        return rejectArguments("--json and --missing exclude each other");
    if (!isMissingWanted && !listPath.IsEmpty())
        return rejectArguments("--pci-ids is only for --missing");
    if (isMissingWanted && !takeList(listPath)) return kCouldNotRun;
    Files files;
    if (!requireConfiguration(files.cd)) return kCouldNotRun;
    if (isJSONWanted) return printAllAsJSON(count, paths, files);
    return isMissingWanted ? listMissing(count, paths, files)
                           : explainMachines(count, paths, files);
}

constexpr Command kExplain = {"slotrpt-explain", kUsage, "h", kOptions, takeOption, explain};
}  // namespace

int main(int argc, char* argv[]) { return runCommand(kExplain, argc, argv); }
