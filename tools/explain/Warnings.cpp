#include "explain/Warnings.h"

#include <cstdio>

#include "inspect/inspect.h"
#include "pci/CustomPCIDeviceList.h"

Warnings::Warnings(ProductCD& productCD, const Configuration& systemConfiguration,
                   std::FILE* output)
    : cd(productCD), stream(output), configuration(systemConfiguration) {}

void Warnings::print(Findings& findings) {
    if (findings.getCount() == 0) return;
    if (count == 0 && stream == stdout) std::printf("\n");
    findings.print(stream);
    count += findings.getCount();
}

void Warnings::printConfiguration() {
    const ProductCD::File& file = cd.getConfiguration();
    Findings findings(file.path);
    if (inspectCopy(file.copy, findings)) inspectConfiguration(configuration, findings);
    print(findings);
}

void Warnings::printSystemFile(const CString& systemID) {
    for (const ProductCD::File* file : cd.getSystemFiles(systemID)) {
        if (!systemPaths.insert(file->path).second) continue;
        Findings findings(file->path);
        if (inspectCopy(file->copy, findings))
            inspectSystemFile(Document(file->path), configuration, findings);
        print(findings);
    }
}
