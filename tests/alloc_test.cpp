#include "support.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace {
std::string memoryReport(const std::string& detail) {
    return "\n\nMemory Allocation Error\n\nNot enough memory is available for this application.\n\n"
           "Please close some programs to free up memory and try running\n"
           "this application again.\n\n" +
           detail + "\n";
}
const std::string kFatal = memoryReport("CString::CreateCharString");
const std::string kWarning = memoryReport("IniFile.AddLine()");

// Runs a program with one argument, and lets each of its allocations fail, alone and with all that
// follow it. `check` sees how it ends, and whether it warned of a document that stopped loading:
// these warnings are taken off standard error.
void failEach(const char* program, const std::string& argument,
              const std::function<void(const Outcome&, bool warned)>& check) {
    const auto run = [&](const std::string& orders) {
        return inChild([&] {
            setenv("SLOTRPT_FAIL", orders.c_str(), 1);
            return execl(program, program, argument.c_str(), nullptr);
        });
    };
    const int total = std::stoi("0" + run("0").err);
    EXPECT_GT(total, 5);
    for (int at = 1; at <= total && !testing::Test::HasFailure(); ++at) {
        for (const char* on : {"", "+"}) {
            const std::string orders = std::to_string(at) + on;
            SCOPED_TRACE("failing: " + orders);
            Outcome end = run(orders);
            bool warned = false;
            for (std::size_t i; (i = end.err.find(kWarning)) != std::string::npos; warned = true)
                end.err.erase(i, kWarning.size());
            EXPECT_THAT(end.err, AnyOf("", kFatal));
            check(end, warned);
        }
    }
}
}  // namespace

TEST(Alloc, FailuresEndAReportCleanly) {
    const std::string source = SLOTRPT_SOURCE_DIR "/examples/";
    const std::string report = readFile(source + "alpha.report");
    setenv("RWCD", (source + "cd").c_str(), 1);
    failEach(SLOTRPT_FAULTY, source + "alpha.ini", [&](const Outcome& run, bool warned) {
        const bool fatal = !run.err.empty();
        if (warned) {  // a shortened document may give another report, or none
            EXPECT_THAT(run.status, AnyOf(0, 1));
        } else {
            EXPECT_EQ(fatal ? 1 : 0, run.status);
            EXPECT_EQ(fatal ? report.substr(0, run.out.size()) : report, run.out);
        }
    });
}

TEST(Alloc, FailuresEndAnEditCleanly) {
    // So many records without a text that memory runs out for a record too.
    const std::string blanks(3000, '\n'), before = "[A]\nK = 1\n" + blanks + "[B]\nX = 2\n";
    const std::string after =
        "[A]\nK = changed\nN = 5\n" + blanks + "[B]\nX = 2\nbare\n\n[C]\nK = 1\n";
    const ScratchFolder folder;
    const std::string path = folder.file("a.ini", before);
    bool anyWarned = false;
    failEach(SLOTRPT_EDIT, path, [&](const Outcome& run, bool warned) {
        anyWarned = anyWarned || warned;
        const std::string file = readFile(path);
        if (!run.err.empty()) {
            EXPECT_EQ(1, run.status);
            EXPECT_TRUE(warned || file == before || file == after.substr(0, file.size())) << file;
        } else if (run.status != 0) {
            EXPECT_EQ(2, run.status);  // an edit was refused
        } else if (warned) {
            EXPECT_THAT(file, Not(HasSubstr("X = 2")));  // nothing is loaded behind a missing line
        } else {
            EXPECT_EQ(after, file);
        }
        folder.file("a.ini", before);
    });
    EXPECT_TRUE(anyWarned);
}
