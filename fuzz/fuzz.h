#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "util/CString.h"

// A fuzz target is a list of properties: functions that are named for what must hold, whatever the
// input is. The stack of a finding names the property that does not hold.
using Texts = std::vector<std::string>;
using Strings = std::vector<CString>;

inline void check(bool holds) {
    if (!holds) std::abort();
}

inline void same(const CString& a, const CString& b) { check(!std::strcmp(a.c_str(), b.c_str())); }

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

inline std::string scratch(const std::string& name) { return std::getenv("TMPDIR") + ("/" + name); }

inline std::string getFile(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}
