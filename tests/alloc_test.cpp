#include "support.h"

namespace {
std::string memoryReport(const std::string& detail) {
    return "\n\nMemory Allocation Error\n\nNot enough memory is available for this application.\n\n"
           "Please close some programs to free up memory and try running\n"
           "this application again.\n\n" +
           detail + "\n";
}

// Runs a program with one argument, with none and then with each of its allocations failing, alone
// and with all that follow it. `check` sees what becomes of it; warnings, each of a document that
// stops loading, are told and taken off standard error.
void failEach(const char* program, const std::string& argument,
              const std::function<void(const Outcome&, bool warned, bool fatal)>& check) {
    const std::string warning = memoryReport("IniFile.AddLine()");
    const auto run = [&](const std::string& orders) {
        return inChild([&] {
            setenv("SLOTRPT_FAIL", orders.c_str(), 1);
            return execl(program, program, argument.c_str(), nullptr);
        });
    };
    const Outcome counted = run("0");
    const int total = std::stoi("0" + counted.end.substr(2));  // behind the status, of one digit
    EXPECT_GT(total, 5);
    check({counted.out, counted.end.substr(0, 2)}, false, false);
    for (int at = 1; at <= total && !testing::Test::HasFailure(); ++at) {
        for (const char* on : {"", "+"}) {
            const std::string orders = std::to_string(at) + on;
            SCOPED_TRACE("failing: " + orders);
            Outcome outcome = run(orders);
            std::string& end = outcome.end;
            bool warned = false;
            for (std::size_t i; (i = end.find(warning)) != std::string::npos; warned = true)
                end.erase(i, warning.size());
            check(outcome, warned, end == "1|" + memoryReport("CString::CreateCharString"));
        }
    }
}
}  // namespace

TEST(Alloc, FailuresEndAReportCleanly) {
    const std::string source = SLOTRPT_SOURCE_DIR "/examples/";
    const std::string report = readFile(source + "alpha.report");
    setenv("RWCD", (source + "cd").c_str(), 1);
    const auto check = [&](const Outcome& run, bool warned, bool fatal) {
        // Behind a warning, a shortened document may give another report, or none.
        EXPECT_TRUE(fatal || run.end == "0|" || (warned && run.end == "1|")) << run.end;
        EXPECT_TRUE(warned || run.out == report ||
                    (fatal && run.out == report.substr(0, run.out.size())))
            << run.out;
    };
    failEach(SLOTRPT_FAULTY, source + "alpha.ini", check);
}

TEST(Alloc, FailuresEndAnEditCleanly) {
    // So many records without a text that memory runs out for a record too.
    const std::string blanks(3000, '\n'),
        before = "[A]\nK = 1\n" + blanks + "[B]\nX = 2\n",
        after = "[A]\nK = changed\nN = 5\n" + blanks + "[B]\nX = 2\nbare\n\n[C]\nK = 1\n";
    const ScratchFolder folder;
    const std::string path = folder.file("a.ini", before);
    bool anyWarned = false;
    const auto check = [&](const Outcome& run, bool warned, bool fatal) {
        anyWarned = anyWarned || warned;
        const bool refused = run.end == "2|";  // an edit was, which may be without a word
        EXPECT_TRUE(fatal || refused || run.end == "0|") << run.end;
        // A fatal end leaves the file as it was, or as far as it was written.
        const std::string file = readFile(path);
        const bool cut = fatal && (file == before || file == after.substr(0, file.size()));
        EXPECT_TRUE(warned || refused || cut || file == after) << file;
        folder.file("a.ini", before);
    };
    failEach(SLOTRPT_EDIT, path, check);
    EXPECT_TRUE(anyWarned);
}
