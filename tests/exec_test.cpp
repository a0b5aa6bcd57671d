#include "util/Exec.h"

#include <csignal>
#include <tuple>

#include "support.h"

TEST(Exec, RunsACommandOrBecomesIt) {
    const ScratchFolder folder;
    CExec exec(("echo x > " + folder.path("a") + "; exit 3").c_str());
    EXPECT_EQ("1|0|x\n",
              joined({exec.Run(), exec.GetLastError(), readFile(folder.path("a")).c_str()}));

    const std::pair<const char*, const char*> kCommands[] = {
        {" \techo  a   b\t ", "a b\n"},    // through PATH; empty words go
        {"/bin/sh -c echo\t$0", "sh\n"},   // its name is argument 0; only blanks divide
        {"echo \"a \t c'\n", "\"a c'\n"},  // no quoting; a word of a tab is none
    };
    for (const auto& [command, out] : kCommands) {
        const Outcome run = inChild([&c = command] { return CExec().Execute(c) ? 98 : 99; });
        EXPECT_EQ(std::string("0|") + out, run.end + run.out);
    }
}

TEST(Exec, PutsTheLastFailureIntoWords) {
    const std::string kRun = "System call failed.  Unable to run ",
                      kExec = "Exec call failed.  Unable to run ",
                      kNotFound = "\n\nPath or file name not found.\n";
    const std::tuple<std::function<bool(CExec&)>, int, std::string> kFailures[] = {
        {[](CExec& exec) { return exec.Execute() || (exec.Initialize(), exec.GetLastError()); }, 0,
         "\n\n\n"},  // as if nothing had been tried
        {[](CExec& exec) { return exec.Execute() || exec.Run("") || exec.Execute(""); }, ENOENT,
         kExec + kNotFound},  // an empty command keeps the error
        {[](CExec& exec) { return exec.Execute("no-such") || exec.Run(""); }, ENOENT,
         kRun + kNotFound},  // but it was tried
        {[](CExec& exec) { return exec.Execute(" \t "); }, ENOENT, kExec + " \t " + kNotFound},
        {[](CExec& exec) { return exec.Execute("/ x"); }, EACCES, kExec + "/ x\n\n\n"},
        {[](CExec& exec) {
             setenv("LARGE", std::string(4 << 20, 'x').c_str(), 1);
             return exec.Execute("true");
         },
         E2BIG, kExec + "true\n\nArg list too long.\n"},
        {[](CExec& exec) {
             setenv("COMSPEC", "none", 1);
             std::signal(SIGCHLD, SIG_IGN);  // no process can be waited for
             return exec.Run("true");
         },
         CExec::kNoInterpreter,
         kRun + "true\n\nCommand interpreter not found.\n\nCOMSPEC = none\n"},
    };
    for (const auto& [fail, error, words] : kFailures) {
        const Outcome run = inChild([&f = fail, &e = error] {
            CExec exec("no-such");
            return f(exec) || exec.DisplayLastError() != e;
        });
        EXPECT_EQ("0|\n\nGeneral System Error\n\n" + words + "\n", run.end);
    }
}
