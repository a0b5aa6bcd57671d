#pragma once

#include <sys/types.h>

#include <atomic>
#include <climits>
#include <csignal>
#include <cstddef>
#include <vector>

#include "common/ProductCD.h"
#include "fleet/Conversion.h"
#include "fleet/Inputs.h"
#include "fleet/SharedArray.h"
#include "util/CString.h"
#include "util/IniFile.h"

/// Converts detection files in several processes at a time. Each process takes the next file from a
/// counter that all share, and notes its result. What no process has noted has failed.
class Run {
public:
    static constexpr std::size_t kMaxJobs = 256;

    Run(const std::vector<Input>& files, std::size_t jobCount, ProductCD& cd,
        CIniFile& configuration);
    ~Run() { abandon(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Converts all files. If `isWatched`, shows the progress on standard error. Returns "", or why
    /// no process can be started: then some files were not converted. If a signal asks this program
    /// to end, does not return.
    CString convertAll(bool isWatched);
    /// How many files have a result that the function accepts.
    std::size_t count(bool (*isCounted)(const Result& result));

private:
    // A place in which one process at a time converts files. When it ends early, another one goes
    // on. In a new job, all bytes are 0.
    struct Job {
        pid_t process;           // 0: none
        bool hasBegun;           // the process takes files
        std::size_t current;     // the file that it has taken last
        char partial[PATH_MAX];  // the report that it writes; "" if none
    };

    bool isAnyRunning();
    void reap(Job& job);
    void start(Job& job);
    [[noreturn]] void work(Job& job);
    void showProgress();
    void abandon();
    [[noreturn]] void endBy(int signal, const sigset_t& blocked);
    void failRest();

    const std::vector<Input>& files;
    ProductCD& cd;
    CIniFile& configuration;
    SharedArray<Job> jobs;
    SharedArray<Result> results;                 // of the files
    SharedArray<std::atomic<std::size_t>> next;  // the only element is the next file to take
    CString startError;                          // why no process can be started; "" if one can
};
