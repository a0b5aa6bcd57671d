#include "common/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "common/command.h"
#include "pci/CustomPCIDeviceList.h"
#include "util/IniFile.h"

namespace {
constexpr const char* kNotRegular = "Not a regular file";

bool hasPrefix(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Whether the text begins with two ASCII characters in UTF-16: every other byte is zero. A file
// that a crash left full of zeros is not in UTF-16.
bool isWide(std::string_view text) {
    const auto isZero = [&](std::size_t i) { return text[i] == '\0'; };
    return text.size() >= 4 && isZero(0) != isZero(1) && isZero(0) == isZero(2) &&
           isZero(1) == isZero(3);
}
}  // namespace

bool isThere(const CString& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

CString whyUnreadable(const CString& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return std::strerror(errno);
    if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
    if (access(path.c_str(), R_OK) != 0) return std::strerror(errno);
    return S_ISREG(status.st_mode) ? "" : kNotRegular;
}

CString whyMisread(const CString& path) {
    char start[4] = {};
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const ssize_t length = read(descriptor, start, sizeof start);
    close(descriptor);
    const std::string_view text(start, length < 0 ? 0 : static_cast<std::size_t>(length));
    if (hasPrefix(text, "\xFF\xFE") || hasPrefix(text, "\xFE\xFF") || isWide(text))
        return "is UTF-16";
    return hasPrefix(text, "\xEF\xBB\xBF") ? "begins with a byte-order mark" : "";
}

CString faultOf(const CString& path) {
    const CString reason = whyUnreadable(path);
    return reason.IsEmpty() ? whyMisread(path) : reason;
}

int complainUnreadable(const CString& path, const CString& reason) {
    return complain("cannot read " + path + ": " + reason);
}

CString takeLoadFault() {
    const CIniFile::LoadFaultDef fault = CIniFile::TakeLoadFault();
    if (fault.sPath.IsEmpty()) return "";
    return fault.sPath + ": " + (fault.nError == 0 ? kNotRegular : std::strerror(fault.nError));
}

bool requireWhole(const CString& fault) {
    if (!fault.IsEmpty()) complain("cannot read " + fault);
    return fault.IsEmpty();
}

CString describeRoot() {
    const CString variable = CustomPCIDeviceList::kCDRootVariable;
    const char* root = std::getenv(variable.c_str());
    if (!root) return variable + " is not set";
    return variable + " is " + (*root ? root : "empty");
}

CString requireConfiguration() {
    const CString path = CustomPCIDeviceList::getConfigurationPathName();
    const CString reason = whyUnreadable(path);
    if (reason.IsEmpty()) return path;
    complainUnreadable(path, reason + "; " + describeRoot());
    return "";
}
