#include "common/Findings.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "common/makeArray.h"
#include "common/printable.h"

void Findings::add(unsigned line, CString text) {
    if (count == room) grow();
    items[count++] = {line, std::move(text)};
}

void Findings::grow() {
    room = room ? 2 * room : 16;
    auto larger = makeArray<Finding>(room);
    std::move(items.get(), items.get() + count, larger.get());
    items = std::move(larger);
}

void Findings::print() {
    // Stable: what is found in one line stays in the order in which it was found.
    std::stable_sort(items.get(), items.get() + count,
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    const CString file = printable(path);
    for (unsigned i = 0; i != count; ++i)
        std::printf("%s:%u: %s\n", file.c_str(), items[i].line, printable(items[i].text).c_str());
}
