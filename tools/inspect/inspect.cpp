#include "inspect/inspect.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string_view>
#include <vector>

#include "inspect/KnownName.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
using Inventory = CustomPCIDeviceList;

// The names of the keys that are read in a section, or those of the sections in a file.
class KnownNames {
public:
    KnownNames() = default;
    KnownNames(std::initializer_list<const char*> list) {
        for (const char* name : list) add(name, false);
    }
    void add(const char* name, bool isNumbered) { names.push_back({name, isNumbered}); }
    bool isEmpty() const { return names.empty() && !isAnyName; }
    bool isKnown(std::string_view text) const {
        return isAnyName || std::any_of(names.begin(), names.end(),
                                        [&](auto& name) { return name.isNameOf(text); });
    }
    // For a text that is not a known name: the known name that it must misspell. Null if none.
    const KnownName* findMeant(std::string_view text) const {
        const auto found = std::find_if(names.begin(), names.end(),
                                        [&](auto& name) { return name.isMeantBy(text); });
        return found != names.end() ? &*found : nullptr;
    }

    bool isAnyName = false;  // every name is read

private:
    std::vector<KnownName> names;
};

CString quoted(const CString& section) { return "[" + section + "]"; }

void addRepetition(const CString& what, const Line& line, Findings& findings) {
    findings.add(line.number,
                 what + " repeats line " + CString(line.first->number) + ", so it is never read");
}

void inspectKeys(const Lines& lines, const KnownNames& keys, Findings& findings) {
    for (const Line& line : lines) {
        if (!line.isEntry()) continue;
        const std::string_view key = line.name.c_str();
        if (keys.isKnown(key)) {
            if (line.isRepeated()) addRepetition("key " + line.name, line, findings);
        } else if (const KnownName* meant = keys.findMeant(key)) {
            findings.add(line.number,
                         "key " + line.name + " is never read: it must be " + meant->correct(key));
        }
    }
}

void inspectSection(const Lines& lines, const KnownNames& keys, Findings& findings) {
    inspectKeys(lines, keys, findings);
    for (const Line& line : lines)
        if (line.kind == CIniFile::lkBare)
            findings.add(line.number, "a line without \"=\" is never read");
}

// `keysOf` gives the keys that are read in the section of a name; none if it is not read.
// `sections` are the names that a header may misspell.
template <class KeysOf>
void inspectSections(const Document& document, const KnownNames& sections, KeysOf keysOf,
                     Findings& findings) {
    const Lines lines = document.getLines();
    if (lines.begin() != lines.end() && !lines.begin()->isHeader())
        findings.add(lines.begin()->number, "lines above the first section header are never read");
    for (const Line& line : lines) {
        if (!line.isHeader()) continue;
        const KnownNames keys = keysOf(line.name);
        if (keys.isEmpty()) {
            if (const KnownName* meant = sections.findMeant(line.name.c_str()))
                findings.add(line.number, "section " + quoted(line.name) +
                                              " is never read: it must be " + quoted(meant->name));
        } else if (line.isRepeated()) {
            addRepetition("section " + quoted(line.name), line, findings);
        } else {
            inspectSection(document.getLines(line), keys, findings);
        }
    }
}

// ---------------------------------------------------------------- What is read in each file

KnownNames getDetectionKeys(const CString& section) {
    KnownNames keys;
    if (section.EqualsNoCase(Inventory::kSystemSection))
        for (const char* key : Inventory::kSystemKeys) keys.add(key, false);
    if (!section.EqualsNoCase(Inventory::kDeviceSection)) return keys;
    keys.add(Inventory::kTotalKey, false);
    for (const auto& key : Inventory::kDeviceKeys) keys.add(key.name, true);
    return keys;
}

// One section may serve a system and an adapter of the same name.
KnownNames getConfigurationKeys(const CString& section, const Configuration& configuration) {
    KnownNames keys;
    keys.isAnyName = section.EqualsNoCase(Inventory::kSystemMapSection) ||
                     section.EqualsNoCase(Inventory::kMapSection);
    if (isSystem(configuration.systems, section)) keys.add(Inventory::kDirectoryKey, false);
    if (configuration.mappedAdapters.find(section)) keys.add(Inventory::kTypeKey, false);
    if (isSystemAdapter(section)) keys.add(Inventory::kSystemsKey, false);
    return keys;
}

void inspectType(const Line& type, Findings& findings) {
    if (!Inventory::findGroup(type.value) && Inventory::findGroupNoCase(type.value))
        findings.add(type.number,
                     "type " + type.value + " selects no group: the case of letters counts");
}
}  // namespace

bool inspectCopy(const Copy& copy, Findings& findings) {
    if (copy.getFault().IsEmpty()) return true;
    findings.add(
        1, copy.isWhole() ? "the file " + copy.mark : "the file cannot be read: " + copy.reason);
    return false;
}

bool isSystem(const Names& systems, const CString& name) {
    return systems.find(name) || name.EqualsNoCase(Inventory::kUnknownSystem);
}

bool isSystemAdapter(const CString& name) {
    return std::any_of(std::begin(Inventory::kSystemAdapters), std::end(Inventory::kSystemAdapters),
                       [&](const char* adapter) { return name.EqualsNoCase(adapter); });
}

void inspectDetectionFile(const Document& document, Findings& findings) {
    inspectSections(document, {Inventory::kSystemSection, Inventory::kDeviceSection},
                    getDetectionKeys, findings);
}

void inspectConfiguration(const Configuration& configuration, Findings& findings) {
    KnownNames sections = {Inventory::kSystemMapSection, Inventory::kMapSection,
                           Inventory::kUnknownSystem};
    for (const char* adapter : Inventory::kSystemAdapters) sections.add(adapter, false);
    const Document& document = configuration.document;
    inspectSections(
        document, sections,
        [&](const CString& name) { return getConfigurationKeys(name, configuration); }, findings);
    for (const Line& line : document.getLines())
        if (line.isHeader() && !line.isRepeated() && configuration.mappedAdapters.find(line.name))
            if (const Line* type = document.findEntry(&line, Inventory::kTypeKey))
                inspectType(*type, findings);
}

void inspectSystemFile(const Document& document, const Configuration& configuration,
                       Findings& findings) {
    const KnownNames keys = {Inventory::kOnBoardKey};
    const Names& adapters = configuration.mappedAdapters;
    inspectSections(
        document, {},
        [&](const CString& name) { return adapters.find(name) ? keys : KnownNames(); }, findings);
    // Every section with this key is meant for an adapter, even if its name is spelt wrongly.
    for (const Line& line : document.getLines())
        if (line.isHeader() && !adapters.find(line.name))
            inspectKeys(document.getLines(line), keys, findings);
}
