#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// What the fuzz targets share: taking an input apart, scratch files, and the end of a finding.
namespace fuzz {

/// Ends the process as a finding when the claim does not hold.
inline void check(bool holds, const char* claim) {
    if (holds) return;
    std::fprintf(stderr, "Not so: %s\n", claim);
    std::abort();
}

/// The same for two texts that must be one; both are shown.
inline void checkSame(const std::string& want, const std::string& got, const char* what) {
    if (want == got) return;
    std::fprintf(stderr, "%s:\nwant <%s>\n got <%s>\n", what, want.c_str(), got.c_str());
    std::abort();
}

/// The parts of a text between the separators: always one more than there are separators.
inline std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(separator, from)) != std::string::npos;
         from = at + separator.size())
        parts.push_back(text.substr(from, at - from));
    parts.push_back(text.substr(from));
    return parts;
}

/// The input in `count` parts, divided by lines "%%"; parts that it does not have are empty.
inline std::vector<std::string> parts(const std::uint8_t* data, std::size_t size,
                                      std::size_t count) {
    std::vector<std::string> all = split(std::string(data, data + size), "%%\n");
    all.resize(count);
    return all;
}

/// The text without NULs, which no string of the system can hold.
inline std::string withoutNULs(std::string text) {
    std::string kept;
    for (const char c : text)
        if (c) kept += c;
    return kept;
}

/// A folder for the files of one process, in memory where possible, removed at its end.
class Scratch {
public:
    Scratch() {
        const char* parent = std::getenv("TMPDIR");
        m_path = (parent ? parent : "/dev/shm") + std::string("/slotrpt-fuzz-XXXXXX");
        check(mkdtemp(m_path.data()) != nullptr, "a scratch folder can be made");
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string path(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

inline void putFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string getFile(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

}  // namespace fuzz
