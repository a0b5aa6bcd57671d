#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "util/CString.h"

/// What is wrong in one file, each finding with the number of its line.
///
///     Findings findings(path);
///     findings.add(12, "section [X] is missing");
///     findings.print();  // PATH:12: section [X] is missing
class Findings {
public:
    explicit Findings(CString file) : path(std::move(file)) {}
    Findings(const Findings&) = delete;
    Findings& operator=(const Findings&) = delete;

    /// Lines are counted from 1.
    void add(unsigned line, CString text) { items.push_back({line, std::move(text)}); }
    std::size_t getCount() const { return items.size(); }
    /// Prints one line for each on standard output, in the order of the lines of the file.
    void print();

private:
    struct Finding {
        unsigned line = 0;
        CString text;
    };

    CString path;
    std::vector<Finding> items;
};
