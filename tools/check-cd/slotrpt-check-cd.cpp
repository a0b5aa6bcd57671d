#include <algorithm>
#include <cstdlib>

#include "check-cd/SystemFiles.h"
#include "check-cd/checks.h"
#include "common/command.h"
#include "common/files.h"
#include "inspect/Findings.h"
#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
constexpr char kUsage[] =
    "usage: slotrpt-check-cd [CD_ROOT]\n"
    "Looks for mistakes in the files of the product CD whose root directory is CD_ROOT, or\n"
    "RWCD if it is not given. Prints each mistake as one line, \"file:line: what is wrong\".\n"
    "\n"
    "  --help     print this text\n"
    "  --version  print the version\n"
    "\n"
    "Exit status: 0 nothing was found, 1 there are findings, 2 the CD cannot be read.\n";

constexpr option kOptions[] = {kHelp, kVersion, {}};

bool hasFindings = false;

void print(Findings& findings) {
    findings.print();
    if (findings.getCount() != 0) hasFindings = true;
}

// Returns false if the file could not be checked to its end.
bool checkSystemFile(const CString& path, const Configuration& configuration) {
    Findings findings(path);
    if (inspectFile(path, findings)) {
        const Document document(path);
        if (!requireWhole(takeLoadFault())) return false;
        inspectSystemFile(document, configuration.adapters, findings);
        checkPositions(document, configuration, findings);
    }
    print(findings);
    return true;
}

bool checkCD(const CString& path) {
    Findings findings(path);
    if (!inspectFile(path, findings)) {
        print(findings);
        return true;
    }
    const Configuration configuration(path);
    if (!requireWhole(takeLoadFault())) return false;
    inspectConfiguration(configuration.document, configuration.systems, configuration.adapters,
                         findings);
    checkMaps(configuration, findings);
    checkSystemLists(configuration, findings);
    const SystemFiles files(configuration.systems, findings);
    print(findings);
    return std::all_of(files.begin(), files.end(), [&](const SystemFiles::File& file) {
        return checkSystemFile(file.path, configuration);
    });
}

bool takeNoOption(int, const char*) { return false; }

int run(int count, char* operands[]) {
    if (count > 1 || (count == 1 && *operands[0] == '\0')) return rejectArguments();
    if (count == 1) setenv(CustomPCIDeviceList::kCDRootVariable, operands[0], 1);
    const CString path = CustomPCIDeviceList::getConfigurationPathName();
    const CString reason = whyUnreadable(path);
    if (!reason.IsEmpty())
        return complainUnreadable(path, count == 0 ? reason + "; " + describeRoot() : reason);
    if (!checkCD(path)) return kCouldNotRun;
    return hasFindings ? kFindings : kFine;
}
}  // namespace

int main(int argc, char* argv[]) {
    return runCommand({"slotrpt-check-cd", kUsage, kOptions, takeNoOption, run}, argc, argv);
}
