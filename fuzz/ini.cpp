// Any bytes as an INI document: looked up, edited, written back and loaded again.
//
// The input is the document, a line "%%", and lines "letter|section|key|value". Each line looks an
// entry up and then sets it. Without a key it adds the value as a bare line, with "d" or "D" even
// if it is there. A capital letter writes the document back.

#include <cctype>
#include <iterator>

#include "fuzz.h"
#include "util/IniFile.h"
#include "util/MyFileIO.h"

namespace {
using fuzz::check;
using fuzz::same;

const std::string kPath = fuzz::scratch("document.ini"), kCopy = fuzz::scratch("copy.ini");

CString trimmed(CString text) { return text.Trim(); }

struct Edit {
    CString section, key, value;
    bool flush;

    bool make(CIniFile& ini) const {
        if (key.IsEmpty()) return ini.WriteString(section, value, false, flush);
        return ini.WriteString(section, key, value, false, flush);
    }
};

std::string linesOf(const CIniFile& ini) {
    std::string text;
    const CIniFile::IniLineDef *first = ini.GetFirstLine(), *last = first;
    for (const auto* line = first; line; last = line, line = line->pNext) {
        check(line == first || line->pPrev == last);
        text += line->sLine.c_str() + std::string("\n");
    }
    check(!first || first->pPrev == last);
    return text;
}

void aDocumentHoldsTheLinesOf(const std::string& path, const CIniFile& ini) {
    std::string text;
    CMyFileIO file(path.c_str());
    file.Open();
    for (CString line; file.ReadString(line);) text += line.Trim() + std::string("\n");
    check(text == linesOf(ini));
}

void lookupsAgree(CIniFile& ini, const CString& section, const CString& key) {
    const CString value = ini.ReadString(section, key, " absent ");
    CString line = "=";
    const bool found = ini.FindItem(section, key, line);
    const int equals = line.Find("=");
    same(value, found ? trimmed(line.Mid(equals + 1, 0)) : " absent ");
    check(!found || (key.EqualsNoCase(trimmed(line.Left(equals))) && line[0] != ';'));
    same(value, ini.ReadString(section.Upper(), key.Lower(), " absent "));
    check(ini.ReadInteger(section, key, -7) == (found ? value.ToInt() : -7));
    for (int n = 0, next; (next = ini.FindNumber(section, n)) >= 0 && next < 1 << 30; n = next + 1)
        check(next >= n && ini.FindNumber(section, next) == next);
}

void linesAroundASectionDoNotMatter(CIniFile& ini, const CString& section, const CString& key) {
    if (section.IsSubstring("\x01") || trimmed(key)[0] == '[') return;
    const std::string entry = key.c_str() + std::string(" = other\n");
    fuzz::putFile(kCopy, "\r\n; " + entry + linesOf(ini) + "\n[\x01]\n" + entry);
    CIniFile other(kCopy.c_str());
    same(ini.ReadString(section, key, " absent "), other.ReadString(section, key, " absent "));
}

std::size_t blanksAtEnd(const std::string& lines) {
    const std::size_t last = lines.find_last_not_of('\n');
    return lines.size() - (last == lines.npos ? 0 : last + 2);
}

void anEditChangesOnePlaceBeforeTheBlanks(const std::string& before, const std::string& after) {
    const auto a = fuzz::parts(before, "\n"), b = fuzz::parts(after, "\n");
    const auto from = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto to = std::mismatch(a.rbegin(), std::make_reverse_iterator(from.first), b.rbegin(),
                                  std::make_reverse_iterator(from.second));
    const auto gone = to.first.base() - from.first, added = to.second.base() - from.second;
    check(gone == 0 ? added <= 3 : gone == 1 && added == 1);
    check(blanksAtEnd(before) == blanksAtEnd(after));
}

// Whether a line can hold the text as a name that this character ends.
bool isName(const CString& text, const char* end) {
    return trimmed(text) == text && !text.IsSubstring(end) && text[0] != '[' && text[0] != ';';
}

void whatWasSetIsThere(CIniFile& ini, const Edit& edit) {
    if (!isName(edit.section, "]") || !isName(edit.key, "=") || edit.value[0] == '[') return;
    const std::string lines = linesOf(ini);
    if (!edit.key.IsEmpty()) same(ini.ReadString(edit.section, edit.key), trimmed(edit.value));
    check(edit.make(ini) != (edit.key.IsEmpty() && !edit.value.IsEmpty()));
    check(linesOf(ini) == lines);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const fuzz::Texts input = fuzz::parts({data, data + size}, "%%\n", 2);
    std::string onDisk = input[0], unsaved;
    fuzz::putFile(kPath, onDisk);
    {
        CIniFile ini(kPath.c_str());
        aDocumentHoldsTheLinesOf(kPath, ini);
        for (const std::string& line : fuzz::parts(input[1], "\n")) {
            const fuzz::Texts fields = fuzz::parts(line, "|", 4);
            const Edit edit{fields[1].c_str(), fields[2].c_str(), fields[3].c_str(),
                            std::isupper(line[0]) != 0};
            const std::string lines = linesOf(ini);
            lookupsAgree(ini, edit.section, edit.key);
            linesAroundASectionDoNotMatter(ini, edit.section, edit.key);
            const bool addsBlank = edit.key.IsEmpty() && trimmed(edit.value) != edit.value;
            if (addsBlank || line.find_first_of(std::string("\r\0", 2)) != line.npos) continue;
            const bool made = edit.make(ini);
            anEditChangesOnePlaceBeforeTheBlanks(lines, linesOf(ini));
            if (made) whatWasSetIsThere(ini, edit);
            if (made) (edit.flush ? onDisk : unsaved) = linesOf(ini);
            if (made && edit.flush) unsaved.clear();
            check(fuzz::getFile(kPath) == onDisk);
        }
        check(ini.WriteIniFile(kCopy.c_str()));
        aDocumentHoldsTheLinesOf(kCopy, ini);
    }
    check(fuzz::getFile(kPath) == (unsaved.empty() ? onDisk : unsaved));
    return 0;
}
