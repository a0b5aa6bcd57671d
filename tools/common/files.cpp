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
}

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
    char start[3] = {};
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const ssize_t length = read(descriptor, start, sizeof start);
    close(descriptor);
    const std::string_view text(start, length < 0 ? 0 : static_cast<std::size_t>(length));
    const std::string_view pair = text.substr(0, 2);
    // Without a mark, one byte of the first ASCII character is zero.
    if (pair == "\xFF\xFE" || pair == "\xFE\xFF" || pair.find('\0') != pair.npos)
        return "is UTF-16";
    return text == "\xEF\xBB\xBF" ? "begins with a byte-order mark" : "";
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

CString describeRoot() {
    const char* root = std::getenv("RWCD");
    return root ? CString("RWCD is ") + root : "RWCD is not set";
}

CString requireConfiguration() {
    const CString path = CustomPCIDeviceList::getCDPathName("syscfg.ini");
    const CString reason = whyUnreadable(path);
    if (reason.IsEmpty()) return path;
    complainUnreadable(path, reason + "; " + describeRoot());
    return "";
}
