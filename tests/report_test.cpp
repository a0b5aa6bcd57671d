#include <fcntl.h>
#include <sys/stat.h>

#include "support.h"

namespace fs = std::filesystem;

namespace {
const char* const kNoPCI = "!Error!  Could not find PCI information.  !Error!\n";

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// A machine of one adapter, which is on the board, and the CD for it.
struct SmallMachine : ScratchFolder {
    const std::string scan =
        "[System]\nMachine_Type = MT1\n[PCI]\nTotal_Number_Of_Devices = 1\n"
        "Vendor_ID.0 = 1\nDevice_ID.0 = 2\nBus_Number.0 = 3\n";
    const std::string map = "[SystemIDMap]\nMT1 = S_ONE\n[PCIIDMap]\n0x00010002 = NIC\n";
    const std::string files[3] = {file("scan.ini", scan), file("cd/rwise/ini/syscfg.ini", map),
                                  file("cd/rwise/ini/ONE.ini", "[NIC]\nOnBoard = 3,0\n")};
    Outcome convert(const Prepare& prepare = [] {}) const {
        return ::convert(path("cd"), files[0].c_str(), prepare);
    }
};
}  // namespace

TEST(Report, IsTheExpectedOne) {
    const auto check = [](const std::string& scan, const fs::path& cd, const fs::path& report) {
        const Outcome run = convert(cd, ("/rwpm:" + scan).c_str());
        const std::string expected = readFile(report);
        EXPECT_EQ((endsWith(expected, kNoPCI) ? "1|" : "0|") + expected, run.end + run.out) << scan;
    };
    const fs::path source = SLOTRPT_SOURCE_DIR, examples = source / "examples";
    for (const fs::path& folder : fs::directory_iterator(source / "tests/report"))
        check(folder / "scan.ini", folder / "cd", folder / "report");
    for (const std::string machine : {"alpha", "rack"})
        check(examples / (machine + ".ini"), examples / "cd", examples / (machine + ".report"));
}

TEST(Report, TakesThePathFromAroundTheFirstSwitch) {
    for (const char* argument : {static_cast<const char*>(nullptr), "", "/rwpm:"}) {
        const Outcome run = convert("", argument);
        EXPECT_EQ("1|" + readFile(SLOTRPT_SOURCE_DIR "/tests/usage"), run.end + run.out);
    }
    const SmallMachine machine;
    const std::pair<std::string, const char*> kArguments[] = {
        {machine.files[0], "0|"},                 // the switch is not required
        {machine.path("/rwpm:/scan.ini"), "0|"},  // nor has it to be in front
        {"/rwpm:/rwpm:" + machine.path(), "1|"},  // the second one is part of the path
        {"/RWPM:" + machine.files[0], "1|"},      // so is one in another case
    };
    for (const auto& [argument, end] : kArguments)
        EXPECT_EQ(end, convert(machine.path("cd"), argument.c_str()).end) << argument;
}

// Whatever stands in the place of a file, a run ends, without a word on standard error.
TEST(Report, SurvivesUselessFiles) {
    std::string binary;
    for (int i = 0; i < 4096; ++i) binary += static_cast<char>(i * 7 + i / 256);
    using Path = const std::string&;
    const std::pair<const char*, std::function<void(Path)>> kUseless[] = {
        {"absent", [](Path) {}},
        {"a folder", [](Path path) { fs::create_directory(path); }},
        {"a FIFO", [](Path path) { mkfifo(path.c_str(), 0600); }},
        {"endless", [](Path path) { fs::create_symlink("/dev/zero", path); }},
        {"unreadable", [](Path path) { fs::create_symlink("/proc/self/mem", path); }},
        {"empty", [](Path path) { std::ofstream{path}; }},
        {"of NULs", [](Path path) { std::ofstream(path) << std::string(100, '\0'); }},
        {"binary", [&](Path path) { std::ofstream(path) << binary; }},
        {"of headers",
         [](Path path) { std::ofstream(path) << "[System]\n[PCI\n[PCIIDMap]\n[NIC"; }},
    };
    for (int file = 0; file < 3; ++file) {
        for (const auto& [what, put] : kUseless) {
            const SmallMachine machine;
            fs::remove(machine.files[file]);
            put(machine.files[file]);
            const Outcome run = machine.convert();
            EXPECT_EQ(file < 2 ? "1|" : "0|", run.end) << file << " is " << what;
            EXPECT_TRUE(endsWith(run.out, file < 2 ? kNoPCI : "OnBoardAdapters = \n")) << run.out;
        }
    }
}

TEST(Report, StaysTheSameWhateverSurroundsTheEntries) {
    const SmallMachine machine;
    const std::string scan = machine.scan, expected = machine.convert().out, large(4 << 20, 'x');
    ASSERT_TRUE(endsWith(expected, "OnBoardAdapters = NIC\n")) << expected;
    const auto replaced = [&](const std::string& from, const std::string& to) {
        return std::string(scan).replace(scan.find(from), from.size(), to);
    };
    std::string mixed;
    for (const char c : scan) mixed += std::string(c == '\n' ? "\r" : "") + '\0' + c;
    const std::string kScans[] = {
        mixed,                                            // carriage returns and NULs
        large + "\n" + scan + large + " = " + large,      // lines of MiB
        replaced("[PCI]", "Z = " + large + "\n[PCI"),     // an unclosed header
        scan + "[PCI]\nTotal_Number_Of_Devices = 0\n",    // a repeated section
        replaced("Devices = 1", "Devices = 2000000000"),  // entries that are not there
        replaced("Devices = 1", "Devices = 4294967296"),  // more than an int holds
    };
    for (const std::string& text : kScans) {
        machine.file("scan.ini", text);
        const Outcome run = machine.convert();
        EXPECT_EQ("0|" + expected, run.end + run.out) << text.substr(0, 200);
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
    for (const Prepare& prepare : kOutputs) {
        const SmallMachine machine;
        for (const std::string& file : machine.files) fs::last_write_time(file, past);
        EXPECT_EQ("0|", machine.convert(prepare).end);
        for (const std::string& file : machine.files)
            EXPECT_EQ(past, fs::last_write_time(file)) << file;
    }
}
