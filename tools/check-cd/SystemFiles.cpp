#include "check-cd/SystemFiles.h"

#include <algorithm>
#include <climits>
#include <cstddef>

#include "common/inspect.h"
#include "common/makeArray.h"
#include "pci/CustomPCIDeviceList.h"

SystemFiles::SystemFiles(const Names& systems, Findings& findings) {
    const auto total = static_cast<std::size_t>(systems.end() - systems.begin()) + 1;
    files = makeArray<File>(2 * total);  // at most both spellings of each
    for (const Line* system : systems) {
        const CString& identifier = system->value;
        if (systems.find(identifier) != system || identifier.Find("_") < 0) continue;
        if (!addFilesOf(identifier, system->number))
            findings.add(system->number, "system " + identifier + " has no per-system file");
    }
    addFilesOf(CustomPCIDeviceList::kUnknownSystem, UINT_MAX);
    dropRepeated();
}

// Returns whether there is any.
bool SystemFiles::addFilesOf(const CString& system, unsigned order) {
    CString paths[2];
    const unsigned total = findSystemFiles(system, paths);
    for (unsigned i = 0; i != total; ++i) files[count++] = {paths[i], order};
    return total != 0;
}

// Several systems may share a file.
void SystemFiles::dropRepeated() {
    File* const first = files.get();
    const auto sort = [&](auto comesBefore) { std::sort(first, first + count, comesBefore); };
    sort([](const File& a, const File& b) {
        const int order = a.path.Compare(b.path);
        return order != 0 ? order < 0 : a.order < b.order;
    });
    const File* const last = std::unique(
        first, first + count, [](const File& a, const File& b) { return a.path == b.path; });
    count = static_cast<std::size_t>(last - first);
    sort([](const File& a, const File& b) { return a.order < b.order; });
}
