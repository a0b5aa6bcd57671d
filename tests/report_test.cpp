#include <fcntl.h>
#include <sys/stat.h>

#include "support.h"

namespace fs = std::filesystem;

namespace {
const std::string kTests = SLOTRPT_SOURCE_DIR "/tests/",
                  kExamples = SLOTRPT_SOURCE_DIR "/examples/";
const char* const kNoPCI = "!Error!  Could not find PCI information.  !Error!\n";

using Prepare = std::function<void()>;

// Runs the converter with one argument, or with none when it is null. `prepare` is called first,
// in its process.
Outcome convert(
    const std::string& cd, const char* argument, const Prepare& prepare = [] {}) {
    return inChild([&] {
        prepare();
        setenv("RWCD", cd.c_str(), 1);
        return execl(SLOTRPT_PROGRAM, "slotrpt", argument, nullptr);
    });
}

// The machine alpha and its CD, with the files that its report is made of, to be spoilt.
struct Machine : ScratchFolder {
    const std::string cd = path("cd"), files[3] = {path("alpha.ini"), cd + "/rwise/ini/syscfg.ini",
                                                   cd + "/rwise/ini/ALPHA.ini"};
    Machine() { fs::copy(kExamples, path(), fs::copy_options::recursive); }
};
}  // namespace

TEST(Report, IsTheExpectedOne) {
    const auto check = [](const std::string& scan, const std::string& cd, const fs::path& report) {
        const Outcome run = convert(cd, ("/rwpm:" + scan).c_str());
        const std::string expected = readFile(report);
        const bool failed = expected.find(kNoPCI) != std::string::npos;
        EXPECT_EQ((failed ? "1|" : "0|") + expected, run.end + run.out) << scan;
    };
    for (const fs::path& folder : fs::directory_iterator(kTests + "report"))
        check(folder / "scan.ini", folder / "cd", folder / "report");
    for (const std::string& machine : {kExamples + "alpha", kExamples + "rack"})
        check(machine + ".ini", kExamples + "cd", machine + ".report");
}

TEST(Report, TakesThePathFromAroundTheFirstSwitch) {
    for (const char* argument : {static_cast<const char*>(nullptr), "", "/rwpm:"}) {
        const Outcome run = convert("", argument);
        EXPECT_EQ("1|" + readFile(kTests + "usage"), run.end + run.out);
    }
    const std::pair<std::string, const char*> kArguments[] = {
        {kExamples + "alpha.ini", "0|"},                   // the switch is not required
        {kExamples + "/rwpm:alpha.ini", "0|"},             // nor has it to be in front
        {"/rwpm:/rwpm:" + kExamples + "alpha.ini", "1|"},  // the second one is part of the path
        {"/RWPM:" + kExamples + "alpha.ini", "1|"},        // so is one in another case
    };
    for (const auto& [argument, end] : kArguments)
        EXPECT_EQ(end, convert(kExamples + "cd", argument.c_str()).end) << argument;
}

// Whatever stands in the place of a file, a run ends, without a word on standard error.
TEST(Report, SurvivesUselessFiles) {
    const ScratchFolder made;
    const std::string fifo = made.path("fifo");
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    const std::string kUseless[] = {
        made.path("none"),
        made.path(),  // a folder
        fifo,
        "/dev/zero",       // endless
        "/proc/self/mem",  // cannot be read
        SLOTRPT_PROGRAM,   // binary
        made.file("empty", ""),
        made.file("of NULs", std::string(100, '\0')),
        made.file("of headers", "[System]\n[PCI\n[PCIIDMap]\n[GIGABIT_NIC"),
    };
    for (const std::string& useless : kUseless) {
        for (int file = 0; file < 3; ++file) {
            const Machine machine;
            fs::remove(machine.files[file]);
            fs::create_symlink(useless, machine.files[file]);
            const Outcome run = convert(machine.cd, machine.files[0].c_str());
            EXPECT_EQ(file < 2 ? "1|" : "0|", run.end) << file << " is " << useless;
            const char* expected = file < 2 ? kNoPCI : "\nOnBoardAdapters = \n";
            EXPECT_NE(std::string::npos, run.out.find(expected)) << run.out;
        }
    }
}

TEST(Report, LeavesItsInputAloneAndPassesOverOutputErrors) {
    int ends[2] = {};
    ASSERT_EQ(0, pipe(ends));
    close(ends[0]);  // nobody reads
    const Prepare kOutputs[] = {[] { close(1); }, [] { close(0), close(1), close(2); },
                                [] { dup2(open("/dev/full", O_WRONLY), 1); },
                                [&] { dup2(ends[1], 1); }};
    const auto past = fs::last_write_time(SLOTRPT_PROGRAM);
    const Machine machine;
    for (const std::string& file : machine.files) fs::last_write_time(file, past);
    for (const Prepare& prepare : kOutputs)
        EXPECT_EQ("0|", convert(machine.cd, machine.files[0].c_str(), prepare).end);
    for (const std::string& file : machine.files)
        EXPECT_EQ(past, fs::last_write_time(file)) << file;
}
