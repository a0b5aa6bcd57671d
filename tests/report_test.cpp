#include <sys/resource.h>
#include <sys/stat.h>

#include "support.h"

namespace fs = std::filesystem;

namespace {
const std::string kTests = SLOTRPT_SOURCE_DIR "/tests/";
const std::string kExamples = SLOTRPT_SOURCE_DIR "/examples/";
const std::string kNoPCI = "\n!Error!  Could not find PCI information.  !Error!\n";

using Prepare = std::function<void()>;

// Runs the converter with the argument and a second one, which it ignores; with none if the
// argument is null. Calls `prepare` first, in the new process.
Outcome convert(
    const std::string& cd, const char* argument, const Prepare& prepare = [] {}) {
    return inChild([&] {
        prepare();
        setenv("RWCD", cd.c_str(), 1);
        return execl(SLOTRPT_PROGRAM, "slotrpt", argument, "ignored", nullptr);
    });
}

void expectReport(const std::string& scan, const std::string& cd, const std::string& report) {
    SCOPED_TRACE(scan);
    // Without a standard input, a file gets its number, 0.
    const Outcome run = convert(cd, ("/rwpm:" + scan).c_str(), [] { close(0); });
    const std::string expected = readFile(report);
    EXPECT_EQ(expected, run.out);
    EXPECT_EQ(expected.find(kNoPCI) == std::string::npos ? 0 : 1, run.status);
}

void limit(decltype(RLIMIT_CPU) resource, rlim_t most) {
    const rlimit limits = {most, most};
    setrlimit(resource, &limits);
}
}  // namespace

TEST(Report, IsThatWrittenByHand) {
    for (const fs::path& folder : fs::directory_iterator(kTests + "report"))
        expectReport(folder / "scan.ini", folder / "cd", folder / "report");
    for (const std::string& machine : {kExamples + "alpha", kExamples + "rack"})
        expectReport(machine + ".ini", kExamples + "cd", machine + ".report");
}

TEST(Report, ShowsTheUsageWithoutAPath) {
    for (const char* argument : {static_cast<const char*>(nullptr), "", "/rwpm:"}) {
        SCOPED_TRACE(argument ? argument : "no argument");
        const Outcome run = convert("", argument);
        EXPECT_EQ(readFile(kTests + "usage.expected"), run.out);
        EXPECT_EQ(1, run.status);
    }
}

TEST(Report, TakesThePathFromAroundTheFirstSwitch) {
    const struct {
        const char* rule;
        std::string argument;
        int status;
    } kArguments[] = {
        {"the switch may stand anywhere", kExamples + "/rwpm:alpha.ini", 0},
        {"a second switch is part of the path", "/rwpm:/rwpm:" + kExamples + "alpha.ini", 1},
        {"the case of the switch counts", "/RWPM:" + kExamples + "alpha.ini", 1},
    };
    for (const auto& row : kArguments)
        EXPECT_EQ(row.status, convert(kExamples + "cd", row.argument.c_str()).status) << row.rule;
}

TEST(Report, EndsWhateverStandsInThePlaceOfAFile) {
    const ScratchFolder made;
    const std::string fifo = made.path("fifo");
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    // A folder, a pipe without a writer, an endless device, a file that cannot be read.
    for (const char* useless : {"/tmp", fifo.c_str(), "/dev/zero", "/proc/self/mem"}) {
        for (const char* file :
             {"alpha.ini", "cd/rwise/ini/syscfg.ini", "cd/rwise/ini/ALPHA.ini"}) {
            SCOPED_TRACE(std::string(file) + " is " + useless);
            const ScratchFolder machine;
            fs::copy(kExamples, machine.path(), fs::copy_options::recursive);
            fs::remove(machine.path(file));
            fs::create_symlink(useless, machine.path(file));
            const Outcome run = convert(machine.path("cd"), machine.path("alpha.ini").c_str());
            const bool isReport = run.status == 0;
            EXPECT_EQ(file == std::string("cd/rwise/ini/ALPHA.ini"), isReport);
            EXPECT_THAT(run.out, testing::EndsWith(isReport ? "\nOnBoardAdapters = \n" : kNoPCI));
            EXPECT_EQ("", run.err);
        }
    }
}

TEST(Report, EndsWellInSpiteOfOutputErrors) {
    int ends[2] = {};
    ASSERT_EQ(0, pipe(ends));
    close(ends[0]);  // nobody reads
    const std::pair<const char*, Prepare> kOutputs[] = {
        {"nothing open",
         [] {
             for (const int file : {0, 1, 2}) close(file);
         }},
        {"not read", [&] { dup2(ends[1], 1); }},
#ifndef __SANITIZE_ADDRESS__  // the sanitizer may meet the limit itself, before main
        {"limited in size", [] { limit(RLIMIT_FSIZE, 100); }},
#endif
    };
    for (const auto& [name, prepare] : kOutputs) {
        SCOPED_TRACE(name);
        EXPECT_EQ(0, convert(kExamples + "cd", (kExamples + "alpha.ini").c_str(), prepare).status);
    }
}

TEST(Report, EndsAtOnceWhenMemoryCannotHoldTheAdapters) {
    const ScratchFolder cd;
    const std::string total = "[PCI]\nTotal_Number_Of_Devices = 2147483647\n";
    cd.file("rwise/ini/syscfg.ini", "[PCIIDMap]\n0x00000000 = ZERO\n");
    const Outcome run =
        convert(cd.path(), cd.file("scan.ini", total).c_str(), [] { limit(RLIMIT_CPU, 5); });
    EXPECT_EQ(1, run.status);
    EXPECT_THAT(run.out, testing::EndsWith("\nMemory = \n"));  // no adapter
    EXPECT_THAT(run.err, testing::HasSubstr("Memory Allocation Error"));
}
