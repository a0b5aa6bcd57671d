#include "explain/inspectNumbers.h"

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "inspect/findLack.h"

namespace {
using DeviceNumber = CustomPCIDeviceList::DeviceNumber;

// IDs and the class code in hexadecimal, other numbers in decimal.
CString formatted(const DeviceKey& key, std::uint32_t number) {
    if (key.base == 0 && key.bits == 16) return number;
    char text[] = "0x00000000";
    std::snprintf(text, sizeof text, "0x%0*X", key.bits == 32 ? 6 : 4,
                  static_cast<unsigned>(number));
    return text;
}

// What is wrong with the text of a number; "" if nothing is. If anything but a letter or digit
// follows the number, the rest is a remark.
CString describeFault(const DeviceKey& key, const char* text, const DeviceNumber& number) {
    const char* const rest = number.rest;
    if (*text != '\0' && !hasDigits(key, text)) return "it has no digits";
    if (number.isTooWide) return "only the low " + CString(key.bits) + " bits are kept";
    if (!std::isalnum(static_cast<unsigned char>(*rest))) return "";
    return CString("the number ends before \"") + rest + "\"";
}

void inspectNumber(const DeviceKey& key, const Line& line, Findings& findings) {
    const DeviceNumber number = CustomPCIDeviceList::readNumber(key, line.value.c_str());
    const CString fault = describeFault(key, line.value.c_str(), number);
    if (!fault.IsEmpty())
        findings.add(line.number, line.name + " = " + line.value + " reads as " +
                                      formatted(key, number.value) + ": " + fault);
}

void inspectTotal(const Line& line, Findings& findings) {
    const char* const text = line.value.c_str();
    const char* const rest = text + std::strspn(text, "0123456789");
    const bool isPlain = rest != text && (*rest == '\0' || CString::IsBlank(*rest));
    if (isPlain && std::strtoull(text, nullptr, 10) <= INT_MAX) return;
    findings.add(line.number, line.name + " = " + text + " reads as " +
                                  CString(line.value.ToInt()) + ": " +
                                  (isPlain ? "it is too large" : "it is not a plain number"));
}
}  // namespace

void inspectNumbers(const DeviceEntries& entries, const Document& detection, Findings& findings) {
    const Line* const section = detection.findSection(CustomPCIDeviceList::kDeviceSection);
    const Line* const total = detection.findEntry(section, CustomPCIDeviceList::kTotalKey);
    if (total) inspectTotal(*total, findings);
    for (const DeviceEntry& entry : entries) {
        if (!entry.device) continue;
        const CString suffix = "." + CString(entry.first);
        for (const DeviceKey& key : CustomPCIDeviceList::kDeviceKeys)
            if (const Line* line = detection.findEntry(section, key.name + suffix))
                inspectNumber(key, *line, findings);
    }
}
