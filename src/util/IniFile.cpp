#include "util/IniFile.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "util/ErrorHandler.h"
#include "util/MyFileIO.h"
#include "util/Pool.h"

namespace {
bool isHeader(const char* line) { return *line == '['; }

// Lookups skip comments. Edits do not.
bool isComment(const char* line) { return *line == ';'; }

// The size of the block that a file is read into. For a line that fills it, the size is doubled.
// The last doubling leads to just below INT_MAX, the greatest length of a string. From 16 * 1024,
// it would give INT_MAX + 1.
constexpr unsigned kFirstRoom = 16 * 1024 - 1;

// Only ASCII letters have a case.
bool isSameLetter(char a, char b) {
    constexpr int kCaseBit = 'a' ^ 'A';
    const int lower = a | kCaseBit;
    return a == b || ((a ^ b) == kCaseBit && lower >= 'a' && lower <= 'z');
}

inline const char* skipBlanks(const char* text) {
    while (CString::IsBlank(*text)) ++text;
    return text;
}

// If the text begins with the name, the rest after the name and its blanks; otherwise null. Inline
// and without a copy, since a lookup calls it for every line.
inline const char* skipName(const char* text, std::string_view name) {
    for (std::size_t i = 0; i != name.size(); ++i)
        if (!isSameLetter(text[i], name[i])) return nullptr;
    return skipBlanks(text + name.size());
}

// Whether a line can have this name: the name of a line has no `end` in it, and no blank as its
// last character. Without this test, the line "K  = 1" would match the key "K ", and "K== 1" the
// key "K=".
bool isName(std::string_view name, char end) {
    return name.find(end) == name.npos && (name.empty() || !CString::IsBlank(name.back()));
}

bool isHeaderOf(std::string_view section, const char* line) {
    if (!isHeader(line)) return false;
    const char* rest = skipName(skipBlanks(line + 1), section);
    return rest && (*rest == ']' || *rest == '\0') && isName(section, ']');
}

bool isEntryOf(std::string_view key, const char* line) {
    const char* rest = skipName(line, key);
    return rest && *rest == '=' && isName(key, '=');
}

// Moves `line` from the first line of the document to the first line of the section. Moves it to
// null if the header is the last line or there is no such section. Returns whether the section
// exists. The unnamed one always does.
bool enterSection(const CString& section, CIniFile::IniLineDef*& line) {
    if (section.IsEmpty()) return true;
    const std::string_view name = section.c_str();
    CIniFile::IniLineDef* header = line;
    while (header && !isHeaderOf(name, header->sLine.c_str())) header = header->pNext;
    line = header ? header->pNext : nullptr;
    return header != nullptr;
}

// The first line from `line` on that is wanted and in the same section. If there is none, the
// header that ends the section, or null at the end of the document.
template <class IsWanted>
CIniFile::IniLineDef* findLine(CIniFile::IniLineDef* line, IsWanted isWanted) {
    while (line && !isHeader(line->sLine.c_str()) && !isWanted(line->sLine.c_str()))
        line = line->pNext;
    return line;
}

// Whether the result of findLine is a line that was wanted.
bool isFound(const CIniFile::IniLineDef* line) { return line && !isHeader(line->sLine.c_str()); }

// The last line of the document that begins with `first`. The first line may lack its link to it.
const CIniFile::IniLineDef* lastLine(const CIniFile::IniLineDef* first) {
    if (first->pPrev) return first->pPrev;
    while (first->pNext) first = first->pNext;
    return first;
}

// For an entry "Name.7 = value", returns 7 and sets `name` to "Name". Returns -1 for any other
// line, for a number with leading zeros, and for one above INT_MAX.
int numberOf(const char* line, std::string_view& name) {
    const char* end = isComment(line) ? nullptr : std::strchr(line, '=');
    if (!end) return -1;
    while (end != line && CString::IsBlank(end[-1])) --end;
    const char* digits = end;
    while (digits != line && std::isdigit(static_cast<unsigned char>(digits[-1]))) --digits;
    const bool isPlain = digits != end && (*digits != '0' || end - digits == 1);
    if (!isPlain || digits == line || digits[-1] != '.') return -1;
    name = {line, static_cast<std::size_t>(digits - 1 - line)};
    const long long number = std::strtoll(digits, nullptr, 10);
    return number <= INT_MAX ? static_cast<int>(number) : -1;
}

// Null if memory for the record runs out.
CIniFile::IniLineDef* makeLine(std::string_view text) {
    auto* line = new (std::nothrow) CIniFile::IniLineDef;
    if (line) line->sLine.Assign(CString::Trimmed(text));
    return line;
}
}  // namespace

void* CIniFile::IniLineDef::operator new(std::size_t size) {
    return CString::Required(CPool::Allocate(size));
}

void* CIniFile::IniLineDef::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return CPool::Allocate(size);
}

void CIniFile::IniLineDef::operator delete(void* record, std::size_t size) noexcept {
    CPool::Free(record, size);
}

// ---------------------------------------------------------------- Life

CIniFile::CIniFile(CString path) : m_sFileName(path) { ReadIniFile(std::move(path)); }

CIniFile::~CIniFile() {
    WriteIniFile();
    DeleteLines();
}

// ---------------------------------------------------------------- Lookup

bool CIniFile::FindItem(CString section, CString key, CString& line) {
    if (!m_pFirstLine) return false;
    const std::string_view name = key.c_str();
    IniLineDef* p = m_pFirstLine;
    if (enterSection(section, p))
        p = findLine(p,
                     [&](const char* text) { return isEntryOf(name, text) && !isComment(text); });
    // Copies only the last line visited, not each of them.
    line = (p ? p : lastLine(m_pFirstLine))->sLine;
    return isFound(p);
}

CString CIniFile::ReadString(CString section, CString key, CString fallback) {
    m_sValue.Empty();
    if (FindItem(std::move(section), std::move(key), m_sValue)) {
        m_sValue.Assign(CString::Trimmed(std::strchr(m_sValue.c_str(), '=') + 1));
    } else {
        m_sValue = std::move(fallback);
    }
    return m_sValue;
}

int CIniFile::ReadInteger(CString section, CString key, int fallback) {
    return ReadString(std::move(section), std::move(key), fallback).ToInt();
}

bool CIniFile::HasSection(CString section) const {
    IniLineDef* p = m_pFirstLine;
    return enterSection(section, p);
}

int CIniFile::FindNumber(CString section, bool (*isCounted)(std::string_view name),
                         int from) const {
    int smallest = -1;
    IniLineDef* p = m_pFirstLine;
    if (!enterSection(section, p)) return smallest;
    for (std::string_view name; p && !isHeader(p->sLine.c_str()); p = p->pNext) {
        const int number = numberOf(p->sLine.c_str(), name);
        const bool isSmaller = number >= from && (smallest < 0 || number < smallest);
        if (isSmaller && isCounted(name)) smallest = number;
    }
    return smallest;
}

CIniFile::LineKindDef CIniFile::DivideLine(CString line, CString& name, CString& value) {
    const std::string_view text = line.c_str();
    name.Empty();
    value.Empty();
    if (text.empty() || isComment(line.c_str())) return lkBlank;
    if (isHeader(line.c_str())) {
        const std::string_view inside = text.substr(1);
        name.Assign(CString::Trimmed(inside.substr(0, inside.find(']'))));
        return lkHeader;
    }
    const std::size_t divider = text.find('=');
    if (divider == text.npos) return lkBare;
    name.Assign(CString::Trimmed(text.substr(0, divider)));
    value.Assign(CString::Trimmed(text.substr(divider + 1)));
    return lkEntry;
}

bool CIniFile::Exists() const { return CMyFileIO::Exists(m_sFileName); }

// ---------------------------------------------------------------- Editing

bool CIniFile::WriteString(CString section, CString key, CString value, bool bAllowDuplicate,
                           bool bFlush) {
    return WriteIt(std::move(section), std::move(key), std::move(value), bAllowDuplicate, bFlush);
}

bool CIniFile::WriteString(CString section, CString value, bool bAllowDuplicate, bool bFlush) {
    return WriteIt(std::move(section), "", std::move(value), bAllowDuplicate, bFlush);
}

bool CIniFile::WriteString(CString value, bool bAllowDuplicate, bool bFlush) {
    return WriteIt("", "", std::move(value), bAllowDuplicate, bFlush);
}

bool CIniFile::WriteInteger(CString section, CString key, int value, bool bAllowDuplicate) {
    return WriteString(std::move(section), std::move(key), value, bAllowDuplicate, false);
}

bool CIniFile::WriteInteger(CString section, CString key, int value) {
    return WriteInteger(std::move(section), std::move(key), value, false);
}

bool CIniFile::WriteIt(CString section, CString key, CString value, bool bAllowDuplicate,
                       bool bFlush) {
    const CString text = key.IsEmpty() ? value : key + " = " + value;
    IniLineDef* first = m_pFirstLine;
    bool isMade;
    if (!enterSection(section, first))
        isMade = addSection(section, text.c_str());
    else if (key.IsEmpty())
        isMade = addBareLine(first, text.c_str(), bAllowDuplicate);
    else
        isMade = setEntry(first, key.c_str(), text.c_str());
    if (!isMade) return false;
    m_bModified = true;
    if (bFlush) Flush();
    return true;
}

// Sets the entry of this key in the section that begins at `first`, or adds it.
bool CIniFile::setEntry(IniLineDef* first, std::string_view key, std::string_view text) {
    IniLineDef* line = findLine(first, [&](const char* entry) { return isEntryOf(key, entry); });
    if (!isFound(line)) return addToSection(line, text);
    line->sLine.Assign(CString::Trimmed(text));
    return true;
}

// Adds a line without a key to the section that begins at `first`. Returns false if the line must
// be new and the section has it. An empty text adds nothing, so it need not be new.
bool CIniFile::addBareLine(IniLineDef* first, std::string_view text, bool bAllowDuplicate) {
    const bool mustBeNew = !bAllowDuplicate && !text.empty();
    IniLineDef* line = findLine(first, [&](const char* bare) { return mustBeNew && text == bare; });
    return !isFound(line) && addToSection(line, text);
}

// Adds a line to the section that ends before the header `nextHeader`, or at the end of the
// document if that is null. The line goes before the section's trailing blank lines. If there are
// none before a header, adds one. An empty text adds nothing.
bool CIniFile::addToSection(IniLineDef* nextHeader, std::string_view text) {
    if (text.empty()) return true;
    if (!nextHeader) return insert(blanksAtEnd(), text);
    IniLineDef* at = RewindBlanks(nextHeader);
    return insert(at, text) && (at != nextHeader || insert(nextHeader, ""));
}

// Adds a section after the last line that is not blank, with a blank line between. A document of
// no lines, or only of blank ones, gets no blank line above its first section.
bool CIniFile::addSection(const CString& section, std::string_view text) {
    IniLineDef* at = blanksAtEnd();
    if (at != m_pFirstLine && !insert(at, "")) return false;
    return InsertLine(at, "[" + section + "]") && (text.empty() || insert(at, text));
}

// The first of the blank lines at the end of the document. Null if there are none.
CIniFile::IniLineDef* CIniFile::blanksAtEnd() {
    IniLineDef* last = m_pFirstLine ? m_pFirstLine->pPrev : nullptr;
    return last && last->sLine.IsEmpty() ? RewindBlanks(last) : nullptr;
}

// ---------------------------------------------------------------- Writing back

bool CIniFile::WriteIniFile() {
    if (m_bModified) m_bModified = !WriteIniFile(m_sFileName);
    return m_bModified;
}

bool CIniFile::WriteIniFile(CString path) {
    CMyFileIO file;
    if (!file.OpenFile(std::move(path), "w+")) return false;
    bool isWritten = true;
    for (const IniLineDef* p = m_pFirstLine; p && isWritten; p = p->pNext)
        isWritten = file.WriteStringNL(p->sLine);
    return isWritten;
}

// ---------------------------------------------------------------- Loading

bool CIniFile::ReadIniFile(CString path) {
    if (CMyFileIO::IsEndless(path)) return true;
    CMyFileIO file;
    return file.OpenFile(std::move(path)) && readLines(file);
}

// Reads the file block by block and takes the lines from the block. An unfinished line at the end
// is moved to the front, and the next block is read after it. If a line fills the whole room, the
// room is doubled, so that a line of any length is read in linear time.
bool CIniFile::readLines(CMyFileIO& file) {
    CString block;
    unsigned room = kFirstRoom, unfinished = 0;
    char* text = block.GetBuffer(room);
    while (const unsigned length = file.ReadBlock(text + unfinished, room - unfinished)) {
        std::string_view rest(text, unfinished + length);
        for (std::size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1))
            if (!append(rest.substr(0, end))) return false;
        unfinished = static_cast<unsigned>(rest.size());
        std::memmove(text, rest.data(), unfinished);
        if (unfinished == room) {
            room *= 2;
            text = block.GetBuffer(room);
        }
    }
    return unfinished == 0 || append({text, unfinished});
}

// ---------------------------------------------------------------- The list of lines

bool CIniFile::AddLine(CString text) { return append(text.c_str()); }

bool CIniFile::append(std::string_view text) {
    if (m_pFirstLine && !m_pFirstLine->pPrev) return false;  // does not extend a broken list
    IniLineDef* line = makeLine(text);
    if (!line) {
        CErrorHandler().ErrorHandler(CErrorHandler::ecWarn, CErrorHandler::ecMemory,
                                     "IniFile.AddLine()");
        return false;
    }
    if (m_pFirstLine) {
        line->pPrev = m_pFirstLine->pPrev;
        line->pPrev->pNext = line;
    } else {
        m_pFirstLine = line;
    }
    m_pFirstLine->pPrev = line;
    return true;
}

bool CIniFile::InsertLine(IniLineDef* before, CString text) { return insert(before, text.c_str()); }

bool CIniFile::insert(IniLineDef* before, std::string_view text) {
    if (!before || !m_pFirstLine) return append(text);
    if (before != m_pFirstLine && !before->pPrev) return false;
    IniLineDef* line = makeLine(text);
    if (!line) return false;
    line->pPrev = before->pPrev;  // before the first line, this is the last line
    line->pNext = before;
    if (before == m_pFirstLine)
        m_pFirstLine = line;
    else
        before->pPrev->pNext = line;
    before->pPrev = line;
    return true;
}

CIniFile::IniLineDef* CIniFile::MakeNewLine(CString text) { return makeLine(text.c_str()); }

CIniFile::IniLineDef* CIniFile::RewindBlanks(IniLineDef* line) {
    if (!line || !m_pFirstLine) return line;
    while (line != m_pFirstLine && line->pPrev && line->pPrev->sLine.IsEmpty()) line = line->pPrev;
    return line;
}

void CIniFile::DeleteLines() {
    while (m_pFirstLine) delete std::exchange(m_pFirstLine, m_pFirstLine->pNext);
}
