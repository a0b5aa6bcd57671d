#include "inspect/findLack.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include "inspect/KnownName.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
using Inventory = CustomPCIDeviceList;

constexpr std::size_t kKeyCount = std::size(Inventory::kDeviceKeys);

// The lines of one device entry, in the order of kDeviceKeys. Null for a key that is not there.
using Keys = std::array<const Line*, kKeyCount>;

// The numbers that each device entry needs: those of the IDs and of the position. With the IDs of
// the subsystem, which are 0 if they are not there, these are the numbers that a report shows.
constexpr std::uint16_t PCIDevice::*kNeeded[] = {&PCIDevice::vendorID, &PCIDevice::deviceID,
                                                 &PCIDevice::busNumber, &PCIDevice::deviceNumber};
constexpr std::uint16_t PCIDevice::*kOptional[] = {&PCIDevice::subVendorID,
                                                   &PCIDevice::subDeviceID};

template <std::size_t N>
bool isOneOf(std::uint16_t PCIDevice::*const (&fields)[N], std::size_t key) {
    return std::find(fields, fields + N, Inventory::kDeviceKeys[key].field) != fields + N;
}
bool isNeeded(std::size_t key) { return isOneOf(kNeeded, key); }
bool isShown(std::size_t key) { return isNeeded(key) || isOneOf(kOptional, key); }

// The position in kDeviceKeys of the key that the line has; kKeyCount if it has none of them.
std::size_t keyOf(const Line& line) {
    const auto isKey = [&](const DeviceKey& key) {
        return KnownName{key.name, true}.isNameOf(line.name.c_str());
    };
    const auto* const found =
        std::find_if(std::begin(Inventory::kDeviceKeys), std::end(Inventory::kDeviceKeys), isKey);
    return static_cast<std::size_t>(found - std::begin(Inventory::kDeviceKeys));
}

// The number of the device entry that the key belongs to.
long long numberOf(const Line& line) {
    return std::strtoll(std::strrchr(line.name.c_str(), '.') + 1, nullptr, 10);
}

// The device entries that are in the file, by their numbers.
std::map<long long, Keys> collectEntries(const Document& detection, const Line& section) {
    std::map<long long, Keys> entries;
    for (const Line& line : detection.getLines(section)) {
        const std::size_t key = line.isEntry() && !line.isRepeated() ? keyOf(line) : kKeyCount;
        if (key != kKeyCount) entries[numberOf(line)][key] = &line;
    }
    return entries;
}

CString describe(long long entry) {
    CString text;
    text.Assign("device entry " + std::to_string(entry) + " ");
    return text;
}

// The line of the first key that the device entry has.
unsigned lineOf(const Keys& keys) {
    unsigned first = UINT_MAX;
    for (const Line* line : keys)
        if (line) first = std::min(first, line->number);
    return first;
}

// The total is read in decimal.
bool isNumber(const char* text) {
    while (std::isspace(static_cast<unsigned char>(*text))) ++text;
    if (*text == '+' || *text == '-') ++text;
    return std::isdigit(static_cast<unsigned char>(*text)) != 0;
}

Lack findLackOfTotal(const std::map<long long, Keys>& entries, const Line& line) {
    const int total = std::max(0, line.value.ToInt());
    const auto beyond = entries.lower_bound(total);
    const int missing = total - static_cast<int>(std::distance(entries.begin(), beyond));
    if (missing > 0)
        return {CString(missing) + " of " + CString(total) + " device entries " +
                    (missing == 1 ? "is" : "are") + " not in the file",
                line.number};
    if (beyond == entries.end()) return {};
    return {describe(beyond->first) + "is not below " + Inventory::kTotalKey,
            lineOf(beyond->second)};
}

// Calls the function with each key of each device entry, up to the first lack that it returns.
template <class Find>
Lack findInEntries(const std::map<long long, Keys>& entries, Find find) {
    for (const auto& [number, keys] : entries) {
        for (std::size_t key = 0; key != kKeyCount; ++key) {
            const Lack lack = find(number, keys, key);
            if (!lack.reason.IsEmpty()) return lack;
        }
    }
    return {};
}

Lack findMissingKey(const std::map<long long, Keys>& entries) {
    bool isOwed[kKeyCount];
    for (std::size_t key = 0; key != kKeyCount; ++key)
        isOwed[key] = isNeeded(key) || std::any_of(entries.begin(), entries.end(),
                                                   [&](auto& e) { return e.second[key]; });
    return findInEntries(entries, [&](long long number, const Keys& keys, std::size_t key) -> Lack {
        if (keys[key] || !isOwed[key]) return {};
        return {describe(number) + "has no " + Inventory::kDeviceKeys[key].name, lineOf(keys)};
    });
}

// `cut` is the last line of the file if it has no line end; otherwise 0.
Lack findBrokenNumber(const std::map<long long, Keys>& entries, unsigned cut) {
    return findInEntries(entries, [&](long long number, const Keys& keys, std::size_t key) -> Lack {
        const Line* const line = keys[key];
        if (!line || !isShown(key)) return {};
        const CString name = Inventory::kDeviceKeys[key].name;
        if (line->number == cut) return {describe(number) + "ends in the middle of " + name, cut};
        if (hasDigits(Inventory::kDeviceKeys[key], line->value.c_str())) return {};
        return {describe(number) + "has no digits in " + name, line->number};
    });
}
}  // namespace

Lack findLackOfEntries(const Document& detection) {
    if (detection.getLineCount() == 0) return {"empty", 1};
    const Line* const section = detection.findSection(Inventory::kDeviceSection);
    if (!section) return {CString("no section [") + Inventory::kDeviceSection + "]", 1};
    const Line* const total = detection.findEntry(section, Inventory::kTotalKey);
    if (total && isNumber(total->value.c_str())) return {};
    return {CString("no ") + Inventory::kTotalKey, total ? total->number : section->number};
}

Lack findLack(const Document& detection, bool endsInLine) {
    Lack lack = findLackOfEntries(detection);
    if (!lack.reason.IsEmpty()) return lack;
    const Line* const section = detection.findSection(Inventory::kDeviceSection);
    const Line* const total = detection.findEntry(section, Inventory::kTotalKey);
    const std::map<long long, Keys> entries = collectEntries(detection, *section);
    lack = findLackOfTotal(entries, *total);
    if (lack.reason.IsEmpty()) lack = findMissingKey(entries);
    const unsigned cut = endsInLine ? detection.getLineCount() : 0;
    if (lack.reason.IsEmpty()) lack = findBrokenNumber(entries, cut);
    if (lack.reason.IsEmpty() && total->number == cut)
        lack = {CString("the file ends in the middle of ") + Inventory::kTotalKey, cut};
    return lack;
}

// Without digits, the number ends at once, or after white space and a sign.
bool hasDigits(const DeviceKey& key, const char* text) {
    const char* const end = Inventory::readNumber(key, text).rest;
    return end != text && std::isxdigit(static_cast<unsigned char>(end[-1])) != 0;
}
