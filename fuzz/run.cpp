// Any bytes as the three files of one run, the whole program in process.
//
// The input is the detection file, the system configuration file and the per-system file, divided
// by lines "%%". The last one is there for the identifiers SRV_ALPHA and UNKNOWN_SERVER.
//
// The run ends with status 0 or 1 and the report that belongs to it. Where SLOTRPT_X86 names a
// build of the program for the other word size, every SLOTRPT_X86_STEP-th input (each, when unset)
// also goes through that, which must print the same.

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "fuzz.h"
#include "model.h"
#include "util/IniFile.h"

int slotrpt_main(int argc, char* argv[]);

namespace {

constexpr int kMostAlike = 1000;

struct Run {
    int status;
    std::string output;
};

// The files of a run, and standard output, which goes into memory from here on.
class Stage {
public:
    Stage() : m_output(memfd_create("stdout", MFD_CLOEXEC)) {
        fuzz::check(m_output >= 0 && dup2(m_output, STDOUT_FILENO) >= 0, "stdout can be caught");
        const std::string folder = m_scratch.path("rwise/ini/");
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink("ALPHA.ini", folder + "server.ini");
        setenv("RWCD", m_scratch.path("").c_str(), 1);
    }

    void set(const std::vector<std::string>& files) const {
        fuzz::putFile(detection(), files[0]);
        fuzz::putFile(configuration(), files[1]);
        fuzz::putFile(m_scratch.path("rwise/ini/ALPHA.ini"), files[2]);
    }

    // Entries without keys are alike: when the map names them, the report is as long as the total
    // says, whatever the size of the files.
    bool isEndless() const {
        return CIniFile(detection().c_str()).ReadInteger("PCI", "Total_Number_Of_Devices") >
                   kMostAlike &&
               !CIniFile(configuration().c_str()).ReadString("PCIIDMap", "0x00000000").IsEmpty();
    }

    Run inProcess() const {
        fuzz::check(ftruncate(m_output, 0) == 0, "the output can be emptied");
        lseek(STDOUT_FILENO, 0, SEEK_SET);
        std::string argument = "/rwpm:" + detection();
        char* argv[] = {nullptr, argument.data(), nullptr};
        const int status = slotrpt_main(2, argv);
        std::fflush(stdout);
        return {status, fuzz::getFile("/proc/self/fd/" + std::to_string(m_output))};
    }

    Run asChild(const char* program) const {
        const std::string output = m_scratch.path("output");
        std::string name = program;
        std::string argument = "/rwpm:" + detection();
        char* argv[] = {name.data(), argument.data(), nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t child = 0;
        const int failure = posix_spawn(&child, program, &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        fuzz::check(failure == 0, "the program of the other word size can be run");
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;  // the fuzzer's alarm
        fuzz::check(WIFEXITED(status), "the program of the other word size ends by itself");
        return {WEXITSTATUS(status), fuzz::getFile(output)};
    }

private:
    std::string detection() const { return m_scratch.path("scan.ini"); }
    std::string configuration() const { return m_scratch.path("rwise/ini/syscfg.ini"); }

    fuzz::Scratch m_scratch;
    int m_output;
};

void checkReport(const Run& run) {
    fuzz::check(run.status == 0 || run.status == 1, "the status is 0 or 1");
    fuzz::check(model::startsWith(run.output, "[MACH]\nSystemID = "), "how the report begins");
    const bool failed =
        model::endsWith(run.output, "\n!Error!  Could not find PCI information.  !Error!\n");
    fuzz::check(failed == (run.status == 1), "the error line and status 1 go together");
    if (!failed)
        fuzz::check(run.output.find("\n[PCI]\nAdapters = ") <
                        run.output.rfind("\n[DETECTED_BY_GROUP]\nDASDAdapters = "),
                    "the parts of the report");
}

bool isTurn() {
    static const char* const text = std::getenv("SLOTRPT_X86_STEP");
    static const int step = text ? std::max(1, std::atoi(text)) : 1;
    static int inputs = 0;
    return ++inputs % step == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Stage stage;
    static const char* const otherProgram = std::getenv("SLOTRPT_X86");

    stage.set(fuzz::parts(data, size, 3));
    if (stage.isEndless()) return -1;
    const Run run = stage.inProcess();
    checkReport(run);
    if (!otherProgram || !isTurn()) return 0;
    const Run other = stage.asChild(otherProgram);
    fuzz::check(run.status == other.status, "both word sizes end alike");
    fuzz::checkSame(run.output, other.output, "the report for the other word size");
    return 0;
}
