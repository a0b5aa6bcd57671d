#include "check-cd/findSystemFiles.h"

#include <algorithm>
#include <set>

#include "pci/CustomPCIDeviceList.h"

std::vector<const ProductCD::File*> findSystemFiles(ProductCD& cd, const Names& systems,
                                                    Findings& findings) {
    std::vector<const ProductCD::File*> files;
    std::set<const ProductCD::File*> known;  // several systems may share a file
    // Returns whether the system has any.
    const auto addFilesOf = [&](const CString& system) {
        const auto found = cd.getSystemFiles(system);
        for (const ProductCD::File* file : found)
            if (known.insert(file).second) files.push_back(file);
        return !found.empty();
    };
    std::vector<const Line*> entries(systems.begin(), systems.end());
    std::sort(entries.begin(), entries.end(),
              [](const Line* a, const Line* b) { return a->number < b->number; });
    for (const Line* entry : entries) {
        const CString& system = entry->value;
        // Each identifier once. One without "_" is a finding of another check.
        if (systems.find(system) != entry || system.Find("_") < 0) continue;
        if (!addFilesOf(system))
            findings.add(entry->number, "system " + system + " has no per-system file");
    }
    addFilesOf(CustomPCIDeviceList::kUnknownSystem);
    return files;
}
