#include "explain/Warnings.h"

#include <cstdio>

#include "common/files.h"
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

void Warnings::printSystemFile(const CString& systemID) {
    CustomPCIDeviceList inventory;
    inventory.setSystemKeyword(systemID);
    CString asWritten, inLowerCase;
    if (!inventory.getSysINICandidates(asWritten, inLowerCase)) return;
    const CString taken = inventory.getSysINIPathName();
    for (const CString* path : {&asWritten, &inLowerCase}) {
        if (!isThere(*path)) continue;
        Findings findings(*path);
        if (inspectFile(*path, findings)) inspectSystemFile(Document(*path), adapters, findings);
        print(findings);
        if (*path == taken || asWritten == inLowerCase) return;
    }
}
