#include "support.h"

namespace {
std::string memoryReport(const std::string& detail) {
    return "\n\nMemory Allocation Error\n\nNot enough memory is available for this application.\n\n"
           "Please close some programs to free up memory and try running\n"
           "this application again.\n\n" +
           detail + "\n";
}
const std::string kFatal = memoryReport("CString::CreateCharString");
const std::string kWarning = memoryReport("IniFile.AddLine()");
const std::string kLater = "X = 2\n";  // a line that is never reached if loading stops

// Runs a program with one argument, and lets each of its allocations fail: alone, then with all
// that follow. A run prints `expected`, or its beginning and then the fatal report. A status of 2
// says that it refused an edit. Returns whether any run warned that a document stopped loading.
bool failEach(const char* program, const std::string& argument, const std::string& expected) {
    const auto run = [&](const std::string& orders) {
        return inChild([&] {
            setenv("SLOTRPT_FAIL", orders.c_str(), 1);
            // Otherwise some of the memory that was freed counts as used.
            setenv("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0", 1);
            return execl(program, program, argument.c_str(), nullptr);
        });
    };
    const int total = std::stoi("0" + run("0").err);  // 0 if the run does not print it
    EXPECT_GT(total, 5);
    bool hasEverWarned = false;
    for (int at = 1; at <= total && !testing::Test::HasFailure(); ++at) {
        for (const char* others : {"", "+"}) {
            const std::string orders = std::to_string(at) + others;
            SCOPED_TRACE("failing: " + orders);
            Outcome end = run(orders);
            const bool hasWarned = end.err.find(kWarning) != std::string::npos;
            hasEverWarned = hasEverWarned || hasWarned;
            for (std::size_t i; (i = end.err.find(kWarning)) != std::string::npos;)
                end.err.erase(i, kWarning.size());
            EXPECT_THAT(end.err, testing::AnyOf("", kFatal)) << "nothing else, no broken rule";
            EXPECT_THAT(end.status, testing::AnyOf(0, 1, 2)) << "no signal, no exception";
            if (hasWarned) {
                EXPECT_THAT(end.out, testing::Not(testing::HasSubstr(kLater)));
            } else {
                EXPECT_EQ(end.err == kFatal, end.status == 1);
                EXPECT_EQ(end.status == 0 ? expected : expected.substr(0, end.out.size()), end.out);
            }
        }
    }
    return hasEverWarned;
}
}  // namespace

TEST(Alloc, FailuresEndAReportCleanly) {
    const std::string source = SLOTRPT_SOURCE_DIR "/examples/";
    setenv("RWCD", (source + "cd").c_str(), 1);
    failEach(SLOTRPT_FAULTY, source + "alpha.ini", readFile(source + "alpha.report"));
}

TEST(Alloc, FailuresEndAnEditCleanly) {
    // So many blank lines that some allocations are for records alone. On 64-bit systems, one of
    // them is for the blank line above [C], which is neither the first nor the last line of its
    // edit.
    const std::string blanks(2843, '\n'), before = "[A]\nK = 1\n" + blanks + "[B]\n" + kLater;
    const std::string after =
        "[A]\nK = changed\nN = 5\n" + blanks + "[B]\n" + kLater + "bare\n\n[C]\nK = 1\n";
    const ScratchFolder folder;
    const bool hasWarned = failEach(SLOTRPT_EDIT, folder.file("a.ini", before), after);
    EXPECT_TRUE(hasWarned || HasFailure()) << "a line without memory ends the loading";
}
