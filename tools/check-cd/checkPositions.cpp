#include <algorithm>
#include <string_view>

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

// Whether this is a decimal number that a bus or a device can have.
bool isNumber(std::string_view text) {
    constexpr unsigned kLargest = 65535;
    unsigned number = 0;
    for (const char c : text) {
        const auto digit = static_cast<unsigned>(c - '0');
        if (digit > 9) return false;
        number = std::min(10 * number + digit, kLargest + 1);
    }
    return !text.empty() && number <= kLargest;
}

bool isPosition(std::string_view text) {
    return isNumber(takePart(text, ',')) && isNumber(CString::Trimmed(text));
}

void checkPosition(std::string_view position, unsigned line, Findings& findings) {
    CString text;
    text.Assign(position);
    if (text.IsEmpty())
        findings.add(line, "empty position, which is device 0 on bus 0");
    else if (!isPosition(position))
        findings.add(line, "malformed position \"" + text + "\"");
}

void checkList(const Line& onBoard, Findings& findings) {
    const std::string_view all = onBoard.value.c_str();
    if (all.empty()) return;  // nothing is on-board
    const auto total = static_cast<unsigned>(std::count(all.begin(), all.end(), ';')) + 1;
    if (total > Inventory::kMaxPositions)
        findings.add(onBoard.number, CString(total) + " positions, of which " +
                                         CString(Inventory::kMaxPositions) + " are read");
    std::string_view rest = all;
    for (unsigned i = 0; i != total; ++i)
        checkPosition(takePart(rest, ';'), onBoard.number, findings);
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
