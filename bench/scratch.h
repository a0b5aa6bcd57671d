#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "util/CString.h"

/// A file in the temporary folder, removed again with the object.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& text) {
        static int number = 0;
        m_path = std::filesystem::temp_directory_path() /
                 ("slotrpt_bench." + std::to_string(getpid()) + "." + std::to_string(number++));
        std::ofstream(m_path) << text;
    }
    ~ScratchFile() { std::filesystem::remove(m_path); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    CString path() const { return m_path.c_str(); }

private:
    std::filesystem::path m_path;
};
