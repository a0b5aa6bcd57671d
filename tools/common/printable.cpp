#include "common/printable.h"

#include <climits>
#include <cstdio>
#include <cstring>

namespace {
bool isContinuation(char c) { return (c & 0xC0) == 0x80; }

struct SecondBytes {
    unsigned char lead, first, last;
};
// The lead bytes after which only some continuation bytes may follow.
constexpr SecondBytes kSecondBytes[] = {
    {0xC2, 0xA0, 0xBF},  // U+0080 to U+009F are control characters: some begin terminal commands
    {0xE0, 0xA0, 0xBF},  // a longer form of a character of two bytes
    {0xED, 0x80, 0x9F},  // surrogates
    {0xF0, 0x90, 0xBF},  // a longer form of a character of three bytes
    {0xF4, 0x80, 0x8F},  // above U+10FFFF
};

bool canFollow(unsigned char lead, unsigned char second) {
    for (const SecondBytes& row : kSecondBytes)
        if (row.lead == lead) return second >= row.first && second <= row.last;
    return true;
}

// The length in bytes of the character at `p`; 0 when a terminal cannot show it as it is.
std::size_t shownLength(const char* p) {
    const auto lead = static_cast<unsigned char>(*p);
    if (lead < 0x80) return lead >= ' ' && lead != 0x7F ? 1 : 0;
    const std::size_t length = lead < 0xC2   ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(p[i])) return 0;
    return canFollow(lead, static_cast<unsigned char>(p[1])) ? length : 0;
}
}  // namespace

CString printable(const CString& text) {
    constexpr unsigned kEscapeLength = 4;
    const unsigned length = text.GetLength();
    if (length > INT_MAX / kEscapeLength - 1) CString::OutOfMemory();
    CString result;
    char* end = result.GetBuffer(length * kEscapeLength + 1);  // + 1, since 0 would not lock it
    for (const char* p = text.c_str(); *p;) {
        if (const std::size_t shown = shownLength(p)) {
            std::memcpy(end, p, shown);
            end += shown;
            p += shown;
        } else {
            end += std::sprintf(end, "\\x%02X",
                                static_cast<unsigned>(static_cast<unsigned char>(*p++)));
        }
    }
    *end = '\0';
    result.ReleaseBuffer();
    return result;
}

int countCharacters(const CString& printableText) {
    int characters = 0;
    for (const char* p = printableText.c_str(); *p; ++p) characters += !isContinuation(*p);
    return characters;
}
