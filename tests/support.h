#pragma once

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "util/CString.h"

inline std::string readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// A folder for the files of one test, removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder() { EXPECT_NE(nullptr, mkdtemp(m_path.data())); }
    ~ScratchFolder() { std::filesystem::remove_all(m_path); }
    std::string path(const std::string& name = "") const { return m_path + "/" + name; }
    /// Writes a file, in a new folder if need be, and returns its path.
    std::string file(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

private:
    std::string m_path = testing::TempDir() + "slotrpt-XXXXXX";
};

/// How a process ended, and what it printed. The status of one that a signal ended is negative.
struct Outcome {
    int status;
    std::string out, err;
};

/// Runs the body in a process of its own, which ends with the body's result as its status.
/// `input` is its standard input.
inline Outcome inChild(const std::function<int()>& body, const std::string& input = "") {
    const ScratchFolder folder;
    const std::string in = folder.file("in", input), out = folder.path("out"), err = out + "err";
    std::fflush(nullptr);  // what is buffered here must not be printed there as well
    const pid_t child = fork();
    if (child == 0) {
        const bool isReady = std::freopen(in.c_str(), "r", stdin) &&
                             std::freopen(out.c_str(), "w", stdout) &&
                             std::freopen(err.c_str(), "w", stderr);
        std::exit(isReady ? body() : 97);
    }
    int status = 0;
    waitpid(child, &status, 0);
    status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {status, readFile(out), readFile(err)};
}
