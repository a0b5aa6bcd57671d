#include "check-cd/SystemFiles.h"

#include <algorithm>
#include <climits>
#include <set>

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
    for (unsigned i = 0; i != total; ++i) files.push_back({paths[i], order});
    return total != 0;
}

// Several systems may share a file.
void SystemFiles::dropRepeated() {
    std::stable_sort(files.begin(), files.end(),
                     [](const File& a, const File& b) { return a.order < b.order; });
    std::set<CString> paths;
    const auto isRepeated = [&](const File& file) { return !paths.insert(file.path).second; };
    files.erase(std::remove_if(files.begin(), files.end(), isRepeated), files.end());
}
