#include "explain/columns.h"

#include <algorithm>
#include <cstdio>

#include "common/printable.h"

void widen(int& width, const CString& text) {
    constexpr int kMaxWidth = 32;
    const int characters = countCharacters(text);
    if (characters <= kMaxWidth) width = std::max(width, characters);
}

void printColumn(const CString& text, int width) {
    std::printf("%s%*s", text.c_str(), std::max(0, width - countCharacters(text)) + 2, "");
}
