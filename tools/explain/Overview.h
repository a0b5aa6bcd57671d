#pragma once

#include <vector>

#include "explain/Machine.h"
#include "explain/Warnings.h"
#include "util/CString.h"

/// Several machines, a row for each.
class Overview {
public:
    void add(const Machine& machine);
    /// Prints the rows and their totals.
    void print() const;
    /// Prints what is wrong with the per-system files.
    void printSystemFiles(Warnings& warnings) const;
    /// Whether each machine is complete and has no warning.
    bool isFine() const;

private:
    struct Row {
        CString path, machineType, systemID;
        Counts counts;
        std::size_t warnings = 0;
        bool isFine = false;
    };
    // The widths of the first columns. At first, those of their heads.
    struct Widths {
        int path = 4, machineType = 12, systemID = 17;
    };

    Row sum() const;
    Widths measure(const Row& total) const;
    static void printRow(const Row& row, const Widths& widths);

    std::vector<Row> rows;
};
