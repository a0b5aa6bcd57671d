#include "inspect/KnownName.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <string>

namespace {
bool isDigit(unsigned char c) { return std::isdigit(c) != 0; }

// The digits at the end of a text, and the rest before them.
struct NumberedText {
    std::string_view rest, digits;

    explicit NumberedText(std::string_view text) {
        const auto end = std::find_if_not(text.rbegin(), text.rend(), isDigit);
        const auto length = static_cast<std::size_t>(text.rend() - end);
        rest = text.substr(0, length);
        digits = text.substr(length);
    }
    bool hasLeadingZeros() const { return digits.size() > 1 && digits.front() == '0'; }
};

// The letters of a name that count in the search for slips, as capitals.
std::string lettersOf(std::string_view name) {
    std::string letters;
    for (const char c : name)
        if (c != '_' && c != '-' && !CString::IsBlank(c))
            letters += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return letters;
}

// Whether one letter more, less or different, or one exchange of neighbours, makes `a` of `b`.
bool isOneStepFrom(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty() && a.front() == b.front()) {
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    while (!a.empty() && !b.empty() && a.back() == b.back()) {
        a.remove_suffix(1);
        b.remove_suffix(1);
    }
    if (a.size() <= 1 && b.size() <= 1) return true;
    return a.size() == 2 && b.size() == 2 && a[0] == b[1] && a[1] == b[0];
}

bool startsWith(std::string_view text, std::string_view name) {
    return text.size() >= name.size() && strncasecmp(text.data(), name.data(), name.size()) == 0;
}
}  // namespace

bool KnownName::isNameOf(std::string_view text) const {
    if (!startsWith(text, name)) return false;
    const std::string_view rest = text.substr(std::string_view(name).size());
    if (!isNumbered) return rest.empty();
    const NumberedText number(rest);
    return number.rest == "." && !number.digits.empty() && !number.hasLeadingZeros();
}

bool KnownName::isMeantBy(std::string_view text) const {
    const NumberedText number(text);
    if (isNumbered && number.digits.empty()) return false;
    const std::string known = lettersOf(name) + (isNumbered ? "." : "");
    const std::string letters = lettersOf(isNumbered ? number.rest : text);
    // One letter is much of a short name: a file may have a section [PCIe] beside [PCI].
    constexpr std::size_t kShortest = 5;
    return known.size() < kShortest ? letters == known : isOneStepFrom(letters, known);
}

CString KnownName::correct(std::string_view text) const {
    if (!isNumbered) return name;
    std::string_view digits = NumberedText(text).digits;
    // Without leading zeros; of zeros alone, one stays.
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    CString number;
    number.Assign(digits);
    return CString(name) + "." + number;
}
