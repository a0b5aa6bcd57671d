#include "explain/Machine.h"

#include "common/files.h"
#include "explain/inspectNumbers.h"
#include "inspect/Document.h"
#include "inspect/inspect.h"

void Counts::operator+=(const Counts& other) {
    entries += other.entries;
    named += other.named;
    leftOut += other.leftOut;
    unnamed += other.unnamed;
    missing += other.missing;
    onBoard += other.onBoard;
}

namespace {
// The adapters that a report of the system has whatever its inventory holds.
CString getAddedAdapters(const CString& configurationPath, const CString& systemID) {
    CustomPCIDeviceList nothing;
    nothing.setMapFileLocation(configurationPath);
    nothing.setSystemKeyword(systemID);
    nothing.sortDevicesByType();
    return nothing.getAllDevices();
}
}  // namespace

Machine::Machine(const CString& detectionPath, ConfigurationFile& configurationFile)
    : path(detectionPath),
      findings(detectionPath),
      entries(detectionPath),
      positions(""),
      configuration(configurationFile.document) {
    inspect();
    identify(configurationFile.path);
    takeInventory(configurationFile.path);

    // A per-system file that whyUnreadable() refuses is not a fault. takeLoadFault() gives the
    // first fault, and this file is loaded last, by the inventory and here. If the fault is this
    // file's, all others were read whole.
    const CString systemPath = inventory.getSysINIPathName();
    positions.ReadIniFile(systemPath);
    fault = takeLoadFault();
    if (fault == systemPath + ": " + whyUnreadable(systemPath)) fault.Empty();

    counts.entries = entries.getTotal();
    for (Entry& entry : entries) label(entry);
}

void Machine::inspect() {
    if (!inspectFile(path, findings)) return;
    const Document detection(path);
    inspectDetectionFile(detection, findings);
    inspectNumbers(entries, detection, findings);
}

void Machine::identify(const CString& configurationPath) {
    CIniFile detection(path);
    machineType = CustomPCIDeviceList::getMachineType(detection);
    systemID = CustomPCIDeviceList::getSystemID(configuration, machineType);
    directory = configuration.ReadString(systemID, CustomPCIDeviceList::kDirectoryKey);
    addedAdapters = getAddedAdapters(configurationPath, systemID);
}

void Machine::takeInventory(const CString& configurationPath) {
    inventory.setMapFileLocation(configurationPath);
    inventory.setSystemKeyword(systemID);
    inventory.setInputFile(path);
    inventory.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE |
                         CustomPCIDeviceList::INIT_NAME_ADAPTERS |
                         CustomPCIDeviceList::INIT_LABEL_ONBOARD);
    inventory.resetList();
    nextAdapter = inventory.getNextDeviceFromList();
}

// Finds the adapter of the entry, or why it has none. All device entries of a gap read as zeros, so
// either each of them has an adapter, of the same name, or none has.
void Machine::label(Entry& entry) {
    while (nextAdapter && nextAdapter->entryNumber <= entry.last) takeAdapter(entry);
    if (entry.adapter) return;
    CString line;
    entry.isLeftOut = entry.hasIDs() &&
                      configuration.FindItem(CustomPCIDeviceList::kMapSection,
                                             inventory.getDeviceINIFileEntry(entry.device), line);
    long long& count = entry.isLeftOut ? counts.leftOut
                       : entry.device  ? counts.unnamed
                                       : counts.missing;
    count += entry.getCount();
}

void Machine::takeAdapter(Entry& entry) {
    entry.adapter = nextAdapter;
    ++counts.named;
    if (nextAdapter->onBoard == "TRUE") ++counts.onBoard;
    nextAdapter = inventory.getNextDeviceFromList();
}
