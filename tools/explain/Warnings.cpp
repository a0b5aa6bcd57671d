#include "explain/Warnings.h"

#include <algorithm>
#include <cstdio>

#include "common/inspect.h"
#include "pci/CustomPCIDeviceList.h"

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

// Adds the file to those that were inspected. Returns false if it is one of them already.
bool Warnings::addIfNew(const CString& systemPath) {
    if (std::find(systemPaths.begin(), systemPaths.end(), systemPath) != systemPaths.end())
        return false;
    systemPaths.append(systemPath);
    return true;
}

void Warnings::printSystemFile(const CString& systemID) {
    CString paths[2];
    const unsigned total = findSystemFiles(systemID, paths);
    for (unsigned i = 0; i != total; ++i) {
        if (!addIfNew(paths[i])) continue;
        Findings findings(paths[i]);
        if (inspectFile(paths[i], findings))
            inspectSystemFile(Document(paths[i]), adapters, findings);
        print(findings);
    }
}
