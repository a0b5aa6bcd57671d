// Any bytes as an INI document, looked up, edited, written back and loaded again, against a small
// model of the syntax.
//
// The input is the document, a line "%%", and a script of one operation per line, its fields
// divided by "|"; a "^" in a field stands for a line feed. A capital letter also writes back.
//     r|section|key          look an entry up, in each way there is
//     n|section|number       look for the next numbered entry
//     s|section|key|value    set an entry
//     i|section|key|number   set it to a number
//     b|section|line         add a bare line
//     d|section|line         the same, even when it is there already

#include <cctype>
#include <optional>

#include "fuzz.h"
#include "model.h"
#include "util/IniFile.h"

namespace {

using model::npos;

std::string keyOf(const std::string& line) { return model::trim(line.substr(0, line.find('='))); }

bool sameName(const std::string& a, const std::string& b) {
    return model::lower(a) == model::lower(b);
}

bool isHeader(const std::string& line) { return !line.empty() && line[0] == '['; }

bool isEntry(const std::string& line) {
    return line.find('=') != npos && line[0] != ';' && line[0] != '[';
}

bool isHeaderOf(const std::string& line, const std::string& section) {
    return isHeader(line) && sameName(model::trim(line.substr(1, line.find(']') - 1)), section);
}

// The number behind the last "." of a key, written as a number is: no sign, no leading zero.
std::optional<int> numberOf(const std::string& key) {
    const std::size_t dot = key.rfind('.');
    if (dot == npos) return {};
    const int number = model::toInt(key.substr(dot + 1));
    if (number < 0 || std::to_string(number) != key.substr(dot + 1)) return {};
    return number;
}

// The document as the trimmed lines that it consists of.
struct Model {
    std::vector<std::string> lines;

    explicit Model(const std::string& bytes) {
        std::string line;
        for (const char c : bytes) {
            if (c != '\r' && c != '\0') line += c;
            if (c != '\n') continue;
            lines.push_back(model::trim(line));
            line.clear();
        }
        if (!line.empty()) lines.push_back(model::trim(line));
    }

    std::string text() const {
        std::string all;
        for (const std::string& line : lines) all += line + "\n";
        return all;
    }

    // The first line of the section, behind its header; npos when there is no such section.
    std::size_t beginOf(const std::string& section) const {
        if (section.empty()) return 0;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (isHeaderOf(lines[i], section)) return i + 1;
        return npos;
    }

    // The next header, or the end of the document.
    std::size_t endFrom(std::size_t i) const {
        while (i < lines.size() && !isHeader(lines[i])) ++i;
        return i;
    }

    // The line of the entry, else npos; `visited` is the line where the search ended.
    std::size_t find(const std::string& section, const std::string& key,
                     std::string& visited) const {
        const std::size_t begin = beginOf(section);
        if (!lines.empty()) visited = lines.back();
        if (begin == npos) return npos;
        const std::size_t end = endFrom(begin);
        if (end < lines.size()) visited = lines[end];
        for (std::size_t i = begin; i < end; ++i)
            if (isEntry(lines[i]) && sameName(keyOf(lines[i]), key)) {
                visited = lines[i];
                return i;
            }
        return npos;
    }

    int findNumber(const std::string& section, int from) const {
        std::optional<int> smallest;
        const std::size_t begin = beginOf(section);
        if (begin == npos) return -1;
        for (std::size_t i = begin; i < endFrom(begin); ++i) {
            if (!isEntry(lines[i])) continue;
            const std::optional<int> number = numberOf(keyOf(lines[i]));
            if (number && *number >= from && (!smallest || *number < *smallest)) smallest = number;
        }
        return smallest.value_or(-1);
    }

    void insert(std::size_t at, const std::string& line) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), model::trim(line));
    }

    std::size_t rewindBlanks(std::size_t i) const {
        while (i > 0 && lines[i - 1].empty()) --i;
        return i;
    }

    // Behind the last line that is not blank.
    std::size_t endOfText() const { return rewindBlanks(lines.size()); }

    bool write(const std::string& section, const std::string& key, const std::string& value,
               bool allowDuplicate) {
        const std::string text = key.empty() ? value : key + " = " + value;
        const std::size_t begin = beginOf(section);
        if (begin == npos) {
            addSection(section, text);
            return true;
        }
        const std::size_t end = endFrom(begin);
        for (std::size_t i = begin; i < end; ++i) {
            if (lines[i].empty()) continue;
            if (key.empty() && !allowDuplicate && lines[i] == value) return false;
            if (key.empty() || lines[i].find('=') == npos || !sameName(keyOf(lines[i]), key))
                continue;
            lines[i] = model::trim(text);
            return true;
        }
        if (!text.empty()) addToSection(end, text);
        return true;
    }

    void addToSection(std::size_t end, const std::string& text) {
        if (end == lines.size()) return insert(endOfText(), text);
        const std::size_t at = rewindBlanks(end);
        insert(at, text);
        if (at == end) insert(end + 1, "");
    }

    void addSection(const std::string& section, const std::string& text) {
        std::size_t at = endOfText();
        if (at > 0) insert(at++, "");
        insert(at++, "[" + section + "]");
        if (!text.empty()) insert(at, text);
    }
};

struct Operation {
    char code;
    bool writeBack;
    std::vector<std::string> fields;  // three, the missing ones empty

    explicit Operation(std::string line) {
        std::replace(line.begin(), line.end(), '^', '\n');
        fields = fuzz::split(line, "|");
        const auto letter = static_cast<unsigned char>(fields[0][0]);
        code = static_cast<char>(std::tolower(letter));
        writeBack = std::isupper(letter) != 0;
        fields.erase(fields.begin());
        fields.resize(3);
    }
    const char* field(std::size_t i) const { return fields[i].c_str(); }
};

void lookUp(CIniFile& ini, const Model& want, const Operation& op) {
    std::string wantedLine = "untouched";
    const bool found = want.find(op.fields[0], op.fields[1], wantedLine) != npos;
    CString line("untouched");
    fuzz::check(ini.FindItem(op.field(0), op.field(1), line) == found, "FindItem's answer");
    fuzz::checkSame(wantedLine, line.c_str(), "FindItem's line");

    const std::string value = model::trim(wantedLine.substr(wantedLine.find('=') + 1));
    fuzz::checkSame(found ? value : " absent ",
                    ini.ReadString(op.field(0), op.field(1), " absent ").c_str(), "ReadString");
    fuzz::checkSame(found ? value : "", ini.ReadString(op.field(0), op.field(1)).c_str(),
                    "ReadString without a fallback");
    fuzz::check(ini.ReadInteger(op.field(0), op.field(1), -7) == (found ? model::toInt(value) : -7),
                "ReadInteger");
}

void lookForNumber(CIniFile& ini, const Model& want, const Operation& op) {
    const int from = std::max(0, model::toInt(op.fields[1]));
    fuzz::check(ini.FindNumber(op.field(0), from) == want.findNumber(op.fields[0], from),
                "FindNumber");
}

// Whether the operation is an edit that was made.
bool edit(CIniFile& ini, Model& want, const Operation& op) {
    const bool allowDuplicate = op.code == 'd';
    const int number = model::toInt(op.fields[2]);
    bool wanted = false;
    bool made = false;
    switch (op.code) {
        case 's':
            wanted = want.write(op.fields[0], op.fields[1], op.fields[2], false);
            made = ini.WriteString(op.field(0), op.field(1), op.field(2), false, op.writeBack);
            break;
        case 'i':
            wanted = want.write(op.fields[0], op.fields[1], std::to_string(number), false);
            made = ini.WriteInteger(op.field(0), op.field(1), number);
            if (made && op.writeBack) fuzz::check(!ini.Flush(), "the edit is saved");
            break;
        case 'b':
        case 'd':
            wanted = want.write(op.fields[0], "", op.fields[1], allowDuplicate);
            made = op.fields[0].empty()
                       ? ini.WriteString(op.field(1), allowDuplicate, op.writeBack)
                       : ini.WriteString(op.field(0), op.field(1), allowDuplicate, op.writeBack);
            break;
        default:
            break;
    }
    fuzz::check(wanted == made, "whether the edit was made");
    return made;
}

void checkLines(CIniFile& ini, const Model& want, const std::string& copy) {
    fuzz::check(ini.WriteIniFile(copy.c_str()), "a copy can be written");
    fuzz::checkSame(want.text(), fuzz::getFile(copy), "the lines");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Scratch scratch;
    const std::string path = scratch.path("document.ini");
    const std::string copy = scratch.path("copy.ini");
    const std::vector<std::string> input = fuzz::parts(data, size, 2);
    std::vector<Operation> script;
    for (const std::string& line : fuzz::split(fuzz::withoutNULs(input[1]), "\n"))
        script.emplace_back(line);

    std::string onDisk = input[0];
    fuzz::putFile(path, onDisk);
    {
        CIniFile ini(path.c_str());
        Model want(onDisk);
        checkLines(ini, want, copy);
        bool unsaved = false;
        for (const Operation& op : script) {
            lookUp(ini, want, op);
            lookForNumber(ini, want, op);
            const bool made = edit(ini, want, op);
            unsaved |= made;
            if (!made || !op.writeBack) continue;
            unsaved = false;
            onDisk = want.text();
            fuzz::checkSame(onDisk, fuzz::getFile(path), "the file written with the edit");
        }
        checkLines(ini, want, copy);
        fuzz::checkSame(onDisk, fuzz::getFile(path), "the file before its document ends");
        if (unsaved) onDisk = want.text();
    }
    fuzz::checkSame(onDisk, fuzz::getFile(path), "the file when its document has ended");

    CIniFile again(path.c_str());
    const Model want(onDisk);
    checkLines(again, want, copy);
    for (const Operation& op : script) {
        lookUp(again, want, op);
        lookForNumber(again, want, op);
    }
    fuzz::check(!again.Flush(), "a document that was only read has nothing to save");
    return 0;
}
