#include "support.h"

namespace {
std::string memoryReport(const std::string& detail) {
    return "\n\nMemory Allocation Error\n\nNot enough memory is available for this application.\n\n"
           "Please close some programs to free up memory and try running\n"
           "this application again.\n\n" +
           detail + "\n";
}

// Runs a program with each of its allocations failing, alone and with all that follow it. `start`
// calls what it is given in the process of the program. `check` sees what becomes of it; warnings,
// each of a document that stops loading, are told and taken off standard error.
void failEach(const std::function<Outcome(const Prepare&)>& start,
              const std::function<void(const Outcome&, bool warned, bool fatal)>& check) {
    const std::string warning = memoryReport("IniFile.AddLine()");
    const ScratchFolder folder;
    const std::string count = folder.file("count", ""), fault = folder.path("fault.so");
    std::filesystem::create_symlink(SLOTRPT_ALLOC_FAULT, fault);  // LD_PRELOAD splits at blanks
    int total = 0;
    for (int at = 0; at <= total; ++at) {  // the first run counts
        for (const char* on : {"0", "1"}) {
            SCOPED_TRACE("allocation " + std::to_string(at) + ", and on: " + on);
            Outcome run = start([&] {
                setenv("LD_PRELOAD", fault.c_str(), 1);
                setenv("SLOTRPT_FAIL_AT", std::to_string(at).c_str(), 1);
                setenv("SLOTRPT_FAIL_ON", on, 1);
                if (at == 0) setenv("SLOTRPT_COUNT", count.c_str(), 1);
            });
            std::size_t place = 0;
            bool warned = false;
            for (; (place = run.end.find(warning)) != std::string::npos; warned = true)
                run.end.erase(place, warning.size());
            check(run, warned, run.end == "1|" + memoryReport("CString::CreateCharString"));
            if (testing::Test::HasFailure()) return;
        }
        if (at == 0) total = std::stoi("0" + readFile(count));
    }
    EXPECT_GT(total, 5);
}
}  // namespace

TEST(Alloc, FailuresEndAReportCleanly) {
    const std::string source = SLOTRPT_SOURCE_DIR "/examples/", scan = source + "alpha.ini";
    const std::string report = readFile(source + "alpha.report");
    const auto start = [&](const Prepare& prepare) {
        return convert(source + "cd", scan.c_str(), prepare);
    };
    failEach(start, [&](const Outcome& run, bool warned, bool fatal) {
        // Behind a warning, a shortened document may give another report, or none.
        EXPECT_TRUE(fatal || run.end == "0|" || (warned && run.end == "1|")) << run.end;
        EXPECT_TRUE(warned || run.out == report ||
                    (fatal && run.out == report.substr(0, run.out.size())))
            << run.out;
    });
}

TEST(Alloc, FailuresEndAnEditCleanly) {
    // So many records without a text that memory runs out for a record too.
    const std::string blanks(3000, '\n'),
        before = "[A]\nK = 1\n" + blanks + "[B]\nX = 2\n",
        after = "[A]\nK = changed\nN = 5\n" + blanks + "[B]\nX = 2\nbare\n\n[C]\nK = 1\n";
    const ScratchFolder folder;
    const auto start = [&](const Prepare& prepare) {
        const std::string path = folder.file("a.ini", before);
        return inChild([&] {
            prepare();
            return execl(SLOTRPT_EDIT, SLOTRPT_EDIT, path.c_str(), nullptr);
        });
    };
    bool anyWarned = false;
    failEach(start, [&](const Outcome& run, bool warned, bool fatal) {
        anyWarned = anyWarned || warned;
        const std::string file = readFile(folder.path("a.ini"));
        const bool refused = run.end == "2|";  // an edit was, which may be without a word
        EXPECT_TRUE(fatal || refused || run.end == "0|") << run.end;
        // A fatal end leaves the file as it was, or as far as it was written.
        const bool cut = fatal && (file == before || file == after.substr(0, file.size()));
        EXPECT_TRUE(warned || refused || cut || file == after) << file;
    });
    EXPECT_TRUE(anyWarned);
}
