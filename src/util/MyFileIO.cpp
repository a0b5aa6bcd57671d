#include "util/MyFileIO.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {
// The files in memory, sorted by path. Null if a program reads those of the system.
const CMyFileIO::MemoryFileDef* memoryFiles = nullptr;
std::size_t memoryFileCount = 0;

// The file in memory of this path. Null, with the errno of a missing file, if there is none.
const CMyFileIO::MemoryFileDef* findInMemory(const char* path) {
    const auto comesBefore = [](const CMyFileIO::MemoryFileDef& file, const char* wanted) {
        return std::strcmp(file.pPath, wanted) < 0;
    };
    const auto* const end = memoryFiles + memoryFileCount;
    const auto* const file = std::lower_bound(memoryFiles, end, path, comesBefore);
    if (file != end && std::strcmp(file->pPath, path) == 0) return file;
    errno = ENOENT;
    return nullptr;
}

// The stream only reads, but fmemopen takes no pointer to constant bytes.
std::FILE* openMemory(const char* path, const char* mode) {
    const CMyFileIO::MemoryFileDef* const file = findInMemory(path);
    return file ? fmemopen(const_cast<char*>(file->pText), file->nLength, mode) : nullptr;
}

// If memory runs out in fopen, the file must not count as missing.
std::FILE* openStream(const CString& path, const CString& mode) {
    const bool isWritten = mode[0] != 'r' || mode.IsSubstring("+");
    std::FILE* file = memoryFiles && !isWritten ? openMemory(path.c_str(), mode.c_str())
                                                : std::fopen(path.c_str(), mode.c_str());
    if (!file && errno == ENOMEM) CString::OutOfMemory();
    // Line by line: if the system refuses a line, the write itself must fail. With a larger buffer,
    // only closing the file would fail, and nobody looks at that result.
    if (file && isWritten && !mode.IsSubstring("b")) std::setvbuf(file, nullptr, _IOLBF, 0);
    return file;
}

bool isSameFile(const CString& a, const CString& b) {
    struct stat first, second;
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

// Texts are read without carriage returns and NULs.
bool isDropped(int c) { return c == '\r' || c == '\0'; }

// Collects a text character by character, in linear time: a string would count its length for each.
class Gatherer {
public:
    void add(char c) {
        if (m_length == m_room) grow();
        m_text[m_length++] = c;
    }
    const char* text() {
        m_text[m_length] = '\0';
        return m_text;
    }

private:
    void grow() {
        m_room *= 2;
        m_text = m_string.GetBuffer(m_room);
    }

    // A full room is doubled. The last doubling leads to just below INT_MAX, the greatest length of
    // a string. From 64, it would give INT_MAX + 1.
    unsigned m_length = 0, m_room = 63;
    CString m_string;
    char* m_text = m_string.GetBuffer(m_room);
};

// Adds the next line with its line feed. Returns false if the file ends before one.
bool gatherLine(std::FILE* file, Gatherer& line) {
    for (int c; (c = getc_unlocked(file)) != EOF;) {
        if (!isDropped(c)) line.add(static_cast<char>(c));
        if (c == '\n') return true;
    }
    return false;
}

// In the version resource of an executable, the key "FileVersion" and its value are UTF-16,
// little-endian. Three zeros end each of them: the upper byte of the last letter and a final NUL.

// Reads up to the last letter of the key, which is not compared. A byte that does not match is not
// tried as the first one of the key. False at the end of the file.
bool skipToVersion(std::FILE* file) {
    static constexpr char kPattern[] = "F\0i\0l\0e\0V\0e\0r\0s\0i\0o";
    constexpr unsigned kLength = sizeof kPattern;  // with the 0 that follows the "o"
    unsigned matched = 0;
    for (int c; (c = getc_unlocked(file)) != EOF;) {
        matched = c == kPattern[matched] ? matched + 1 : 0;
        if (matched == kLength) return true;
    }
    return false;
}

// Reads up to the end of a key or a value, and gives each byte that is not 0 to `take`. False at
// the end of the file.
template <class Take>
bool readToZeros(std::FILE* file, Take take) {
    constexpr unsigned kEndLength = 3;
    unsigned zeros = 0;
    for (int c; (c = getc_unlocked(file)) != EOF;) {
        if (c != 0) take(static_cast<char>(c));
        zeros = c == 0 ? zeros + 1 : 0;
        if (zeros == kEndLength) return true;
    }
    return false;
}
}  // namespace

// ---------------------------------------------------------------- Opening and closing

CMyFileIO::CMyFileIO(CString name) : m_sFileName(std::move(name)) {}

bool CMyFileIO::Open(CString mode) {
    if (m_sFileName.IsEmpty()) return false;
    if (mode.IsEmpty()) mode = "r";
    CloseFile();
    m_bTemporary = false;  // a temporary file that could not be closed has left it set
    m_pFile = openStream(m_sFileName, mode);
    m_bOpen = m_pFile != nullptr;
    m_bEOF = false;
    return m_bOpen;
}

bool CMyFileIO::OpenFile(CString name, CString mode) {
    // A temporary file is deleted by its name, which stays until the file is closed.
    if (m_bOpen && m_bTemporary) {
        if (name.IsEmpty()) return false;
        CloseFile();
    }
    m_sFileName = std::move(name);
    return Open(mode);
}

bool CMyFileIO::OpenTempFile(CString dir) {
    CloseFile();
    m_sFileName = std::move(dir);
    m_sFileName.AddPath("XXXXXX");
    const int descriptor = mkstemp(m_sFileName.GetBuffer());
    if (descriptor < 0) return false;
    close(descriptor);
    m_bTemporary = Open("w+");
    if (!m_bTemporary) DeleteFile();
    return m_bTemporary;
}

bool CMyFileIO::CloseFile() {
    if (!m_bOpen) return false;
    m_bOpen = m_bEOF = false;
    if (std::fclose(m_pFile) != 0) return false;
    if (m_bTemporary) DeleteFile();
    m_bTemporary = false;
    return true;
}

// ---------------------------------------------------------------- Reading and writing

bool CMyFileIO::ReadString(CString& line) {
    Gatherer text;
    if (m_bOpen && !gatherLine(m_pFile, text)) m_bEOF = true;
    line = text.text();
    return !line.IsEmpty();
}

unsigned CMyFileIO::ReadBlock(char* block, unsigned size) {
    if (!m_bOpen || size == 0) return 0;
    std::size_t kept = 0;
    // The result 0 means the end, so after a block in which nothing is kept, the next one is read.
    while (kept == 0 && !m_bEOF) {
        const std::size_t length = std::fread(block, 1, size, m_pFile);
        m_bEOF = length < size;  // the end of the file, or an error
        kept = RemoveDropped(block, length);
    }
    return static_cast<unsigned>(kept);
}

bool CMyFileIO::Rewind() {
    if (!m_bOpen) return false;
    std::rewind(m_pFile);
    m_bEOF = false;
    return true;
}

bool CMyFileIO::WriteString(CString text) {
    return m_bOpen && std::fputs(text.c_str(), m_pFile) >= 0;
}

bool CMyFileIO::WriteStringNL(CString text) { return WriteString(text) && WriteStringNL(); }

// ---------------------------------------------------------------- Files by name

bool CMyFileIO::Exists(CString name) {
    if (memoryFiles) return findInMemory(name.c_str()) != nullptr;
    // Not by fopen, which would wait for the writer of a pipe, or for the end of a lease.
    const int descriptor = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return errno == EWOULDBLOCK;
    close(descriptor);
    return true;
}

bool CMyFileIO::IsEndless(const CString& name) {
    struct stat status;
    return !memoryFiles && stat(name.c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

bool CMyFileIO::DeleteFile() {
    CloseFile();
    return DeleteFile(m_sFileName);
}

bool CMyFileIO::DeleteFile(CString name) { return unlink(name.c_str()) == 0; }

bool CMyFileIO::CopyFile(CString source, CString target) {
    CMyFileIO in(source), out(target);
    if (!in.Open("rb")) return false;
    if (isSameFile(source, target)) return out.Open("rb+");  // "wb+" would empty it
    if (!out.Open("wb+")) return false;
    for (int c; (c = getc_unlocked(in.m_pFile)) != EOF;) putc_unlocked(c, out.m_pFile);
    return true;
}

bool CMyFileIO::SetReadOnly(CString path, bool bReadOnly) {
    return chmod(path.c_str(), bReadOnly ? S_IRUSR : S_IWUSR) == 0;
}

bool CMyFileIO::GetSubdirectories(CString dir, CString& list) {
    list.Empty();
    return !dir.IsEmpty();
}

bool CMyFileIO::GetFiles(CString dir, CString& list) { return GetSubdirectories(dir, list); }

// ---------------------------------------------------------------- Files in memory

void CMyFileIO::SetMemoryFiles(const MemoryFileDef* pFiles, std::size_t nCount) {
    memoryFiles = pFiles;
    memoryFileCount = nCount;
}

std::size_t CMyFileIO::RemoveDropped(char* text, std::size_t length) {
    // Most files have none, so it looks first.
    if (!std::memchr(text, '\r', length) && !std::memchr(text, '\0', length)) return length;
    return static_cast<std::size_t>(std::remove_if(text, text + length, isDropped) - text);
}

// ---------------------------------------------------------------- Versions and comments

bool CMyFileIO::GetFileVersion(CString path, CString& version) {
    CMyFileIO file(path);
    if (!file.Open("rb")) return false;
    Gatherer value;
    const auto skip = [](char) {};
    const auto gather = [&value](char c) { value.add(c); };
    const bool isComplete = skipToVersion(file.m_pFile) && readToZeros(file.m_pFile, skip) &&
                            readToZeros(file.m_pFile, gather);
    version += value.text();
    return isComplete;
}

int CMyFileIO::CompareFileVersion(CString first, CString second) {
    for (CString* version : {&first, &second}) {
        version->Trim();
        *version = version->Left(version->Find(" "));  // all of it if there is no blank (-1)
    }
    for (unsigned field = 0; field < 4; ++field) {
        const int a = first.GetToken(field, ".").ToInt(), b = second.GetToken(field, ".").ToInt();
        if (a != b) return a > b ? 1 : -1;
    }
    return 0;
}

bool CMyFileIO::IsComment(CString line) {
    line.Trim();
    return line[0] == ';' || line[0] == '#' || line.StartsWith("//");
}
