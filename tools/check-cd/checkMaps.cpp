#include <algorithm>
#include <charconv>
#include <iterator>
#include <system_error>

#include "check-cd/checks.h"
#include "inspect/KnownName.h"
#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
using Inventory = CustomPCIDeviceList;

// Sections with a meaning of their own, in the configuration or in the report.
constexpr const char* kReservedNames[] = {Inventory::kSystemMapSection, Inventory::kMapSection,
                                          "MACH", "PCI", "DETECTED_BY_GROUP"};

bool isReserved(const CString& name) {
    return std::any_of(std::begin(kReservedNames), std::end(kReservedNames),
                       [&](const char* reserved) { return name.EqualsNoCase(reserved); });
}

// Whether reports may list an adapter of this name that has no ID.
bool isAdded(const CString& name) {
    return name.EqualsNoCase(Inventory::kCDROMAdapter) || isSystemAdapter(name);
}

bool hasBracket(const CString& name) { return name.Find("]") >= 0; }

// Whether the writer of a value took the text after a ";" for a comment.
bool hasComment(const CString& value) {
    return value.StartsWith(";") || value.Find(" ;") >= 0 || value.Find("\t;") >= 0;
}

bool hasComma(const CString& name) { return name.Find(",") >= 0; }
bool hasNoUnderscore(const CString& name) { return name.Find("_") < 0; }

struct NameRule {
    bool (*isBrokenBy)(const CString& name);
    const char* finding;
};
// For adapters and systems.
constexpr NameRule kNameRules[] = {
    {hasComment, "has a comment in its name: comments have lines of their own"},
    {hasBracket, "has a \"]\" in its name, so its section is never found"},
    {isReserved, "has the name of a section with another meaning"},
};
constexpr NameRule kAdapterRules[] = {
    {hasComma, "has a comma in its name: commas divide lists"},
    {isAdded, "has the name of an adapter that reports add"},
};
constexpr NameRule kSystemRules[] = {{hasNoUnderscore, "has no \"_\", so no per-system file"}};

// One of the two maps, and what it asks of the names in it.
struct Map {
    const char* section;
    const char* noun;  // what its names stand for
    const Names& names;
    const char* requiredKey;  // in the section of each name
};

class MapCheck {
public:
    MapCheck(const Configuration& files, const Map& nameMap, Findings& list)
        : configuration(files), map(nameMap), findings(list) {}

    // Calls `checkFirst` for the first entry of each name.
    template <class CheckFirst>
    void run(CheckFirst checkFirst) {
        requireMap();
        for (const Line* entry : map.names) {
            const Line& first = *map.names.find(entry->value);
            if (&first == entry) {
                apply(kNameRules, *entry);
                checkFirst(*entry);
                checkSection(*entry);
            } else if (first.value != entry->value) {
                add(*entry, "differs only in case from " + first.value);
            }
        }
    }

    template <std::size_t N>
    void apply(const NameRule (&rules)[N], const Line& entry) {
        for (const NameRule& rule : rules)
            if (rule.isBrokenBy(entry.value)) add(entry, rule.finding);
    }

    void add(const Line& entry, const CString& finding) {
        findings.add(entry.number, describe(entry) + finding);
    }

private:
    CString describe(const Line& entry) const {
        return CString(map.noun) + " " + entry.value + " ";
    }

    // A misspelt header counts as the map: it is a finding of its own.
    void requireMap() {
        const KnownName name = {map.section, false};
        const Lines lines = configuration.document.getLines();
        const bool isThere = std::any_of(lines.begin(), lines.end(), [&](const Line& line) {
            return line.isHeader() && name.isMeantBy(line.name.c_str());
        });
        if (!isThere) findings.add(1, CString("section [") + map.section + "] is missing");
    }

    void checkSection(const Line& entry) {
        if (hasBracket(entry.value)) return;  // no header can have this name
        const Line* header = configuration.document.findSection(entry.value);
        if (!header) return add(entry, "has no section");
        const Line* required = configuration.document.findEntry(header, map.requiredKey);
        if (!required || required->value.IsEmpty())
            findings.add(header->number, describe(entry) + "has no " + map.requiredKey);
        else if (hasComment(required->value))
            findings.add(required->number,
                         CString(map.requiredKey) + " has a comment in its value");
    }

    const Configuration& configuration;
    const Map& map;
    Findings& findings;
};

// The report numbers the sections of an adapter from the second one on: NIC, NIC2, NIC3. For the
// name of such a numbered section, returns the adapter; otherwise null.
const Line* findNumbered(const Names& adapters, const CString& name) {
    const char* const end = name.c_str() + name.GetLength();
    for (const char* digits = end - 1; digits > name.c_str(); --digits) {
        if (*digits == '0') continue;
        int number = 0;
        if (std::from_chars(digits, end, number).ec != std::errc()) break;  // or too large
        if (number < 2) continue;
        const CString start = name.Left(static_cast<int>(digits - name.c_str()));
        if (const Line* adapter = adapters.find(start)) return adapter;
    }
    return nullptr;
}

void checkAdapters(const Configuration& configuration, Findings& findings) {
    const Map map = {Inventory::kMapSection, "adapter", configuration.adapters,
                     Inventory::kTypeKey};
    MapCheck check(configuration, map, findings);
    check.run([&](const Line& entry) {
        check.apply(kAdapterRules, entry);
        if (isSystem(configuration.systems, entry.value))
            check.add(entry, "has the name of a system");
        if (const Line* other = findNumbered(configuration.adapters, entry.value))
            check.add(entry, "has the name of a numbered section of " + other->value);
    });
}

void checkSystems(const Configuration& configuration, Findings& findings) {
    const Map map = {Inventory::kSystemMapSection, "system", configuration.systems,
                     Inventory::kDirectoryKey};
    MapCheck check(configuration, map, findings);
    check.run([&](const Line& entry) { check.apply(kSystemRules, entry); });
}

void checkIDs(const Document& document, Findings& findings) {
    const Line* header = document.findSection(Inventory::kMapSection);
    if (!header) return;
    for (const Line& line : document.getLines(*header)) {
        if (!line.isEntry() || line.isRepeated()) continue;
        if (!isDeviceID(line.name))
            findings.add(line.number, "malformed ID \"" + line.name + "\"");
        else if (line.name.EqualsNoCase("0x00000000") && !line.value.IsEmpty())
            findings.add(line.number,
                         "ID " + line.name + " has a name: missing device entries get it");
    }
}
}  // namespace

void checkMaps(const Configuration& configuration, Findings& findings) {
    checkSystems(configuration, findings);
    checkIDs(configuration.document, findings);
    checkAdapters(configuration, findings);
}
