#include "inspect/Names.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

Names::Names(const Document& document, const CString& section,
             bool (*isCounted)(const CString& key)) {
    const Line* header = document.findSection(section);
    if (!header) return;
    for (const Line& line : document.getLines(*header)) {
        const bool isRead = line.isEntry() && !line.isRepeated();
        if (isRead && !line.value.IsEmpty() && isCounted(line.name)) entries.push_back(&line);
    }
    std::sort(entries.begin(), entries.end(), [](const Line* a, const Line* b) {
        const int order = strcasecmp(a->value.c_str(), b->value.c_str());
        return order != 0 ? order < 0 : a->number < b->number;
    });
}

const Line* Names::find(const CString& name) const {
    const auto found =
        std::lower_bound(begin(), end(), name.c_str(), [](const Line* line, const char* wanted) {
            return strcasecmp(line->value.c_str(), wanted) < 0;
        });
    return found != end() && (*found)->value.EqualsNoCase(name) ? *found : nullptr;
}

bool isDeviceID(const CString& key) {
    const std::string_view text = key.c_str();
    const auto isHexDigit = [](unsigned char c) { return std::isxdigit(c) != 0; };
    return text.size() == 10 && strncasecmp(text.data(), "0x", 2) == 0 &&
           std::all_of(text.begin() + 2, text.end(), isHexDigit);
}
