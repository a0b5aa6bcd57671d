#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <vector>

#include "check-cd/checks.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
// Bytes that are not ASCII belong to letters.
bool isWordLetter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || c == '_' || byte >= 0x80;
}

// A system identifier. The case of letters counts.
struct Identifier {
    std::string_view text;
    Identifier* shorter = nullptr;  // the longest other one with which this one begins
    bool isFound = false;           // stands in the list, as a word or within one
    bool isNamed = false;           // stands in the list as a word
};

// All identifiers, in the order of their bytes: one that is the start of another comes before it.
using Identifiers = std::vector<Identifier>;

// `candidate` is the last identifier that is not sorted after the text. All that is sorted between
// an identifier X and a text that begins with X begins with X, too. So each X with which the text
// begins is the candidate or one of its shorter ones. Returns the longest; null if there is none.
Identifier* longestStart(Identifier* candidate, std::string_view text) {
    while (candidate && text.substr(0, candidate->text.size()) != candidate->text)
        candidate = candidate->shorter;
    return candidate;
}

Identifiers collectIdentifiers(const Names& systems) {
    std::set<std::string_view> texts = {CustomPCIDeviceList::kUnknownSystem};
    for (const Line* system : systems) texts.insert(system->value.c_str());
    Identifiers identifiers;
    identifiers.reserve(texts.size());  // identifiers point to each other
    Identifier* before = nullptr;
    for (const std::string_view text : texts)
        before = &identifiers.emplace_back(Identifier{text, longestStart(before, text)});
    return identifiers;
}

// The longest identifier with which the text begins; null if there is none. The others with which
// it begins are reached through `shorter`.
Identifier* findAtStart(Identifiers& identifiers, std::string_view text) {
    const auto after =
        std::upper_bound(identifiers.begin(), identifiers.end(), text,
                         [](std::string_view t, auto& identifier) { return t < identifier.text; });
    return after == identifiers.begin() ? nullptr : longestStart(&after[-1], text);
}

// One list of systems, read from left to right.
class SystemList {
public:
    SystemList(const Line& systems, Identifiers& known, Findings& list)
        : line(systems.number), text(systems.value.c_str()), identifiers(known), findings(list) {}

    void check() {
        for (at = 0; at != text.size(); ++at) checkPosition();
        for (Identifier& identifier : identifiers)
            if (identifier.isFound && !identifier.isNamed)
                add("system ", identifier.text, " is found here only as a part of another name");
    }

private:
    bool isWordStart() const {
        return at >= namedUntil && isWordLetter(text[at]) &&
               (at == 0 || !isWordLetter(text[at - 1]));
    }
    bool endsWord(std::size_t length) const {
        return at + length == text.size() || !isWordLetter(text[at + length]);
    }

    void checkPosition() {
        Identifier* const longest = findAtStart(identifiers, text.substr(at));
        // If one is marked already, the shorter ones are, too.
        for (Identifier* i = longest; i && !i->isFound; i = i->shorter) i->isFound = true;
        if (isWordStart()) checkWord(longest);
    }

    // Marks as named the longest identifier that begins here and ends where a word ends: it may
    // hold characters that divide words. Any text may separate the identifiers, so a word that is
    // not an identifier is a finding only if it has a "_".
    void checkWord(Identifier* identifier) {
        while (identifier && !endsWord(identifier->text.size())) identifier = identifier->shorter;
        if (identifier) {
            identifier->isNamed = true;
            namedUntil = at + identifier->text.size();
            return;
        }
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
    Identifiers& identifiers;
    Findings& findings;
    std::size_t at = 0;
    std::size_t namedUntil = 0;  // the end of the last identifier that is named
};
}  // namespace

void checkSystemLists(const Configuration& configuration, Findings& findings) {
    for (const char* adapter : CustomPCIDeviceList::kSystemAdapters) {
        const Document& document = configuration.document;
        const Line* systems =
            document.findEntry(document.findSection(adapter), CustomPCIDeviceList::kSystemsKey);
        if (!systems) continue;
        Identifiers identifiers = collectIdentifiers(configuration.systems);
        SystemList(*systems, identifiers, findings).check();
    }
}
