#include "fleet/Conversion.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "common/printable.h"
#include "fleet/Inputs.h"
#include "inspect/Document.h"
#include "inspect/findLack.h"
#include "pci/CustomPCIDeviceList.h"

int slotrpt_main(int argc, char* argv[]);  // the main of the converter

namespace {
std::FILE* const kMessages = stderr;  // stays when a process replaces stderr

// On a terminal, the carriage return lets the line replace the progress.
void say(const char* what, const CString& path, const CString& text) {
    std::fprintf(kMessages, "%s%s: %s: %s\n", isatty(STDERR_FILENO) ? "\r" : "", what,
                 printable(path).c_str(), printable(text).c_str());
}

// Lets the converter print into the text. It writes to stderr only when memory runs out, which the
// exit status says, too; then it calls exit(). The handler ends the process, so that the handlers
// of the parent do not run.
void redirectOutput(std::string& text) {
    const auto append = [](void* report, const char* block, std::size_t size) {
        static_cast<std::string*>(report)->append(block, size);
        return static_cast<ssize_t>(size);
    };
    std::atexit([] { _exit(Conversion::kMemoryRanOut); });
    stdout = CString::Required(fopencookie(&text, "w", {nullptr, append, nullptr, nullptr}));
    stderr = CString::Required(fopencookie(nullptr, "w", {}));
}

// For the errno of removing a file. A folder is not removed like one.
bool saysThatThereIsNoFile(int error) {
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == EISDIR;
}

// Whether there is a file with this text at the path, and no link.
bool hasText(const CString& path, const std::string& text) {
    struct stat status;
    if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    std::string found(text.size() + 1, '\0');  // + 1: a longer file is another one
    const ssize_t length = read(descriptor, found.data(), found.size());
    close(descriptor);
    found.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return found == text;
}

// Returns false if the system refuses a part of it, with its errno.
bool writeAll(int descriptor, const std::string& text) {
    for (std::size_t written = 0; written != text.size();) {
        const ssize_t length = write(descriptor, text.data() + written, text.size() - written);
        if (length < 0) return false;
        written += static_cast<std::size_t>(length);
    }
    return true;
}
}  // namespace

Conversion::Conversion(ProductCD& productCD, CIniFile& configurationFile,
                       char (&partialPath)[PATH_MAX])
    : cd(productCD),
      configuration(configurationFile),
      partial(partialPath),
      // Clears the umask, too: a temporary file is the owner's, whatever the umask forbids.
      mode(0666 & ~umask(0)) {
    redirectOutput(report);
}

Result Conversion::convert(const CString& path) {
    isChanged = false;
    CString reason = identify(path);
    if (reason.IsEmpty()) reason = checkSystemFiles();
    if (reason.IsEmpty()) reason = runConverter();
    if (reason.IsEmpty()) reason = saveReport(path);
    if (!reason.IsEmpty()) {
        fail(path, reason);
        return {Outcome::kFailed};
    }
    const bool isUnknown = systemID == CustomPCIDeviceList::kUnknownSystem;
    if (isUnknown)
        say("unknown system", path,
            machineType.IsEmpty() ? "no machine type" : "machine type " + machineType);
    return {isChanged ? Outcome::kChanged : Outcome::kUnchanged, isUnknown};
}

// Reads the file and finds out its system. This and the next steps return why the file fails; "" if
// it does not.
CString Conversion::identify(const CString& path) {
    Copy copy = copyFile(path);
    if (!copy.getFault().IsEmpty()) return copy.getFault();
    Copies::set(kDetectionCopy, std::move(copy.text));

    const Lack lack = findLack(Document(kDetectionCopy), copy.endsInLine);
    if (!lack.reason.IsEmpty()) return lack.reason;
    CIniFile iniFile(kDetectionCopy);
    machineType = CustomPCIDeviceList::getMachineType(iniFile);
    systemID = CustomPCIDeviceList::getSystemID(configuration, machineType);
    return "";
}

// If a per-system file is there and cannot be opened, the converter would take the next one, or
// none.
CString Conversion::checkSystemFiles() {
    for (const ProductCD::File* file : cd.getSystemFiles(systemID))
        if (!file->copy.getFault().IsEmpty()) return file->path + ": " + file->copy.getFault();
    return "";
}

CString Conversion::runConverter() {
    report.clear();
    CString argument = CString("/rwpm:") + kDetectionCopy;
    char* argv[] = {nullptr, argument.c_str(), nullptr};
    const int status = slotrpt_main(2, argv);
    std::fflush(stdout);
    return status == 0 ? "" : "no adapter has a name; see slotrpt-explain";
}

CString Conversion::saveReport(const CString& path) {
    const CString reportPath = reportPathOf(path);
    if (hasText(reportPath, report)) return "";
    isChanged = writeReport(reportPath);
    const char* const reason = std::strerror(errno);
    if (!isChanged) unlink(partial);
    partial[0] = '\0';
    return isChanged ? "" : "cannot write " + reportPath + ": " + reason;
}

// Returns false, with the errno, if the report is not in its place.
bool Conversion::writeReport(const CString& path) {
    // A path that does not fit is cut, and mkostemp calls it invalid.
    std::snprintf(partial, PATH_MAX, "%s.slotrpt-fleet.XXXXXX", folderOf(path).c_str());
    const int descriptor = mkostemp(partial, O_CLOEXEC);
    if (descriptor < 0 && errno == EINVAL) errno = ENAMETOOLONG;
    if (descriptor < 0) return false;
    const bool isWritten = writeAll(descriptor, report) && fchmod(descriptor, mode) == 0;
    const bool isClosed = close(descriptor) == 0;  // if so, the errno of the others stays
    return isWritten && isClosed && std::rename(partial, path.c_str()) == 0;
}

void fail(const CString& path, CString reason) {
    const CString earlier = reportPathOf(path);
    const int error = unlink(earlier.c_str()) == 0 ? 0 : errno;
    if (error != 0 && !saysThatThereIsNoFile(error))
        reason += "; cannot remove " + earlier + ": " + std::strerror(error);
    say("failed", path, reason);
}
