#include "pci/CustomPCIDeviceList.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>
#include <utility>

#include "util/IniFile.h"
#include "util/MyFileIO.h"

namespace {
constexpr const char* kCDDirectory = "/rwise/ini/";

// Whether a key of a device entry has this name.
bool isDeviceKey(std::string_view name) {
    CString wanted;
    wanted.Assign(name);
    for (const DeviceKey& key : CustomPCIDeviceList::kDeviceKeys)
        if (wanted.EqualsNoCase(key.name)) return true;
    return false;
}

// The value of a digit or letter. 36 for any other character.
unsigned digitValue(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    const int lower = std::tolower(static_cast<unsigned char>(c));
    return lower >= 'a' && lower <= 'z' ? static_cast<unsigned>(lower - 'a' + 10) : 36;
}

// Skips white space and a sign. Returns whether the sign is a minus.
bool skipSign(const char*& text) {
    while (std::isspace(static_cast<unsigned char>(*text))) ++text;
    const bool isNegative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    return isNegative;
}

// Skips the prefix of a hexadecimal number. Returns the base: the one given or, if that is 0, the
// one that the prefix tells.
unsigned skipPrefix(const char*& text, unsigned base) {
    const bool isPrefixed =
        text[0] == '0' && (text[1] == 'x' || text[1] == 'X') && digitValue(text[2]) < 16;
    if (isPrefixed && (base == 0 || base == 16)) {
        text += 2;
        return 16;
    }
    if (base != 0) return base;
    return *text == '0' ? 8 : 10;
}

void setField(PCIDevice& device, const DeviceKey& key, std::uint32_t number) {
    if (key.field)
        device.*key.field = static_cast<std::uint16_t>(number);
    else
        device.*key.wideField = number;
}

// Whether the file may lack this device entry: the IDs of a missing one read as 0.
bool readsAsMissing(const PCIDevice& device) {
    return device.vendorID == 0 && device.deviceID == 0;
}

// Whether the device is at this "bus,device" position. A missing part counts as 0.
bool isPositionOf(const PCIDevice& device, CString position) {
    CString parts[2];
    position.ParseTokens(parts, 2, ",");
    return parts[0].ToInt() == device.busNumber && parts[1].ToInt() == device.deviceNumber;
}

// Whether the device is at one of the first positions of a list separated by ";".
bool isListed(const PCIDevice& device, CString positions) {
    CString listed[CustomPCIDeviceList::kMaxPositions];
    const unsigned total = positions.ParseTokens(listed, CustomPCIDeviceList::kMaxPositions, ";");
    return std::any_of(listed, listed + total,
                       [&](const CString& position) { return isPositionOf(device, position); });
}

// The next item after this one that has the same name. Null if there is none.
PCIDeviceItem* nextOfName(const PCIDeviceItem* item) {
    PCIDeviceItem* other = item->next;
    while (other && other->adapterName != item->adapterName) other = other->next;
    return other;
}

// Counts the item and the later ones of its name, and gives each of them the count.
void countName(PCIDeviceItem* first) {
    PCIDeviceItem* last = first;
    std::int32_t count = 1;
    while (PCIDeviceItem* next = nextOfName(last)) {
        last = next;
        ++count;
    }
    // Up to the last one, since a search for another would go through the rest of the list again.
    for (PCIDeviceItem* item = first; item != last; item = nextOfName(item)) item->count = count;
    last->count = count;
}

// Numbers the item and the later ones of its name, but no more of them than its count says: the
// caller may have set a lower count.
void numberName(PCIDeviceItem* first) {
    first->instance = 1;
    PCIDeviceItem* item = first;
    for (std::int32_t number = 2; number <= first->count && (item = nextOfName(item)); ++number)
        item->instance = number;
}

void addName(CString& names, const CString& name) { names.AddToken(name, ","); }
}  // namespace

// ---------------------------------------------------------------- Life and set-up

CustomPCIDeviceList::CustomPCIDeviceList() = default;

CustomPCIDeviceList::~CustomPCIDeviceList() {
    if (inputFile) inputFile->Flush();
    delete inputFile;
}

CString CustomPCIDeviceList::getCDPathName(CString fileName) {
    return CString(std::getenv(kCDRootVariable)) + kCDDirectory + fileName;
}

CString CustomPCIDeviceList::getConfigurationPathName() { return getCDPathName("syscfg.ini"); }

CString CustomPCIDeviceList::getMachineType(CIniFile& detection) {
    return detection.ReadString(kSystemSection, kMachineTypeKey);
}

CString CustomPCIDeviceList::getSystemID(CIniFile& configuration, const CString& machineType) {
    CString systemID = configuration.ReadString(kSystemMapSection, machineType);
    if (systemID.IsEmpty()) systemID = kUnknownSystem;
    return systemID;
}

void CustomPCIDeviceList::setMapFileLocation(CString path) { mapFileLocation = std::move(path); }

void CustomPCIDeviceList::setSystemKeyword(CString systemID) {
    systemKeyword = std::move(systemID);
}

void CustomPCIDeviceList::setInputFile(CString path) {
    if (!inputFile) inputFile = CString::Required(new (std::nothrow) CIniFile(std::move(path)));
}

// Reads the number as strtoul does, but strtoul clamps a number that is too wide, and a device
// entry must keep its low bits.
CustomPCIDeviceList::DeviceNumber CustomPCIDeviceList::readNumber(const DeviceKey& key,
                                                                  const char* text) {
    const bool isNegative = skipSign(text);
    const unsigned base = skipPrefix(text, key.base);
    const std::uint64_t limit = (std::uint64_t{1} << key.bits) - 1;
    std::uint64_t number = 0;
    bool isTooWide = false;
    for (; digitValue(*text) < base; ++text) {
        number = number * base + digitValue(*text);
        isTooWide = isTooWide || number > limit;
    }
    if (isNegative) {
        number = -number;
        isTooWide = isTooWide || number != 0;  // no negative number fits
    }
    return {static_cast<std::uint32_t>(number & limit), text, isTooWide};
}

bool CustomPCIDeviceList::initialize(int flags) {
    if (flags & INIT_FROM_INPUT_FILE) readFromInputFile = true;
    if ((flags & ~INIT_FROM_INPUT_FILE) == 0) return scanPCIBusAndCreateList();

    if (flags & INIT_NAME_ADAPTERS) getNamedAdapters();
    if (flags & INIT_LABEL_ONBOARD) {
        if (!head) return false;
        labelOnBoardAdapters();
    }
    if (flags & INIT_COUNT_DUPLICATES) {
        if (!head) scanPCIBusAndCreateList();  // the base class's source, which is empty
        countDuplicateAdapters();
    }
    return true;
}

// ---------------------------------------------------------------- The detection file

PCIDeviceItem* CustomPCIDeviceList::getNextPCIDevice() {
    if (!readFromInputFile) return PCIDeviceList::getNextPCIDevice();
    if (nextDeviceIndex >= getTotalNumEntries()) return nullptr;

    PCIDeviceItem* item = CString::Required(new (std::nothrow) PCIDeviceItem);
    const CString suffix = "." + CString(nextDeviceIndex);
    for (const DeviceKey& key : kDeviceKeys) {
        const CString text = inputFile->ReadString(kDeviceSection, key.name + suffix);
        setField(*item, key, readNumber(key, text.c_str()).value);
    }
    item->entryNumber = nextDeviceIndex++;
    return item;
}

int CustomPCIDeviceList::getTotalNumEntries() const {
    return inputFile ? inputFile->ReadInteger(kDeviceSection, kTotalKey) : 0;
}

int CustomPCIDeviceList::findEntry(int from) const {
    return inputFile ? inputFile->FindNumber(kDeviceSection, isDeviceKey, from) : -1;
}

// The total may be as high as INT_MAX in a file of a few device entries. A run that made an item
// for each missing one, only to drop it again, would take minutes.
int CustomPCIDeviceList::skipMissingEntries() {
    const int total = getTotalNumEntries(), next = findEntry(nextDeviceIndex);
    if (nextDeviceIndex < total) nextDeviceIndex = next < 0 ? total : std::min(next, total);
    return nextDeviceIndex;
}

// Ends the process at once if memory cannot hold the items of all device entries that are left.
// Otherwise a run with such a total would fill the memory for minutes before it ends. This relies
// on a kernel that refuses what it cannot give. One that is set up to promise any size lets the
// trial pass; then the run ends where its memory ends.
void CustomPCIDeviceList::requireMemoryForRest() const {
    const int left = getTotalNumEntries() - nextDeviceIndex;
    if (left <= 0) return;
    // Volatile, since a compiler may remove an allocation that is not used.
    void* volatile trial = std::calloc(static_cast<std::size_t>(left), sizeof(PCIDeviceItem));
    std::free(CString::Required(trial));
}

// ---------------------------------------------------------------- Naming

CString CustomPCIDeviceList::getDeviceINIFileEntry(const PCIDeviceItem* item) const {
    char key[] = "0x00000000";
    std::snprintf(key, sizeof key, "0x%.4hX%.4hX", item->vendorID, item->deviceID);
    return key;
}

bool CustomPCIDeviceList::getNamedAdapters() {
    CIniFile configuration(mapFileLocation);
    PCIDeviceItem** end = endOfList();
    bool hasTriedMemory = false;
    while (PCIDeviceItem* item = getNextPCIDevice()) {
        item->adapterName = configuration.ReadString(kMapSection, getDeviceINIFileEntry(item));
        if (item->adapterName.IsEmpty()) {
            // The missing device entries have the same IDs, so they have no name either.
            if (readsAsMissing(*item)) skipMissingEntries();
            delete item;
            continue;
        }
        if (readsAsMissing(*item) && !hasTriedMemory) {
            // The missing device entries have this name too, so all of them will be in the list.
            requireMemoryForRest();
            hasTriedMemory = true;
        }
        item->adapterType = configuration.ReadString(item->adapterName, kTypeKey);
        *end = item;
        end = &item->next;
    }
    configuration.Flush();
    return true;
}

bool CustomPCIDeviceList::getSysINICandidates(CString& asWritten, CString& inLowerCase) const {
    const int underscore = systemKeyword.Find("_");
    if (underscore < 0) return false;
    const CString fileName = systemKeyword.Mid(underscore + 1, 0) + ".ini";
    asWritten = getCDPathName(fileName);
    inLowerCase = getCDPathName(fileName.Lower());
    return true;
}

CString CustomPCIDeviceList::getSysINIPathName() const {
    CString asWritten, inLowerCase;
    if (!getSysINICandidates(asWritten, inLowerCase)) return "";
    if (CMyFileIO::Exists(asWritten)) return asWritten;
    return CMyFileIO::Exists(inLowerCase) ? inLowerCase : "";
}

// ---------------------------------------------------------------- Labelling and counting

bool CustomPCIDeviceList::labelOnBoardAdapters() {
    // Without a file, the document is empty, and no adapter is on-board.
    CIniFile positions(getSysINIPathName());
    for (PCIDeviceItem* item = head; item; item = item->next) {
        const CString listed = positions.ReadString(item->adapterName, kOnBoardKey);
        item->onBoard = isListed(*item, listed) ? kOnBoard : kNotOnBoard;
    }
    positions.Flush();
    return true;
}

bool CustomPCIDeviceList::countDuplicateAdapters() {
    // An item that has a number when its turn comes has it from an earlier item of its name, or
    // from the caller.
    for (PCIDeviceItem* item = head; item; item = item->next) {
        if (item->count < 1) countName(item);
        if (item->instance < 1) numberName(item);
    }
    return true;
}

// ---------------------------------------------------------------- Grouping

const CustomPCIDeviceList::GroupDef* CustomPCIDeviceList::findGroup(const CString& adapterType) {
    for (const GroupDef& group : kGroups)
        if (group.word && adapterType.IsSubstring(group.word)) return &group;
    return nullptr;
}

const CustomPCIDeviceList::GroupDef* CustomPCIDeviceList::findGroupNoCase(
    const CString& adapterType) {
    const CString folded = adapterType.Upper();
    for (const GroupDef& group : kGroups)
        if (group.word && folded.IsSubstring(CString(group.word).Upper())) return &group;
    return nullptr;
}

void CustomPCIDeviceList::sortDevicesByType() {
    for (const PCIDeviceItem* item = head; item; item = item->next) {
        if (item->onBoard.IsSubstring(kOnBoard)) addName(groups[GROUP_ON_BOARD], item->adapterName);
        if (const GroupDef* found = findGroup(item->adapterType))
            addName(groups[found->group], item->adapterName);
        addName(groups[GROUP_ALL], item->adapterName);
    }
    CIniFile configuration(mapFileLocation);
    for (const char* name : kSystemAdapters) {
        const CString systems = configuration.ReadString(name, kSystemsKey);
        // An empty identifier is part of every text, though IsSubstring() never finds it.
        const bool isOfSystem = systemKeyword.IsEmpty() || systems.IsSubstring(systemKeyword);
        if (!isOfSystem) continue;
        addName(groups[GROUP_SERVICE_PROCESSOR], name);
        addName(groups[GROUP_ALL], name);
    }
    groups[GROUP_CDROM] = kCDROMAdapter;
    addName(groups[GROUP_ALL], kCDROMAdapter);
    configuration.Flush();
}

CString CustomPCIDeviceList::getDevices(Group group) const { return groups[group]; }

CString CustomPCIDeviceList::addItemToList(CString list, CString item) const {
    addName(list, item);
    return list;
}
