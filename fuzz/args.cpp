// Any bytes as the declarations and arguments of a parameter table, as a file with a version stamp
// and as two version texts, each against a small model.
//
// The input is four parts, divided by lines "%%": the declarations, the arguments, the file, the
// versions. A declaration is a line of the kind ("0" to "3"), "!" when required, and the name; a
// first line "case" makes the parse tell cases apart. An argument is a line, as is a version.

#include "fuzz.h"
#include "model.h"
#include "util/CLParams.h"
#include "util/MyFileIO.h"

namespace {

using model::npos;

struct Entry {
    std::string name, value;
    bool found = false;
    bool required = false;
    int mode = 0;
};

// The table of parameters.
struct Table {
    std::vector<Entry> entries;
    std::vector<std::string> arguments;
    bool caseSensitive = false;
    std::size_t characters = 0;

    std::string folded(const std::string& text) const {
        return caseSensitive ? text : model::upper(text);
    }

    bool isSwitch(const std::string& argument) const {
        return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
            if (entry.found) return false;
            const std::string name = folded(entry.name);
            if (entry.mode == CCLParams::CLSwitch) return folded(argument) == name;
            return entry.mode != CCLParams::CLNone && model::startsWith(folded(argument), name);
        });
    }

    bool accepts(const Entry& entry, const std::string& argument) const {
        if (entry.mode == CCLParams::CLSwitch) return folded(argument) == folded(entry.name);
        if (entry.mode == CCLParams::CLPathParam && entry.name.empty()) return !isSwitch(argument);
        return model::startsWith(folded(argument), folded(entry.name));
    }

    // Takes the value of the entry, and returns the first argument behind it.
    std::size_t take(Entry& entry, std::size_t i) const {
        entry.found = true;
        if (entry.mode == CCLParams::CLSwitch) return i + 1;
        entry.value = arguments[i++].substr(entry.name.size());
        const auto goesOn = [&] {
            return entry.mode == CCLParams::CLParam ||
                   std::count(entry.value.begin(), entry.value.end(), '"') == 1;
        };
        for (; i < arguments.size() && goesOn() && !isSwitch(arguments[i]); ++i)
            entry.value += arguments[i] == " " ? " " : " " + arguments[i];
        return i;
    }

    int match() {
        for (std::size_t i = 1; i < arguments.size();) {
            const std::size_t before = i;
            for (Entry& entry : entries) {
                if (entry.found) continue;
                if (entry.mode == CCLParams::CLNone) return CCLParams::kUnknownMode;
                if (!accepts(entry, arguments[i])) continue;
                i = take(entry, i);
                break;
            }
            if (i == before) return CCLParams::kMismatch;
        }
        return std::any_of(entries.begin(), entries.end(),
                           [](const Entry& entry) { return entry.required && !entry.found; })
                   ? CCLParams::kMismatch
                   : CCLParams::kParsed;
    }

    int parse() {
        const int result = match();
        characters = arguments.empty() ? 0 : model::PathParts(arguments[0]).name.size();
        for (const Entry& entry : entries)
            if (entry.found) characters += 1 + entry.name.size() + entry.value.size();
        return result;
    }
};

Table declare(const std::string& declarations, const std::string& arguments) {
    Table table;
    if (!arguments.empty()) table.arguments = fuzz::split(arguments, "\n");
    for (std::string line : fuzz::split(declarations, "\n")) {
        if (line == "case") table.caseSensitive = true;
        if (line.empty() || line[0] < '0' || line[0] > '3') continue;
        Entry entry;
        entry.mode = line[0] - '0';
        line.erase(0, 1);
        entry.required = model::startsWith(line, "!");
        entry.name = line.substr(entry.required ? 1 : 0);
        table.entries.push_back(entry);
    }
    return table;
}

void checkParameters(Table want) {
    CCLParams params;
    for (const Entry& entry : want.entries)
        fuzz::check(params.Add(entry.name.c_str(), static_cast<CCLParams::CLParamModes>(entry.mode),
                               entry.required),
                    "an entry is added");
    std::vector<const char*> argv;
    for (const std::string& argument : want.arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);

    const int result =
        params.Parse(static_cast<int>(want.arguments.size()), argv.data(), want.caseSensitive);
    fuzz::check(result == want.parse(), "the result of Parse");
    fuzz::check(params.GetNumberOfCommandLineCharacters() == static_cast<int>(want.characters),
                "the number of characters");
    for (const std::string& argument : want.arguments)
        fuzz::check(
            params.IsSwitch(argument.c_str(), want.caseSensitive) == want.isSwitch(argument),
            "IsSwitch");

    unsigned position = 0;
    CString value;
    for (const Entry& entry : want.entries) {
        fuzz::check(params.GetValue(++position, value) == entry.found, "found, by position");
        fuzz::checkSame(entry.value, value.c_str(), "the value by position");
        const Entry& first =
            *std::find_if(want.entries.begin(), want.entries.end(),
                          [&](const Entry& other) { return other.name == entry.name; });
        fuzz::check(params.GetValue(entry.name.c_str()) == first.found, "found");
        fuzz::check(params.GetValue(entry.name.c_str(), value) == first.found, "found, by name");
        fuzz::checkSame(first.value, value.c_str(), "the value by name");
    }
    for (const unsigned none : {0U, position + 1, UINT_MAX}) {
        value = "before";
        fuzz::check(!params.GetValue(none, value) && value.IsEmpty(), "no such position");
    }
}

// The version stamp as it is looked for, byte by byte: the key, which a byte that fails it does not
// begin anew; three zeros; and the value, up to three zeros.
bool findStamp(const std::string& bytes, std::string& version) {
    const std::string key("F\0i\0l\0e\0V\0e\0r\0s\0i\0o\0", 20);
    std::size_t i = 0;
    for (std::size_t matched = 0; matched < key.size(); ++i) {
        if (i == bytes.size()) return false;
        matched = bytes[i] == key[matched] ? matched + 1 : 0;
    }
    i = bytes.find(std::string(3, '\0'), i);
    if (i == npos) return false;
    i += 3;
    const std::size_t end = std::min(bytes.find(std::string(3, '\0'), i), bytes.size());
    version += fuzz::withoutNULs(bytes.substr(i, end - i));
    return end < bytes.size();
}

void checkStamp(const std::string& bytes) {
    static const fuzz::Scratch scratch;
    const std::string path = scratch.path("program");
    fuzz::putFile(path, bytes);
    std::string wanted = "v";
    CString version("v");
    const bool found = findStamp(bytes, wanted);
    fuzz::check(CMyFileIO::GetFileVersion(path.c_str(), version) == found,
                "whether there is a stamp");
    fuzz::checkSame(wanted, version.c_str(), "the stamp");
}

// The sign of the first difference in the first four fields.
int compareVersions(const std::string& first, const std::string& second) {
    const auto fields = [](const std::string& text) {
        const std::string version = model::trim(text);
        std::vector<std::string> all = fuzz::split(version.substr(0, version.find(' ')), ".");
        all.resize(4);
        return all;
    };
    const std::vector<std::string> a = fields(first);
    const std::vector<std::string> b = fields(second);
    for (std::size_t i = 0; i < 4; ++i)
        if (model::toInt(a[i]) != model::toInt(b[i]))
            return model::toInt(a[i]) > model::toInt(b[i]) ? 1 : -1;
    return 0;
}

void checkVersions(const std::vector<std::string>& versions) {
    for (const std::string& version : versions) {
        const std::string start = model::trim(version).substr(0, 2);
        fuzz::check(CMyFileIO::IsComment(version.c_str()) ==
                        (start == "//" || start[0] == ';' || start[0] == '#'),
                    "IsComment");
        fuzz::check(CMyFileIO::CompareFileVersion(versions[0].c_str(), version.c_str()) ==
                        compareVersions(versions[0], version),
                    "CompareFileVersion");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::string> input = fuzz::parts(data, size, 4);
    checkParameters(declare(fuzz::withoutNULs(input[0]), fuzz::withoutNULs(input[1])));
    checkStamp(input[2]);
    checkVersions(fuzz::split(fuzz::withoutNULs(input[3]), "\n"));
    return 0;
}
