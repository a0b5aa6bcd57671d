#include "util/Exec.h"

#include <csignal>

#include "support.h"

namespace {
// The same on every machine: a folder in PATH that cannot be searched would give another error.
Outcome withUsualPath(const std::function<int()>& body) {
    return inChild([&] {
        setenv("PATH", "/usr/bin:/bin", 1);
        return body();
    });
}

const std::string kRun = "System call failed.  Unable to run ";
const std::string kExecute = "Exec call failed.  Unable to run ";
const std::string kNotFound = "\n\nPath or file name not found.\n";

struct Failure {
    const char* name;
    std::function<void(CExec&)> then;  // after a program that does not exist
    int error;
    std::string words;
};
const Failure kFailures[] = {
    {"no program", [](CExec&) {}, ENOENT, kExecute + "no-such" + kNotFound},
    {"initialized", [](CExec& exec) { exec.Initialize(); }, 0, "\n\n\n"},
    {"an empty command", [](CExec& exec) { exec.Run(""); }, ENOENT, kRun + kNotFound},
    {"nothing", [](CExec& exec) { exec.Execute(""); }, ENOENT, kExecute + kNotFound},
    {"only blanks", [](CExec& exec) { exec.Execute(" "); }, ENOENT, kExecute + " " + kNotFound},
    {"no words for it", [](CExec& exec) { exec.Execute("/"); }, EACCES, kExecute + "/\n\n\n"},
    {"too large an environment",
     [](CExec& exec) {
         setenv("LARGE", std::string(4 << 20, 'x').c_str(), 1);
         exec.Execute("true");
     },
     E2BIG, kExecute + "true\n\nArg list too long.\n"},
    {"no interpreter",
     [](CExec& exec) {
         setenv("COMSPEC", "none", 1);
         std::signal(SIGCHLD, SIG_IGN);  // no process can be waited for
         exec.Run("true");
     },
     CExec::kNoInterpreter, kRun + "true\n\nCommand interpreter not found.\n\nCOMSPEC = none\n"},
};
}  // namespace

TEST(Exec, RunsACommandWhateverItsStatus) {
    const ScratchFolder folder;
    CExec exec(("echo x > " + folder.path("a") + "; exit 3").c_str());
    EXPECT_TRUE(exec.Run());
    EXPECT_EQ(0, exec.GetLastError());
    EXPECT_EQ("x\n", readFile(folder.path("a")));
}

TEST(Exec, BecomesTheProgramOfACommand) {
    const std::pair<const char*, const char*> kCommands[] = {
        {" \techo  a   b\t ", "a b\n"},    // through PATH; empty words are dropped
        {"/bin/sh -c echo\t$0", "sh\n"},   // argument 0 is the bare name; a tab divides nothing
        {"echo \"a \t c'\n", "\"a c'\n"},  // no quoting; a word of blanks is dropped
    };
    for (const auto& [command, printed] : kCommands) {
        const Outcome run = withUsualPath([&c = command] { return CExec().Execute(c) ? 98 : 99; });
        EXPECT_EQ(printed, run.out) << command;
    }
}

TEST(Exec, PutsTheLastFailureIntoWords) {
    for (const Failure& row : kFailures) {
        SCOPED_TRACE(row.name);
        const Outcome run = withUsualPath([&] {
            CExec exec("no-such");
            const bool isExecuted = exec.Execute();
            row.then(exec);
            std::printf("%d, shown as %d", exec.GetLastError(), exec.DisplayLastError());
            return isExecuted ? 1 : 0;
        });
        EXPECT_EQ(0, run.status);
        const std::string error = std::to_string(row.error);
        EXPECT_EQ(error + ", shown as " + error, run.out);
        EXPECT_EQ("\n\nGeneral System Error\n\n" + row.words + "\n", run.err);
    }
}
