#pragma once

#include <algorithm>
#include <climits>
#include <string>

/// The rules that several models need, on std::string.
namespace model {

constexpr std::size_t npos = std::string::npos;
constexpr char kBlankSet[] = " \t\n";

inline std::string trimLeft(std::string text, const std::string& set = kBlankSet) {
    return text.erase(0, std::min(text.find_first_not_of(set), text.size()));
}

inline std::string trimRight(std::string text, const std::string& set = kBlankSet) {
    return text.erase(text.find_last_not_of(set) + 1);
}

inline std::string trim(const std::string& text, const std::string& set = kBlankSet) {
    return trimRight(trimLeft(text, set), set);
}

inline std::string upper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

inline std::string lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

/// The number that the text begins with, the nearest int when it is none.
inline int toInt(const std::string& text) {
    std::size_t i = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    const bool negative = text[i] == '-';
    if (text[i] == '-' || text[i] == '+') ++i;
    long long number = 0;
    for (; text[i] >= '0' && text[i] <= '9'; ++i)
        number = std::min(number * 10 + (text[i] - '0'), -static_cast<long long>(INT_MIN));
    if (negative) number = -number;
    return static_cast<int>(std::min<long long>(number, INT_MAX));
}

inline bool startsWith(const std::string& text, const std::string& head) {
    return !head.empty() && text.compare(0, head.size(), head) == 0;
}

inline bool endsWith(const std::string& text, const std::string& tail) {
    return !tail.empty() && text.size() >= tail.size() &&
           text.compare(text.size() - tail.size(), npos, tail) == 0;
}

/// The four parts of a path.
struct PathParts {
    std::string drive, directory, name, extension;

    explicit PathParts(const std::string& path) {
        std::string rest = trim(path);
        // npos + 1 is 0: a part whose mark is missing is empty.
        drive = rest.substr(0, rest.find(':') + 1);
        rest.erase(0, drive.size());
        directory = rest.substr(0, rest.rfind('/') + 1);
        rest.erase(0, directory.size());
        const std::size_t dot = rest.rfind('.');
        const bool hasExtension = dot != npos && dot + 4 >= rest.size();
        name = hasExtension ? rest.substr(0, dot) : rest;
        if (hasExtension) extension = rest.substr(dot);
    }
};

}  // namespace model
