#include "check-cd/SystemFiles.h"

#include <algorithm>
#include <climits>
#include <cstddef>

#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

SystemFiles::SystemFiles(const Names& systems, Findings& findings) {
    for (const Line* system : systems) {
        const CString& identifier = system->value;
        // Each identifier once. One without "_" is a finding of another check.
        if (systems.find(identifier) != system || identifier.Find("_") < 0) continue;
        if (!addFilesOf(identifier, system->number))
            findings.add(system->number, "system " + identifier + " has no per-system file");
    }
    addFilesOf(CustomPCIDeviceList::kUnknownSystem, UINT_MAX);  // after all systems of the map
    dropRepeated();
}

// Returns whether there is any.
bool SystemFiles::addFilesOf(const CString& system, unsigned order) {
    CString paths[2];
    const unsigned total = findSystemFiles(system, paths);
    for (unsigned i = 0; i != total; ++i) files.append({paths[i], order});
    return total != 0;
}

// Several systems may share a file.
void SystemFiles::dropRepeated() {
    const auto sort = [&](auto comesBefore) {
        std::stable_sort(files.begin(), files.end(), comesBefore);
    };
    sort([](const File& a, const File& b) {
        const int order = a.path.Compare(b.path);
        return order != 0 ? order < 0 : a.order < b.order;
    });
    const File* const last = std::unique(
        files.begin(), files.end(), [](const File& a, const File& b) { return a.path == b.path; });
    files.cut(static_cast<std::size_t>(last - files.begin()));
    sort([](const File& a, const File& b) { return a.order < b.order; });
}
