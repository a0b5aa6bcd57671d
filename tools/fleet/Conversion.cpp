#include "fleet/Conversion.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "common/files.h"
#include "common/printable.h"
#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/IniFile.h"

int slotrpt_main(int argc, char* argv[]);  // the main of the converter

namespace {
CString input;
char* partialReport = nullptr;
int output = -1;                      // its descriptor
std::FILE* const kMessages = stderr;  // stays when a child replaces stderr

// On a terminal, the carriage return lets the line replace the progress.
void say(const char* what, const CString& path, const CString& text) {
    std::fprintf(kMessages, "%s%s: %s: %s\n", isatty(STDERR_FILENO) ? "\r" : "", what,
                 printable(path).c_str(), printable(text).c_str());
}

// Returns only if the reason is empty.
void failIf(const CString& reason) {
    if (reason.IsEmpty()) return;
    fail(input, partialReport, reason);
    _exit(kFailed);
}

void failToWrite() {
    const char* const reason = std::strerror(errno);
    failIf("cannot write " + reportPathOf(input) + ": " + reason);
}

void openReport() {
    // A path that does not fit is cut, and mkstemp calls it invalid.
    std::snprintf(partialReport, PATH_MAX, "%s.slotrpt-fleet.XXXXXX", folderOf(input).c_str());
    output = mkstemp(partialReport);
    if (output < 0 && errno == EINVAL) errno = ENAMETOOLONG;
    if (output < 0) failToWrite();
}

// The first error ends the conversion. The converter would go on, and later blocks could fit again.
ssize_t writeBlock(void*, const char* block, std::size_t size) {
    for (std::size_t written = 0; written != size;) {
        const ssize_t length = write(output, block + written, size - written);
        if (length < 0) failToWrite();
        written += static_cast<std::size_t>(length);
    }
    return static_cast<ssize_t>(size);
}

bool prepare() {
    // The converter uses stderr only to say that memory runs out, and the parent says that.
    stdout = stderr = fopencookie(nullptr, "w", {nullptr, writeBlock, nullptr, nullptr});
    // After that it calls exit(). Without this handler, those of the parent would run.
    return stdout && std::atexit([] { _exit(kWithoutMemory); }) == 0;
}

int runConverter() {
    CString argument = "/rwpm:" + input;
    char* argv[] = {nullptr, argument.c_str(), nullptr};
    const int status = slotrpt_main(2, argv);
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) failToWrite();
    return status;
}

void requireFromCD(const CString& path) {
    const CString fault = faultOf(path);
    if (!fault.IsEmpty()) failIf(path + ": " + fault);
}

// If a per-system file is there and cannot be opened, the converter takes the next one, or none.
void requireSystemFile(const CString& systemID) {
    CString paths[2];
    const unsigned total = findSystemFiles(systemID, paths);
    for (unsigned i = 0; i != total; ++i) requireFromCD(paths[i]);
}

CString describeAbsence() {
    CIniFile detection(input);
    if (!detection.GetFirstLine()) return "empty";
    if (!detection.HasSection(CustomPCIDeviceList::kDeviceSection)) return "no section [PCI]";
    return "no adapter has a name; see slotrpt-explain";
}
}  // namespace

std::string_view stemOf(const char* path) {
    const char* const slash = std::strrchr(path, '/');
    std::string_view name = slash ? slash + 1 : path;
    constexpr std::string_view kExtension = ".ini";
    if (name.size() > kExtension.size() &&
        strcasecmp(name.end() - kExtension.size(), kExtension.data()) == 0)
        name.remove_suffix(kExtension.size());
    return name;
}

CString reportPathOf(const CString& path) {
    const std::string_view stem = stemOf(path.c_str());
    return path.Left(static_cast<int>(stem.end() - path.c_str())) + ".report";
}

CString folderOf(const CString& path) { return path.Left(path.ReverseFind("/") + 1); }

void convert(const CString& path, char (&partial)[PATH_MAX]) {
    static const bool isPrepared = prepare();
    if (!isPrepared) _exit(kWithoutMemory);
    // Clears the umask, too: it may forbid the owner to read the report, which is read below.
    static const mode_t mode = 0666 & ~umask(0);
    input = path;
    partialReport = partial;
    failIf(faultOf(input));
    openReport();
    const int status = runConverter();
    CIniFile report(partial);
    const CString systemID = report.ReadString("MACH", "SystemID");
    failIf(takeLoadFault());
    requireFromCD(CustomPCIDeviceList::getConfigurationPathName());
    if (status != 0) failIf(describeAbsence());
    requireSystemFile(systemID);
    if (fchmod(output, mode) != 0 || close(output) != 0 ||
        std::rename(partial, reportPathOf(input).c_str()) != 0)
        failToWrite();
    if (systemID != CustomPCIDeviceList::kUnknownSystem) return;
    const CString machineType = report.ReadString(systemID, "MachTypeModelNumber");
    say("unknown system", input,
        machineType.IsEmpty() ? "no machine type" : "machine type " + machineType);
    _exit(kOfUnknownSystem);
}

void fail(const CString& path, const char* partial, CString reason) {
    unlink(partial);
    const CString earlier = reportPathOf(path);
    struct stat status;
    const bool isFile = lstat(earlier.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
    if (isFile && unlink(earlier.c_str()) != 0)
        reason += "; cannot remove " + earlier + ": " + std::strerror(errno);
    say("failed", path, reason);
}
