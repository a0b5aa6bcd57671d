#include "inspect/Findings.h"

#include <algorithm>
#include <cstdio>

#include "common/printable.h"

const std::vector<Findings::Finding>& Findings::getSorted() {
    // Stable: what is found in one line stays in the order in which it was found.
    std::stable_sort(items.begin(), items.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return items;
}

void Findings::print(std::FILE* stream) {
    const CString file = printable(path);
    for (const Finding& item : getSorted())
        std::fprintf(stream, "%s:%u: %s\n", file.c_str(), item.line, printable(item.text).c_str());
}
