#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "common/ProductCD.h"
#include "common/command.h"
#include "common/printable.h"
#include "fleet/Inputs.h"
#include "fleet/Run.h"
#include "inspect/Configuration.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/CString.h"

namespace {
constexpr const char* kUsage =
    "usage: slotrpt-fleet [-j N] PATH...\n"
    "Converts detection files as slotrpt does, and lets no wrong report pass. PATH is a file, or\n"
    "a directory with files *.ini. x.ini gives x.report, any other name gives name.report.\n"
    "\n"
    "  -j, --jobs=N  convert N files at a time, 1 to 256; by default one for each processor\n"
    "  -h, --help    print this text\n"
    "  --version     print the version\n"
    "\n"
    "The environment variable RWCD names the root directory of the product CD.\n"
    "Exit status: 0 all files were converted, 1 some failed or are of an unknown system, or a\n"
    "report has no detection file, 2 the command line is wrong, or the run could not be made or\n"
    "finished.\n";

constexpr option kOptions[] = {{"jobs", required_argument, nullptr, 'j'}, kHelp, kVersion, {}};

std::size_t jobCount = 0;  // 0: one for each processor

CString takeOption(int, const char* value) {
    const int count = CString(value).ToInt();
    jobCount = static_cast<std::size_t>(count);
    if (count >= 1 && jobCount <= Run::kMaxJobs && CString(count) == value) return "";
    return CString("--jobs takes a number from 1 to ") + CString(static_cast<int>(Run::kMaxJobs));
}

std::size_t countProcessors() {
    const long most = Run::kMaxJobs;
    return static_cast<std::size_t>(std::clamp(sysconf(_SC_NPROCESSORS_ONLN), 1L, most));
}

// Reads the per-system files of all systems, so that all reports are of one CD.
void readSystemFiles(ProductCD& cd, const Configuration& configuration) {
    for (const Line* system : configuration.systems) cd.getSystemFiles(system->value);
    cd.getSystemFiles(CustomPCIDeviceList::kUnknownSystem);
}

void printStrays(const Inputs& inputs) {
    for (const CString& path : inputs.strays)
        std::fprintf(stderr, "without a detection file: %s\n", printable(path).c_str());
}

// Prints the summary. Returns the exit status.
int summarize(const Inputs& inputs, Run& run) {
    const std::size_t total = inputs.files.size();
    const std::size_t changed =
        run.count([](const Result& result) { return result.outcome == Outcome::kChanged; });
    const std::size_t converted = changed + run.count([](const Result& result) {
        return result.outcome == Outcome::kUnchanged;
    });
    const std::size_t unknown =
        run.count([](const Result& result) { return result.isOfUnknownSystem; });
    if (!inputs.isOneFile) {
        std::printf("%zu of %zu converted, %zu changed, %zu failed, %zu unknown system%s",
                    converted, total, changed, total - converted, unknown, unknown == 1 ? "" : "s");
        if (!inputs.strays.empty())
            std::printf(", %zu without a detection file", inputs.strays.size());
        std::printf("\n");
    }
    return converted == total && unknown == 0 && inputs.strays.empty() ? kFine : kFindings;
}

int convert(int count, char* operands[]) {
    if (count == 0) return rejectArguments("no PATH is given");
    ProductCD cd;
    if (!requireConfiguration(cd)) return kCouldNotRun;
    const ProductCD::File& file = cd.getConfiguration();
    if (!file.copy.mark.IsEmpty()) return complainUnreadable(file.path, file.copy.mark);
    Inputs inputs;
    if (collectInputs(operands, inputs) != kFine) return kCouldNotRun;
    Configuration configuration(file.path);
    // A run over one file reads only the per-system file of its system: on an optical disc, each
    // file costs a seek.
    if (inputs.files.size() > 1) readSystemFiles(cd, configuration);

    Run run(inputs.files, jobCount == 0 ? countProcessors() : jobCount, cd, configuration.iniFile);
    const bool isWatched = !inputs.isOneFile && isatty(STDERR_FILENO) != 0;
    const CString reason = run.convertAll(isWatched);
    if (isWatched) std::fputc('\n', stderr);
    if (!reason.IsEmpty()) return complain("cannot start a process: " + reason);
    printStrays(inputs);
    return summarize(inputs, run);
}
}  // namespace

int main(int argc, char* argv[]) {
    return runCommand({"slotrpt-fleet", kUsage, "hj:", kOptions, takeOption, convert}, argc, argv);
}
