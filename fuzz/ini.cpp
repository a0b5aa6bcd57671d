// Any bytes as an INI document, a line "%%", and lines "letter|section|key|value". Each looks an
// entry up. Then "s" sets it, "i" sets it to a number, and "b" or "d" adds the key as a bare line,
// "d" even if it is there. "S", "B" and "D" write the document back.

#include <climits>

#include "fuzz.h"
#include "inspect/Document.h"
#include "util/IniFile.h"
#include "util/MyFileIO.h"

const std::string kPath = scratch("document"), kCopy = scratch("copy");
CString trimmed(CString text) { return text.Trim(); }

struct Edit {
    CString letter, section, key, value;

    bool isBare() const { return CString("bBdD").IsSubstring(letter) || key.IsEmpty(); }
    bool isFlushed() const { return letter != letter.Lower(); }
    bool make(CIniFile& ini) const {
        if (isBare()) return ini.WriteString(section, key, letter.Lower() == "d", isFlushed());
        if (letter == "i") return ini.WriteInteger(section, key, value.ToInt());
        return ini.WriteString(section, key, value, false, isFlushed());
    }
};

// Checks the links on the way.
std::string linesOf(const CIniFile& ini) {
    std::string text;
    for (const auto* line = ini.GetFirstLine(); line; line = line->pNext) {
        CHECK((line->pNext ? line->pNext : ini.GetFirstLine())->pPrev == line);
        text += line->sLine.c_str() + std::string("\n");
    }
    return text;
}

void aDocumentHoldsTheLinesOfItsFile(const CIniFile& ini) {
    std::string text;
    CMyFileIO file(kPath.c_str());
    file.Open();
    for (CString line; file.ReadString(line);) text += line.Trim() + std::string("\n");
    CHECK(text == linesOf(ini));
}

void lookupsAgree(CIniFile& ini, const CString& section, const CString& key) {
    const CString value = ini.ReadString(section, key, " absent ");
    CString line, name, divided = " absent ";
    const bool isFound = ini.FindItem(section, key, line);
    CHECK(!isFound || CIniFile::DivideLine(line, name, divided) == CIniFile::lkEntry);
    CHECK(!isFound || key.EqualsNoCase(name));
    CHECK(!isFound || ini.HasSection(section));
    CHECK(!ini.HasSection(section + " "));
    SAME(value, divided);
    SAME(value, ini.ReadString(section.Upper(), key.Lower(), " absent "));
    CHECK(ini.ReadInteger(section, key, -7) == (isFound ? value.ToInt() : -7));
    CHECK(!ini.FindItem(section, key + " ", line));
    CHECK(!ini.FindItem(section + " ", key, line));
    const auto isAny = [](std::string_view) { return true; };
    for (int n = 0, at; (at = ini.FindNumber(section, isAny, n)) >= 0 && at < INT_MAX; n = at + 1) {
        CHECK(at >= n);
        CHECK(ini.FindNumber(section, isAny, at) == at);
    }
}

// Lookups never enter a section without a name, or with that of an earlier one.
void theIndexFindsWhatLookupsFind(CIniFile& ini, const Document& document) {
    for (const Line& line : document.getLines()) {
        const Line* const header = line.section;
        if (!line.isEntry() || !header || header->isRepeated() || header->name.IsEmpty()) continue;
        SAME(ini.ReadString(header->name, line.name, " absent "), line.first->value);
        CHECK(document.findSection(header->name.Upper()) == header);
        CHECK(document.findEntry(header, line.name.Upper()) == line.first);
        CHECK(!document.findEntry(header, line.name + " "));
    }
}

// The texts differ only between `from` and `to`. The caller puts a line before them, since
// the last check needs one that is not blank.
void anEditChangesOnePlaceBeforeTheBlanks(const std::string& a, const std::string& b) {
    const auto from = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto to = std::mismatch(a.rbegin(), std::reverse_iterator(from.first), b.rbegin(),
                                  std::reverse_iterator(from.second));
    // No line is removed. At most three are added: a blank one, a header and an entry.
    CHECK(std::count(from.first, to.first.base(), '\n') == 0);
    CHECK(std::count(from.second, to.second.base(), '\n') <= 3);
    CHECK(a.size() - a.find_last_not_of('\n') == b.size() - b.find_last_not_of('\n'));
}

bool isName(const CString& text, const char* end) {
    return trimmed(text) == text && !text.IsSubstring(end) && text[0] != '[' && text[0] != ';';
}

// Making the edit again changes nothing. Only a bare line that is there is refused.
void whatWasSetIsThere(CIniFile& ini, const Edit& edit) {
    if (edit.letter.Lower() == "d" || !isName(edit.section, "]") || !isName(edit.key, "=")) return;
    const std::string lines = linesOf(ini);
    const CString value = edit.letter == "i" ? CString(edit.value.ToInt()) : trimmed(edit.value);
    if (!edit.isBare()) SAME(ini.ReadString(edit.section, edit.key), value);
    CHECK(edit.make(ini) == (!edit.isBare() || edit.key.IsEmpty()));
    CHECK(linesOf(ini) == lines);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const Texts input = parts({data, data + size}, "%%\n", 2);
    std::string onDisk = input[0], inMemory = onDisk;
    std::ofstream(kPath) << onDisk;
    {
        CIniFile ini(kPath.c_str());
        aDocumentHoldsTheLinesOfItsFile(ini);
        theIndexFindsWhatLookupsFind(ini, Document(kPath.c_str()));
        for (const std::string& line : parts(input[1], "\n")) {
            const Strings fields = strings(parts(line, "|", 4));
            const Edit edit{fields[0], fields[1], fields[2], fields[3]};
            lookupsAgree(ini, edit.section, edit.key);
            // A bare line is compared before it is trimmed: with blanks at its ends, it could be
            // added once more, or as an empty line.
            const bool isUntrimmed = edit.isBare() && trimmed(edit.key) != edit.key;
            if (!CString("sSibBdD").IsSubstring(edit.letter) || isUntrimmed) continue;
            const std::string before = linesOf(ini);
            if (edit.make(ini)) {
                whatWasSetIsThere(ini, edit);
                inMemory = linesOf(ini);
                if (edit.isFlushed()) onDisk = inMemory;
            }
            anEditChangesOnePlaceBeforeTheBlanks("top\n" + before, "top\n" + linesOf(ini));
            CHECK(getFile(kPath) == onDisk);
        }
        CHECK(ini.WriteIniFile(kCopy.c_str()));
        CHECK(getFile(kCopy) == linesOf(ini));
    }
    CHECK(getFile(kPath) == inMemory);
    return 0;
}
