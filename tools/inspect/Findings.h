#pragma once

#include <cstdio>
#include <utility>
#include <vector>

#include "util/CString.h"

/// What is wrong in one file, each finding with the number of its line.
///
///     Findings findings(path);
///     findings.add(12, "section [X] is missing");
///     findings.print(stdout);  // PATH:12: section [X] is missing
class Findings {
public:
    explicit Findings(CString file) : path(std::move(file)) {}
    Findings(const Findings&) = delete;
    Findings& operator=(const Findings&) = delete;

    struct Finding {
        unsigned line = 0;  ///< Counted from 1.
        CString text;
    };

    void add(unsigned line, CString text) { items.push_back({line, std::move(text)}); }
    std::size_t getCount() const { return items.size(); }
    /// All of them, in the order of the lines of the file.
    const std::vector<Finding>& getSorted();
    /// Prints one line for each, in the same order.
    void print(std::FILE* stream);

private:
    CString path;
    std::vector<Finding> items;
};
