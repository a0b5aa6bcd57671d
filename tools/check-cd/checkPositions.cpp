#include <algorithm>
#include <charconv>
#include <cstdint>
#include <set>
#include <string_view>
#include <utility>

#include "check-cd/checks.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
using Inventory = CustomPCIDeviceList;

// Splits the first part off a text: up to the separator or to the end, without blanks at its ends.
std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t length = std::min(text.find(separator), text.size());
    const std::string_view part = CString::Trimmed(text.substr(0, length));
    text.remove_prefix(std::min(length + 1, text.size()));
    return part;
}

// The decimal number that is the whole text; -1 if it is none that a bus or a device can have.
int numberOf(std::string_view text) {
    std::uint16_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? number : -1;
}

bool hasLeadingZero(std::string_view number) { return number.size() > 1 && number[0] == '0'; }

// The two numbers of a position, without blanks at their ends.
struct Position {
    std::string_view bus, device;

    explicit Position(std::string_view text)
        : bus(takePart(text, ',')), device(CString::Trimmed(text)) {}
    bool hasLeadingZeros() const { return hasLeadingZero(bus) || hasLeadingZero(device); }
    std::pair<int, int> getNumbers() const { return {numberOf(bus), numberOf(device)}; }
};

// `known` are the well-formed positions before this one.
const char* findFault(std::string_view text, std::set<std::pair<int, int>>& known) {
    const Position position(text);
    const auto numbers = position.getNumbers();
    if (numbers.first < 0 || numbers.second < 0) return "malformed position";
    if (!known.insert(numbers).second) return "repeated position";
    return position.hasLeadingZeros() ? "leading zeros in position" : nullptr;
}

void checkList(const Line& onBoard, Findings& findings) {
    const std::string_view all = onBoard.value.c_str();
    if (all.empty()) return;  // nothing is on-board
    const auto total = static_cast<unsigned>(std::count(all.begin(), all.end(), ';')) + 1;
    if (total > Inventory::kMaxPositions)
        findings.add(onBoard.number, CString(total) + " positions, of which " +
                                         CString(Inventory::kMaxPositions) + " are read");
    std::string_view rest = all;
    std::set<std::pair<int, int>> known;
    for (unsigned i = 0; i != total; ++i) {
        CString position;
        position.Assign(takePart(rest, ';'));
        if (position.IsEmpty())
            findings.add(onBoard.number, "empty position, which is device 0 on bus 0");
        else if (const char* fault = findFault(position.c_str(), known))
            findings.add(onBoard.number, CString(fault) + " \"" + position + "\"");
    }
}
}  // namespace

void checkPositions(const Document& document, const Configuration& configuration,
                    Findings& findings) {
    for (const Line& header : document.getLines()) {
        if (!header.isHeader() || header.isRepeated()) continue;
        const Line* onBoard = document.findEntry(&header, Inventory::kOnBoardKey);
        if (!onBoard) continue;
        if (!configuration.mappedAdapters.find(header.name))
            findings.add(onBoard->number, "no ID is mapped to " + header.name);
        checkList(*onBoard, findings);
    }
}
