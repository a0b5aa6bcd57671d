#include "explain/Warnings.h"

#include <algorithm>
#include <cstdio>

#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

namespace {
// Returns false if the list has the text already.
bool addIfNew(List<CString>& list, const CString& text) {
    if (std::find(list.begin(), list.end(), text) != list.end()) return false;
    list.append(text);
    return true;
}
}  // namespace

Warnings::Warnings(const CString& path)
    : configurationPath(path),
      configuration(path),
      systems(configuration, CustomPCIDeviceList::kSystemMapSection, isAnyKey),
      adapters(configuration, CustomPCIDeviceList::kMapSection, isDeviceID) {}

void Warnings::print(Findings& findings) {
    if (findings.getCount() == 0) return;
    if (count == 0) std::printf("\n");
    findings.print();
    count += findings.getCount();
}

void Warnings::printConfiguration() {
    Findings findings(configurationPath);
    if (inspectFile(configurationPath, findings))
        inspectConfiguration(configuration, systems, adapters, findings);
    print(findings);
}

void Warnings::printSystemFile(const CString& systemID) {
    if (!addIfNew(systemIDs, systemID)) return;
    CString paths[2];
    const unsigned total = findSystemFiles(systemID, paths);
    for (unsigned i = 0; i != total; ++i) {
        if (!addIfNew(systemPaths, paths[i])) continue;
        Findings findings(paths[i]);
        if (inspectFile(paths[i], findings))
            inspectSystemFile(Document(paths[i]), adapters, findings);
        print(findings);
    }
}
