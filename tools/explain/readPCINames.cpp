#include "explain/readPCINames.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "util/MyFileIO.h"

namespace {
constexpr long kNoID = -1;

// A line "1a2b  Name" of the list, from its ID on.
struct NamedID {
    long id = kNoID;  // kNoID if the line has another form
    CString name;

    explicit NamedID(const char* line) {
        for (int i = 0; i < 4; ++i)
            if (!std::isxdigit(static_cast<unsigned char>(line[i]))) return;
        if (line[4] != ' ') return;
        id = std::strtol(line, nullptr, 16);
        name = line + 5;
        name.Trim();
    }
};

// Gives the vendor's name to the pairs with its ID.
void nameVendor(Pairs& pairs, const NamedID& vendor) {
    if (vendor.id == kNoID) return;
    const auto id = static_cast<std::uint16_t>(vendor.id);
    const auto end = pairs.getAll().end();
    for (auto pair = pairs.getAll().lower_bound({id, 0}); pair != end && pair->first.first == id;
         ++pair)
        pair->second.vendorName = vendor.name;
}

void nameDevice(Pairs& pairs, long vendorID, const NamedID& device) {
    if (vendorID == kNoID || device.id == kNoID) return;
    const auto pair = pairs.getAll().find(
        {static_cast<std::uint16_t>(vendorID), static_cast<std::uint16_t>(device.id)});
    if (pair != pairs.getAll().end()) pair->second.deviceName = device.name;
}
}  // namespace

// A vendor has a line of its own, and its devices stand below it, each after one tab. Lines after
// two tabs are subsystems, and lines of another kind begin the list of classes.
void readPCINames(Pairs& pairs, const CString& path) {
    CMyFileIO file;
    file.OpenFile(path);
    long vendorID = kNoID;
    for (CString line; file.ReadString(line);) {
        line.TrimRight(CString::kBlanks);
        if (line.IsEmpty() || line[0] == '#') continue;
        if (line[0] == '\t') {
            nameDevice(pairs, vendorID, NamedID(line.c_str() + 1));
        } else {
            const NamedID vendor(line.c_str());
            nameVendor(pairs, vendor);
            vendorID = vendor.id;
        }
    }
}
