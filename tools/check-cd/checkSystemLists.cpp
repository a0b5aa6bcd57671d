#include <cctype>
#include <functional>
#include <map>
#include <set>
#include <string_view>

#include "check-cd/checks.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
// Bytes that are not ASCII belong to letters.
bool isWordLetter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || c == '_' || byte >= 0x80;
}

// Where the text has a system identifier.
struct Mention {
    bool isFound = false;  // as a word or within one
    bool isNamed = false;  // as a word
};

// One list of systems, read from left to right. The case of letters counts.
class SystemList {
public:
    SystemList(const Line& systems, const Names& known, Findings& list)
        : line(systems.number), text(systems.value.c_str()), findings(list) {
        for (const Line* system : known) addIdentifier(system->value.c_str());
        addIdentifier(CustomPCIDeviceList::kUnknownSystem);
    }

    void check() {
        for (at = 0; at != text.size(); ++at) checkPosition();
        for (const auto& [identifier, mention] : identifiers)
            if (mention.isFound && !mention.isNamed)
                add("system ", identifier, " is found here only as a part of another name");
    }

private:
    void addIdentifier(std::string_view identifier) {
        identifiers.try_emplace(identifier);
        lengths.insert(identifier.size());
    }

    bool isWordStart() const {
        return at >= namedUntil && isWordLetter(text[at]) &&
               (at == 0 || !isWordLetter(text[at - 1]));
    }
    bool endsWord(std::size_t length) const {
        return at + length == text.size() || !isWordLetter(text[at + length]);
    }

    // Marks all identifiers that begin here. Marks as named the longest one that is a word, or more
    // than one: it may hold characters that divide words.
    void checkPosition() {
        const bool isStart = isWordStart();
        bool isNamed = false;
        for (const std::size_t length : lengths) {
            const auto known = identifiers.find(text.substr(at, length));
            if (known == identifiers.end()) continue;
            known->second.isFound = true;
            if (!isStart || isNamed || !endsWord(known->first.size())) continue;
            known->second.isNamed = isNamed = true;
            namedUntil = at + known->first.size();
        }
        if (isStart && !isNamed) checkUnknownWord();
    }

    // Any text may separate the identifiers, so a word that is not an identifier is a finding only
    // if it has a "_".
    void checkUnknownWord() {
        std::size_t length = 1;
        while (!endsWord(length)) ++length;
        const std::string_view word = text.substr(at, length);
        if (word.find('_') != word.npos) add("no machine type has the system ", word, "");
    }

    void add(const char* before, std::string_view name, const char* after) {
        CString shown;
        shown.Assign(name);
        findings.add(line, before + shown + after);
    }

    unsigned line;
    std::string_view text;
    Findings& findings;
    std::map<std::string_view, Mention> identifiers;
    std::set<std::size_t, std::greater<>> lengths;  // of the identifiers
    std::size_t at = 0;
    std::size_t namedUntil = 0;  // the end of the last identifier that is named
};
}  // namespace

void checkSystemLists(const Configuration& configuration, Findings& findings) {
    for (const char* adapter : CustomPCIDeviceList::kSystemAdapters) {
        const Document& document = configuration.document;
        const Line* systems =
            document.findEntry(document.findSection(adapter), CustomPCIDeviceList::kSystemsKey);
        if (systems) SystemList(*systems, configuration.systems, findings).check();
    }
}
