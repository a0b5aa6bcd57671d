#include "util/IniFile.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

#include "util/ErrorHandler.h"
#include "util/MyFileIO.h"

namespace {
bool isBlank(char c) { return c != '\0' && std::strchr(kBlanks, c); }

bool isHeader(const char* line) { return *line == '['; }

// What every lookup passes over; an edit passes over empty lines only.
bool isEmptyOrComment(const char* line) { return *line == '\0' || *line == ';'; }

// A requested section or key, made ready once for the many lines that a lookup visits: nearly all
// of them are told apart by their first character, and none is copied.
class Name {
public:
    // `end` is what ends such a name in a line: "]" or "=".
    Name(const CString& name, char end)
        : m_text(name.c_str()),
          m_length(name.GetLength()),
          m_first(m_length == 0 ? end : *m_text),
          m_canMatch(!std::strchr(m_text, end) && !isBlank(name.GetLastChar())),
          m_end(end) {}

    bool isSectionOf(const char* line) const {
        if (!isHeader(line++)) return false;
        while (isBlank(*line)) ++line;
        const char* rest = match(line);
        return rest && (*rest == m_end || *rest == '\0');
    }
    bool isKeyOf(const char* line) const {
        const char* rest = match(line);
        return rest && *rest == m_end;
    }

private:
    // What follows the name and the blanks after it, when the text begins with the name.
    const char* match(const char* text) const {
        if ((*text ^ m_first) & ~kCaseBit) return nullptr;
        if (!m_canMatch || strncasecmp(text, m_text, m_length) != 0) return nullptr;
        text += m_length;
        while (isBlank(*text)) ++text;
        return text;
    }

    static constexpr int kCaseBit = 'a' ^ 'A';

    const char* m_text;
    std::size_t m_length;
    char m_first;
    bool m_canMatch;  // a name in a line never holds its end, nor ends in a blank
    char m_end;
};

// The number after the last "." of an entry's key, which ends in it; -1 when there is none.
int numberOf(const char* line) {
    const char* end = std::strchr(line, '=');
    while (end && end != line && isBlank(end[-1])) --end;
    const char* digits = end;
    while (digits && digits != line && std::isdigit(static_cast<unsigned char>(digits[-1])))
        --digits;
    if (digits == end || digits == line || digits[-1] != '.') return -1;
    const long number = std::strtol(digits, nullptr, 10);
    return number <= INT_MAX ? static_cast<int>(number) : -1;
}
}  // namespace

// ---------------------------------------------------------------- Life

CIniFile::CIniFile(CString path) : m_sFileName(path) { ReadIniFile(std::move(path)); }

CIniFile::~CIniFile() {
    WriteIniFile();
    DeleteLines();
}

// ---------------------------------------------------------------- Lookup

bool CIniFile::FindItem(CString section, CString key, CString& line) {
    const Name wantedSection(section, ']'), wantedKey(key, '=');
    bool inSection = section.IsEmpty(), found = false;
    const IniLineDef* last = nullptr;
    for (const IniLineDef* p = m_pFirstLine; p && !found; p = p->pNext) {
        last = p;
        const char* text = p->sLine.c_str();
        if (isEmptyOrComment(text)) continue;
        if (!inSection)
            inSection = wantedSection.isSectionOf(text);
        else if (isHeader(text))
            break;
        else
            found = wantedKey.isKeyOf(text);
    }
    if (last) line = last->sLine;  // only the last: the visited lines before it are not copied
    return found;
}

CString CIniFile::ReadString(CString section, CString key, CString fallback) {
    m_sValue.Empty();
    if (FindItem(std::move(section), std::move(key), m_sValue)) {
        m_sValue = m_sValue.Mid(m_sValue.Find("=") + 1, 0);
        m_sValue.Trim(kBlanks);
    } else {
        m_sValue = std::move(fallback);
    }
    return m_sValue;
}

int CIniFile::ReadInteger(CString section, CString key, int fallback) {
    return ReadString(std::move(section), std::move(key), fallback).ToInt();
}

int CIniFile::FindNumber(CString section, int from) const {
    const Name wanted(section, ']');
    bool inSection = section.IsEmpty();
    int smallest = -1;
    for (const IniLineDef* p = m_pFirstLine; p; p = p->pNext) {
        const char* text = p->sLine.c_str();
        if (isEmptyOrComment(text)) continue;
        if (!inSection) {
            inSection = wanted.isSectionOf(text);
        } else if (isHeader(text)) {
            break;
        } else {
            const int number = numberOf(text);
            if (number >= from && (smallest < 0 || number < smallest)) smallest = number;
        }
    }
    return smallest;
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
    const Name wantedSection(section, ']'), wantedKey(key, '=');
    const bool isBare = key.IsEmpty();
    const CString text = isBare ? value : key + " = " + value;

    bool inSection = section.IsEmpty(), replaced = false;
    IniLineDef* line = m_pFirstLine;
    for (; line && !replaced; line = line->pNext) {
        const char* visited = line->sLine.c_str();
        if (*visited == '\0') continue;
        if (!inSection) {
            inSection = wantedSection.isSectionOf(visited);
        } else if (isHeader(visited)) {
            break;
        } else if (isBare) {
            if (!bAllowDuplicate && value == visited) return false;
        } else if (wantedKey.isKeyOf(visited)) {
            line->sLine = text;
            line->sLine.Trim(kBlanks);
            replaced = true;
        }
    }
    if (!replaced && !(inSection ? addEntry(line, text) : addSection(section, text))) return false;
    m_bModified = true;
    if (bFlush) Flush();
    return true;
}

// Adds an entry to the section that ends at this header, or with the document: after its last line
// and before the blank lines behind that, of which there shall be one before a header.
bool CIniFile::addEntry(IniLineDef* nextHeader, const CString& text) {
    if (text.IsEmpty()) return true;
    if (!nextHeader) return InsertLine(blanksAtEnd(), text);
    IniLineDef* at = RewindBlanks(nextHeader);
    return InsertLine(at, text) && (at != nextHeader || InsertLine(nextHeader, ""));
}

// Adds a section after the last line that is not blank, with one blank line between.
bool CIniFile::addSection(const CString& section, const CString& text) {
    IniLineDef* at = blanksAtEnd();
    if (at != m_pFirstLine && !InsertLine(at, "")) return false;
    return InsertLine(at, "[" + section + "]") && (text.IsEmpty() || InsertLine(at, text));
}

// The first of the blank lines that end the document; null when none do.
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
    bool written = true;
    for (const IniLineDef* p = m_pFirstLine; p && written; p = p->pNext)
        written = file.WriteStringNL(p->sLine);
    return written;
}

// ---------------------------------------------------------------- The list of lines

bool CIniFile::ReadIniFile(CString path) {
    CMyFileIO file;
    if (!file.OpenFile(std::move(path))) return false;
    CString line;
    while (file.ReadString(line))
        if (!AddLine(std::move(line))) return false;
    return true;
}

bool CIniFile::AddLine(CString text) {
    if (m_pFirstLine && !m_pFirstLine->pPrev) return false;  // a broken list is not extended
    IniLineDef* line = MakeNewLine(std::move(text));
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

bool CIniFile::InsertLine(IniLineDef* before, CString text) {
    if (!before || !m_pFirstLine) return AddLine(std::move(text));
    if (!before->pPrev) return false;
    IniLineDef* line = MakeNewLine(std::move(text));
    if (!line) return false;
    line->pPrev = before->pPrev;  // of the first line: the last one, which stays the last
    line->pNext = before;
    if (before == m_pFirstLine)
        m_pFirstLine = line;
    else
        before->pPrev->pNext = line;
    before->pPrev = line;
    return true;
}

CIniFile::IniLineDef* CIniFile::MakeNewLine(CString text) {
    IniLineDef* line = new (std::nothrow) IniLineDef;
    if (line) {
        line->sLine = std::move(text);
        line->sLine.Trim(kBlanks);
    }
    return line;
}

CIniFile::IniLineDef* CIniFile::RewindBlanks(IniLineDef* line) {
    if (!line || !m_pFirstLine) return line;
    while (line != m_pFirstLine && line->pPrev && line->pPrev->sLine.IsEmpty()) line = line->pPrev;
    return line;
}

void CIniFile::DeleteLines() {
    while (m_pFirstLine) delete std::exchange(m_pFirstLine, m_pFirstLine->pNext);
}
