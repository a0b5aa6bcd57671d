#include "explain/Warnings.h"

#include <cstdio>

#include "inspect/inspect.h"
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

void Warnings::printSystemFile(const CString& systemID) {
    if (!systemIDs.insert(systemID).second) return;
    CString paths[2];
    const unsigned total = findSystemFiles(systemID, paths);
    for (unsigned i = 0; i != total; ++i) {
        if (!systemPaths.insert(paths[i]).second) continue;
        Findings findings(paths[i]);
        if (inspectFile(paths[i], findings))
            inspectSystemFile(Document(paths[i]), adapters, findings);
        print(findings);
    }
}
