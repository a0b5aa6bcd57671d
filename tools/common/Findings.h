#pragma once

#include <memory>
#include <utility>

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

    void add(unsigned line, CString text);  ///< Lines are counted from 1.
    unsigned getCount() const { return count; }
    /// Prints one line for each on standard output, in the order of the lines of the file.
    void print();

private:
    struct Finding {
        unsigned line = 0;
        CString text;
    };

    void grow();

    CString path;
    std::unique_ptr<Finding[]> items;  // `room` of them, of which the first `count` are used
    unsigned count = 0;
    unsigned room = 0;
};
