#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "util/CString.h"

// A fuzz target is a list of properties: functions that are named for what must hold, whatever the
// input is. A claim that does not hold is printed with the name of its property.
#define CHECK(claim) check(claim, #claim, __func__)
#define SAME(a, b) same(a, b, "same(" #a ", " #b ")", __func__)

using Texts = std::vector<std::string>;
using Strings = std::vector<CString>;

inline void check(bool holds, const char* claim, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "%s: %s does not hold\n", property, claim);
    std::abort();
}

inline void same(const CString& a, const CString& b, const char* claim, const char* property) {
    if (!std::strcmp(a.c_str(), b.c_str())) return;
    std::fprintf(stderr, "\"%s\"\n\"%s\"\n", a.c_str(), b.c_str());
    check(false, claim, property);
}

// The parts of an input between the separators, and empty ones up to `least`.
inline Texts parts(std::string input, const std::string& separator, std::size_t least = 1) {
    Texts all;
    for (std::size_t at; (at = input.find(separator)) != input.npos;) {
        all.push_back(input.substr(0, at));
        input.erase(0, at + separator.size());
    }
    all.push_back(input);
    all.resize(std::max(all.size(), least));
    return all;
}

inline Strings strings(const Texts& texts) {
    Strings all;
    for (const std::string& text : texts) all.push_back(text.c_str());
    return all;
}

// The path of a file in TMPDIR, a folder that no other program uses at the same time.
inline std::string scratch(const std::string& name) { return std::getenv("TMPDIR") + ("/" + name); }

inline std::string getFile(const std::string& path) {
    std::ifstream file(path);
    CHECK(file.is_open());
    return {std::istreambuf_iterator<char>(file), {}};
}
