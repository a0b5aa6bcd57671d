#include "inspect/Findings.h"

#include <algorithm>
#include <cstdio>

#include "common/printable.h"

void Findings::print() {
    // Stable: what is found in one line stays in the order in which it was found.
    std::stable_sort(items.begin(), items.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    const CString file = printable(path);
    for (const Finding& item : items)
        std::printf("%s:%u: %s\n", file.c_str(), item.line, printable(item.text).c_str());
}
