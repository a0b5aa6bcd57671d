#include <cstdlib>

#include "check-cd/checks.h"
#include "check-cd/findSystemFiles.h"
#include "common/ProductCD.h"
#include "common/command.h"
#include "inspect/Findings.h"
#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
constexpr char kUsage[] =
    "usage: slotrpt-check-cd [CD_ROOT]\n"
    "Looks for mistakes in the files of the product CD whose root directory is CD_ROOT, or\n"
    "RWCD if it is not given. Prints each mistake as one line, \"file:line: what is wrong\".\n"
    "\n"
    "  -h, --help  print this text\n"
    "  --version   print the version\n"
    "\n"
    "Exit status: 0 nothing was found, 1 there are findings, 2 the command line is wrong,\n"
    "the CD cannot be read, or the output cannot be written.\n";

constexpr option kOptions[] = {kHelp, kVersion, {}};

bool hasFindings = false;

void print(Findings& findings) {
    findings.print(stdout);
    if (findings.getCount() != 0) hasFindings = true;
}

// Returns false, and says why, if the file could not be checked to its end.
bool checkSystemFile(const ProductCD::File& file, const Configuration& configuration) {
    if (file.copy.state == Copy::kBroken) {
        complainUnreadable(file.path, file.copy.reason);
        return false;
    }
    Findings findings(file.path);
    if (inspectCopy(file.copy, findings)) {
        const Document document(file.path);
        inspectSystemFile(document, configuration, findings);
        checkPositions(document, configuration, findings);
    }
    print(findings);
    return true;
}

// Returns false, and says why, if a file could not be checked to its end.
bool checkCD(ProductCD& cd) {
    const ProductCD::File& file = cd.getConfiguration();
    Findings findings(file.path);
    if (!inspectCopy(file.copy, findings)) {
        print(findings);
        return true;
    }
    const Configuration configuration(file.path);
    inspectConfiguration(configuration, findings);
    checkMaps(configuration, findings);
    checkSystemLists(configuration, findings);
    const auto files = findSystemFiles(cd, configuration.systems, findings);
    print(findings);
    bool areAllRead = true;
    for (const ProductCD::File* systemFile : files)
        areAllRead = checkSystemFile(*systemFile, configuration) && areAllRead;
    return areAllRead;
}

CString takeNoOption(int, const char*) { return ""; }

int run(int count, char* operands[]) {
    if (count > 1) return rejectArguments("more than one CD_ROOT is given");
    if (count == 1 && *operands[0] == '\0') return rejectArguments("CD_ROOT is empty");
    if (count == 1) setenv(CustomPCIDeviceList::kCDRootVariable, operands[0], 1);
    ProductCD cd;
    const ProductCD::File& file = cd.getConfiguration();
    if (!file.copy.isWhole())
        return complainUnreadable(
            file.path, count == 0 ? file.copy.reason + "; " + describeRoot() : file.copy.reason);
    if (!checkCD(cd)) return kCouldNotRun;
    return hasFindings ? kFindings : kFine;
}
}  // namespace

int main(int argc, char* argv[]) {
    return runCommand({"slotrpt-check-cd", kUsage, "h", kOptions, takeNoOption, run}, argc, argv);
}
