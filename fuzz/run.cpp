// Any bytes as the three files of one run, divided by lines "%%". The whole program runs in this
// process. The last file belongs to the identifiers SRV_ALPHA and UNKNOWN_SERVER. If SLOTRPT_X86
// names a build for the other word size, it must agree on every SLOTRPT_X86_STEP-th input, by
// default on each.

#include <sys/wait.h>
#include <unistd.h>

#include "fuzz.h"
#include "util/IniFile.h"

int slotrpt_main(int argc, char* argv[]);
const std::string kFolder = scratch("rwise/ini/"), kConfiguration = kFolder + "syscfg.ini";
const std::string kScan = scratch("scan"), kReport = scratch("report"), kOther = scratch("other");

// The report, and the status after it. Standard output goes into a file from the first run on.
std::string convert() {
    static const bool isCaught = std::freopen(kReport.c_str(), "w", stdout) != nullptr;
    CHECK(isCaught);
    CHECK(ftruncate(STDOUT_FILENO, 0) == 0);
    std::rewind(stdout);
    std::string path = kScan;
    char* argv[] = {nullptr, path.data(), nullptr};
    const int status = slotrpt_main(2, argv);
    std::fflush(stdout);
    return getFile(kReport) + std::to_string(status);
}

void bothWordSizesAgree(const std::string& report) {
    static const char* const step = std::getenv("SLOTRPT_X86_STEP");
    static int inputs = 0;
    if (!std::getenv("SLOTRPT_X86") || ++inputs % (step ? std::atoi(step) : 1) != 0) return;
    const int status = std::system(("\"$SLOTRPT_X86\" " + kScan + " >" + kOther).c_str());
    CHECK(getFile(kOther) + std::to_string(WEXITSTATUS(status)) == report);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const Texts input = parts({data, data + size}, "%%\n", 3);
    static const bool isReady = std::system(("mkdir -p " + kFolder).c_str()) == 0;
    CHECK(isReady);
    CHECK(setenv("RWCD", scratch("").c_str(), 1) == 0);
    std::ofstream(kScan) << input[0];
    std::ofstream(kConfiguration) << input[1];
    for (const char* name : {"ALPHA.ini", "server.ini"}) std::ofstream(kFolder + name) << input[2];
    // If the CD names the IDs 0, each missing device entry is an adapter, up to the total.
    if (CIniFile(kScan.c_str()).ReadInteger("PCI", "Total_Number_Of_Devices") > 1000 &&
        !CIniFile(kConfiguration.c_str()).ReadString("PCIIDMap", "0x00000000").IsEmpty())
        return -1;
    bothWordSizesAgree(convert());
    return 0;
}
