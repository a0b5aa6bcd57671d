#include "util/Exec.h"

#include <csignal>

#include "support.h"

namespace {
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
    {"initialized", [](CExec& exec) { exec.Initialize(); }, 0, "\n\n\n"},
    {"run nothing", [](CExec& exec) { exec.Run(""); }, ENOENT, kRun + kNotFound},
    {"execute nothing", [](CExec& exec) { exec.Execute(""); }, ENOENT, kExecute + kNotFound},
    {"an error without words", [](CExec& exec) { exec.Execute("/"); }, EACCES,
     kExecute + "/\n\n\n"},
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
        {"/bin/sh -c echo\t$0", "sh\n"},     // argument 0 is the bare name; a tab divides nothing
        {"  echo \"a \t c'\n", "\"a c'\n"},  // no quoting; words of blanks are dropped
    };
    for (const auto& [command, printed] : kCommands) {
        const Outcome run = inChild([&c = command] { return CExec().Execute(c) ? 98 : 99; });
        EXPECT_EQ(printed, run.out) << command;
    }
}

TEST(Exec, PutsTheLastFailureIntoWords) {
    for (const Failure& row : kFailures) {
        SCOPED_TRACE(row.name);
        const Outcome run = inChild([&] {
            setenv("PATH", "/bin", 1);  // a folder that cannot be searched gives another error
            CExec exec("no-such");
            if (exec.Execute()) return 1;
            row.then(exec);
            std::printf("%d", exec.GetLastError());
            return exec.DisplayLastError() == exec.GetLastError() ? 0 : 2;
        });
        EXPECT_EQ(0, run.status);
        EXPECT_EQ(std::to_string(row.error), run.out);
        EXPECT_EQ("\n\nGeneral System Error\n\n" + row.words + "\n", run.err);
    }
}
