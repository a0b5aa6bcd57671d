#include "explain/Machine.h"

#include "explain/inspectNumbers.h"
#include "inspect/Document.h"
#include "inspect/findLack.h"
#include "inspect/inspect.h"

void Counts::operator+=(const Counts& other) {
    entries += other.entries;
    named += other.named;
    leftOut += other.leftOut;
    unnamed += other.unnamed;
    absent += other.absent;
    onBoard += other.onBoard;
}

CString groupOf(const PCIDevice& adapter) {
    const auto* const group = CustomPCIDeviceList::findGroup(adapter.adapterType);
    return group ? group->name : "";
}

bool isOnBoard(const PCIDevice& adapter) {
    return adapter.onBoard == CustomPCIDeviceList::kOnBoard;
}

namespace {
// The adapters that a report of the system has whatever its inventory holds.
std::vector<CString> getAddedAdapters(const CString& configurationPath, const CString& systemID) {
    CustomPCIDeviceList nothing;
    nothing.setMapFileLocation(configurationPath);
    nothing.setSystemKeyword(systemID);
    nothing.sortDevicesByType();
    std::vector<CString> added;
    CString names = nothing.getAllDevices();
    for (CString name = names.StrTok(","); !name.IsEmpty(); name = names.StrTok())
        added.push_back(name);
    return added;
}
}  // namespace

Machine::Machine(const CString& detectionPath, const Copy& copy, ProductCD& cd,
                 Configuration& systemConfiguration)
    : path(detectionPath),
      findings(detectionPath),
      entries(kDetectionCopy),
      positions(""),
      configuration(systemConfiguration) {
    inspect(copy);
    identify(cd);
    takeInventory();
    positions.ReadIniFile(inventory.getSysINIPathName());
    counts.entries = entries.getTotal();
    for (DeviceEntry& entry : entries) label(entry);
    // Nothing is added to a report that there is not.
    if (counts.named != 0) addedAdapters = getAddedAdapters(configuration.path, systemID);
}

CString Machine::getSystemPath() const {
    const bool isRead = !systemFiles.empty() && systemFiles.back()->copy.isWhole();
    return isRead ? systemFiles.back()->path : "";
}

bool Machine::isFine() const { return counts.areComplete() && findings.getCount() == 0; }

const ProductCD::File* Machine::getBrokenFile() const {
    for (const ProductCD::File* file : systemFiles)
        if (file->copy.state == Copy::kBroken) return file;
    return nullptr;
}

void Machine::inspect(const Copy& copy) {
    if (!inspectCopy(copy, findings)) return;
    const Document detection(kDetectionCopy);
    inspectDetectionFile(detection, findings);
    inspectNumbers(entries, detection, findings);
    const Lack lack = findLack(detection, copy.endsInLine);
    if (!lack.reason.IsEmpty()) findings.add(lack.line, lack.reason);
}

void Machine::identify(ProductCD& cd) {
    CIniFile detection(kDetectionCopy);
    machineType = CustomPCIDeviceList::getMachineType(detection);
    serialNumber = detection.ReadString(CustomPCIDeviceList::kSystemSection,
                                        CustomPCIDeviceList::kSerialNumberKey);
    systemID = CustomPCIDeviceList::getSystemID(configuration.iniFile, machineType);
    directory = configuration.iniFile.ReadString(systemID, CustomPCIDeviceList::kDirectoryKey);
    systemFiles = cd.getSystemFiles(systemID);
}

void Machine::takeInventory() {
    inventory.setMapFileLocation(configuration.path);
    inventory.setSystemKeyword(systemID);
    inventory.setInputFile(kDetectionCopy);
    inventory.initialize(
        CustomPCIDeviceList::INIT_FROM_INPUT_FILE | CustomPCIDeviceList::INIT_NAME_ADAPTERS |
        CustomPCIDeviceList::INIT_LABEL_ONBOARD | CustomPCIDeviceList::INIT_COUNT_DUPLICATES);
    inventory.resetList();
    nextAdapter = inventory.getNextDeviceFromList();
}

// Finds the adapter of the entry, or why it has none. All device entries of a gap read as zeros, so
// either each of them has an adapter or none has.
void Machine::label(DeviceEntry& entry) {
    while (nextAdapter && nextAdapter->entryNumber <= entry.last) takeAdapter(entry);
    entry.isLeftOut = !entry.adapter && entry.hasIDs() &&
                      configuration.hasKey(inventory.getDeviceINIFileEntry(entry.device));
    long long& count = entry.adapter     ? counts.named
                       : entry.isLeftOut ? counts.leftOut
                       : entry.device    ? counts.unnamed
                                         : counts.absent;
    count += entry.getCount();
}

void Machine::takeAdapter(DeviceEntry& entry) {
    if (!entry.adapter) entry.adapter = nextAdapter;
    if (isOnBoard(*nextAdapter)) ++counts.onBoard;
    nextAdapter = inventory.getNextDeviceFromList();
}
