#include "common/Copy.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <string_view>
#include <utility>

namespace {
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

// `start` are the first bytes of a file, up to four of them, with their zeros.
const char* findMark(std::string_view start) {
    if (hasPrefix(start, "\xFF\xFE") || hasPrefix(start, "\xFE\xFF") || isWide(start))
        return "is UTF-16";
    return hasPrefix(start, "\xEF\xBB\xBF") ? "begins with a byte-order mark" : "";
}

Copy refused(Copy::State state, const char* reason) {
    Copy copy;
    copy.state = state;
    copy.reason = reason;
    return copy;
}

Copy refusedKind(mode_t mode) {
    return refused(Copy::kNotRegular, S_ISDIR(mode) ? std::strerror(EISDIR) : "Not a regular file");
}

bool isMissing(int error) { return error == ENOENT || error == ENOTDIR; }

// Reads up to `size` bytes. If `mayWait`, waits for them, also if the descriptor is set up not to.
ssize_t readBlock(int descriptor, bool mayWait, char* block, std::size_t size) {
    for (;;) {
        const ssize_t length = read(descriptor, block, size);
        const bool isTriedAgain = length < 0 && (errno == EINTR || (errno == EAGAIN && mayWait));
        if (!isTriedAgain) return length;
        pollfd readable = {descriptor, POLLIN, 0};
        if (errno == EAGAIN) poll(&readable, 1, -1);
    }
}

// The carriage returns and NULs are left out block by block: a file may be a large hole.
Copy readAll(int descriptor, bool mayWait) {
    Copy copy;
    std::string start;  // the first bytes
    char block[1 << 16];
    while (const ssize_t length = readBlock(descriptor, mayWait, block, sizeof block)) {
        if (length < 0) return refused(Copy::kBroken, std::strerror(errno));
        const auto size = static_cast<std::size_t>(length);
        if (start.size() < 4) start.append(block, std::min(size, 4 - start.size()));
        copy.text.append(block, CMyFileIO::RemoveDropped(block, size));
    }
    copy.mark = findMark(start);
    copy.endsInLine = !copy.text.empty() && copy.text.back() != '\n';
    return copy;
}

Copy readRegular(int descriptor) {
    struct stat status;
    if (fstat(descriptor, &status) != 0) return refused(Copy::kBroken, std::strerror(errno));
    return S_ISREG(status.st_mode) ? readAll(descriptor, false) : refusedKind(status.st_mode);
}

Copy readDescriptor(int descriptor) {
    // Where the caller gave none, the command may have opened one of its own, not for reading.
    const int flags = fcntl(descriptor, F_GETFL);
    if (flags >= 0 && ((flags & O_PATH) != 0 || (flags & O_ACCMODE) == O_WRONLY))
        return refused(Copy::kNotOpened, std::strerror(EBADF));
    struct stat status;
    if (fstat(descriptor, &status) != 0) return refused(Copy::kNotOpened, std::strerror(errno));
    const mode_t mode = status.st_mode;
    const bool hasEnd = S_ISREG(mode) || S_ISFIFO(mode) || S_ISSOCK(mode) || isatty(descriptor);
    return hasEnd ? readAll(descriptor, true) : refusedKind(mode);
}

// The descriptor that the path names; -1 if it names none.
int descriptorOf(std::string_view path) {
    if (path == "-" || path == "/dev/stdin") return STDIN_FILENO;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!hasPrefix(path, folder)) continue;
        int descriptor = -1;
        const char* const end = path.data() + path.size();
        const auto number = std::from_chars(path.data() + folder.size(), end, descriptor);
        if (number.ec == std::errc() && number.ptr == end) return descriptor;
    }
    return -1;
}
}  // namespace

Copy copyFile(const CString& path, int folder) {
    struct stat status;
    // Opening a device may have effects, so its kind is asked for first.
    if (fstatat(folder, path.c_str(), &status, 0) == 0 && !S_ISREG(status.st_mode))
        return refusedKind(status.st_mode);
    const int descriptor =
        openat(folder, path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor >= 0) {
        Copy copy = readRegular(descriptor);
        close(descriptor);
        return copy;
    }
    const int error = errno;
    if (error == EWOULDBLOCK) return refused(Copy::kBroken, std::strerror(error));
    // A link that leads nowhere is there.
    const bool isAbsent = isMissing(error) &&
                          fstatat(folder, path.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
                          isMissing(errno);
    return refused(isAbsent ? Copy::kAbsent : Copy::kNotOpened, std::strerror(error));
}

Copy copyOperand(const CString& path) {
    const int descriptor = descriptorOf(path.c_str());
    if (descriptor < 0) return copyFile(path);
    static std::map<int, Copy> known;
    const auto [place, isNew] = known.try_emplace(descriptor);
    if (isNew) place->second = readDescriptor(descriptor);
    return place->second;
}

std::map<std::string, std::string> Copies::texts;
std::vector<CMyFileIO::MemoryFileDef> Copies::files;

void Copies::set(const CString& path, std::string text) {
    const auto place = texts.insert_or_assign(path.c_str(), std::move(text)).first;
    const CMyFileIO::MemoryFileDef file = {place->first.c_str(), place->second.data(),
                                           place->second.size()};
    const auto at = std::lower_bound(files.begin(), files.end(), file, [](auto& a, auto& b) {
        return std::strcmp(a.pPath, b.pPath) < 0;
    });
    if (at != files.end() && at->pPath == file.pPath)
        *at = file;
    else
        files.insert(at, file);
    CMyFileIO::SetMemoryFiles(files.data(), files.size());
}
