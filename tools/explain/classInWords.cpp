#include "explain/classInWords.h"

#include <cstdio>

namespace {
constexpr struct {
    unsigned baseClass;
    const char* words;
} kClasses[] = {
    {0x00, "unclassified device"},
    {0x01, "mass storage controller"},
    {0x02, "network controller"},
    {0x03, "display controller"},
    {0x04, "multimedia controller"},
    {0x05, "memory controller"},
    {0x06, "bridge"},
    {0x07, "communication controller"},
    {0x08, "system peripheral"},
    {0x09, "input device controller"},
    {0x0A, "docking station"},
    {0x0B, "processor"},
    {0x0C, "serial bus controller"},
    {0x0D, "wireless controller"},
    {0x0E, "intelligent controller"},
    {0x0F, "satellite communication controller"},
    {0x10, "encryption controller"},
    {0x11, "signal processing controller"},
    {0x12, "processing accelerator"},
    {0x13, "non-essential instrumentation"},
    {0x40, "coprocessor"},
};
}  // namespace

CString classInWords(std::uint32_t classCode) {
    for (const auto& known : kClasses)
        if (known.baseClass == classCode >> 16) return known.words;
    char text[] = "class 0x00000000";
    std::snprintf(text, sizeof text, "class 0x%06X", static_cast<unsigned>(classCode));
    return text;
}
