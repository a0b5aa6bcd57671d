#include "explain/Overview.h"

#include <algorithm>
#include <cstdio>

#include "common/printable.h"
#include "explain/columns.h"

void Overview::add(const Machine& machine) {
    Row& row = rows.emplace_back();
    row.path = printable(machine.path);
    row.machineType = orNone(printable(machine.machineType));
    row.systemID = machine.systemID;
    row.counts = machine.counts;
    row.warnings = machine.findings.getCount();
    row.isFine = machine.isFine();
}

Overview::Row Overview::sum() const {
    Row total;
    total.path =
        CString(static_cast<unsigned long>(rows.size())) + (rows.size() == 1 ? " file" : " files");
    for (const Row& row : rows) {
        total.counts += row.counts;
        total.warnings += row.warnings;
    }
    return total;
}

Overview::Widths Overview::measure(const Row& total) const {
    Widths widths;
    widths.path = std::max(widths.path, countCharacters(total.path));
    for (const Row& row : rows) {
        widths.path = std::max(widths.path, countCharacters(row.path));
        widen(widths.machineType, row.machineType);
        widen(widths.systemID, printable(row.systemID));
    }
    return widths;
}

void Overview::printRow(const Row& row, const Widths& widths) {
    printColumn(row.path, widths.path);
    printColumn(row.machineType, widths.machineType);
    printColumn(printable(row.systemID), widths.systemID);
    const Counts& counts = row.counts;
    std::printf("%7lld  %5lld  %8lld  %7lld  %6lld  %8lld  %8zu\n", counts.entries, counts.named,
                counts.leftOut, counts.unnamed, counts.absent, counts.onBoard, row.warnings);
}

void Overview::print() const {
    const Row total = sum();
    const Widths widths = measure(total);
    printColumn("File", widths.path);
    printColumn("Machine type", widths.machineType);
    printColumn("System identifier", widths.systemID);
    std::printf("Entries  Named  Left out  Unnamed  Absent  On-board  Warnings\n");
    for (const Row& row : rows) printRow(row, widths);
    printRow(total, widths);
}

void Overview::printSystemFiles(Warnings& warnings) const {
    for (const Row& row : rows) warnings.printSystemFile(row.systemID);
}

bool Overview::isFine() const {
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.isFine; });
}
