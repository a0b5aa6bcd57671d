#include "util/Exec.h"

#include <csignal>

#include "support.h"

// An error of execvp that no test can bring about. While this is 0, execvp does its work.
static int g_execError = 0;

extern "C" int execvp(const char* file, char* const argv[]) noexcept {
    if (g_execError == 0) return execvpe(file, argv, environ);
    errno = g_execError;
    return -1;
}

namespace {
bool failWith(int error, CExec& exec) {
    g_execError = error;
    return exec.Execute("true");
}

const std::string kRun = "System call failed.  Unable to run ";
const std::string kExecute = "Exec call failed.  Unable to run ";
const std::string kNotFound = "\n\nPath or file name not found.\n";

struct Failure {
    const char* rule;
    std::function<bool(CExec&)> attempt;  // made after a failure: ENOENT
    int error;
    std::string words;
};
const Failure kFailures[] = {
    {"Initialize() clears command and error",
     [](CExec& e) {
         e.Initialize();
         return false;
     },
     0, "\n\n\n"},
    {"running nothing keeps the error", [](CExec& e) { return e.Run(""); }, ENOENT,
     kRun + kNotFound},
    {"executing nothing keeps the error",  // not the ENOENT that execvp has for an empty name
     [](CExec& e) { return e.Execute("/") || e.Execute(""); }, EACCES, kExecute + "\n\n\n"},
    {"a command is shown with its blanks", [](CExec& e) { return e.Execute(" \tno\n"); }, ENOENT,
     kExecute + " \tno\n" + kNotFound},
    {"an error may have no words", [](CExec& e) { return e.Execute("/"); }, EACCES,
     kExecute + "/\n\n\n"},
    {"the environment may be too large",
     [](CExec& e) {
         setenv("LARGE", std::string(4 << 20, 'x').c_str(), 1);
         return e.Execute("true");
     },
     E2BIG, kExecute + "true\n\nArg list too long.\n"},
    {"the file may be no program", [](CExec& e) { return failWith(ENOEXEC, e); }, ENOEXEC,
     kExecute + "true\n\nExec format error.\n"},
    {"memory may run out", [](CExec& e) { return failWith(ENOMEM, e); }, ENOMEM,
     kExecute + "true\n\nNot enough memory.\n"},
    {"the program may be damaged", [](CExec& e) { return failWith(EINVAL, e); }, EINVAL,
     kExecute + "true\n\nInvalid argument.\n"},
    {"the end of a command may not be seen",
     [](CExec& e) {
         setpgid(0, 0);
         std::signal(SIGUSR1, [](int) {
             for (const int ignored : {SIGCHLD, SIGTERM}) std::signal(ignored, SIG_IGN);
             kill(0, SIGTERM);  // ends the command
         });
         return e.Run("kill -USR1 $PPID; sleep 9");
     },
     ECHILD, kRun + "kill -USR1 $PPID; sleep 9\n\n\n"},
    {"there may be no interpreter",
     [](CExec& e) {
         setenv("COMSPEC", "none", 1);
         std::signal(SIGCHLD, SIG_IGN);  // no process can be waited for
         return e.Run("true");
     },
     999, kRun + "true\n\nCommand interpreter not found.\n\nCOMSPEC = none\n"},
};

struct Command {
    const char* rule;
    const char* text;
    const char* printed;
};
const Command kCommands[] = {
    {"argument 0 is the bare name, without blanks", "\t/bin/sh\t -c echo\t$0 ", "sh\n"},
    {"a tab divides nothing", "echo a\tc", "a\tc\n"},
    {"quotes mean nothing, and a word of blanks is dropped", "  echo \"a \t c'\n", "\"a c'\n"},
};
}  // namespace

TEST(Exec, RunsACommandWhateverItsStatus) {
    const ScratchFolder folder;
    CExec exec(("echo x > " + folder.path("a") + "; exit 3").c_str());
    EXPECT_TRUE(exec.Run());
    EXPECT_EQ(0, exec.GetLastError());
    EXPECT_EQ("x\n", readFile(folder.path("a")));
    EXPECT_FALSE(exec.Execute("/"));
    EXPECT_TRUE(exec.Run("true"));
    EXPECT_EQ(EACCES, exec.GetLastError()) << "of the last failure";
}

TEST(Exec, BecomesTheProgramOfACommandThatItSplitsAtSpaces) {
    for (const Command& row : kCommands) {
        const Outcome run = inChild([&] { return CExec().Execute(row.text) ? 98 : 99; });
        EXPECT_EQ(row.printed, run.out) << row.rule;
    }
}

TEST(Exec, PutsTheLastFailureIntoWords) {
    for (const Failure& row : kFailures) {
        SCOPED_TRACE(row.rule);
        const Outcome run = inChild([&] {
            setenv("PATH", "/bin", 1);  // a folder that cannot be searched gives another error
            CExec exec;
            const bool isStarted = exec.Execute("no-such") || row.attempt(exec);
            std::printf("%d ", exec.GetLastError());
            std::printf("%d", exec.DisplayLastError());
            return isStarted ? 1 : 0;
        });
        EXPECT_EQ(0, run.status) << "an attempt that fails returns false";
        const std::string error = std::to_string(row.error);
        EXPECT_EQ(error + " " + error, run.out);
        EXPECT_EQ("\n\nGeneral System Error\n\n" + row.words + "\n", run.err);
    }
}
