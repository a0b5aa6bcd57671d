#pragma once

#include <cstdint>
#include <iterator>

#include "pci/PCIDeviceList.h"
#include "util/CString.h"

class CIniFile;

/// A key of a device entry, and the field that takes its number. In the detection file, "." and the
/// number of the device entry follow the name of the key.
struct DeviceKey {
    using Field = std::uint16_t PCIDevice::*;
    using WideField = std::uint32_t PCIDevice::*;

    constexpr DeviceKey(const char* text, unsigned radix, Field target)
        : name(text), base(radix), bits(16), field(target) {}
    constexpr DeviceKey(const char* text, unsigned radix, WideField target)
        : name(text), base(radix), bits(32), wideField(target) {}

    const char* name;
    unsigned base;          ///< 0: the prefix of the number tells the base.
    unsigned bits;          ///< How many low bits of the number are kept: as many as the field has.
    Field field = nullptr;  ///< Null if the field is wide.
    WideField wideField = nullptr;  ///< Null if it is not.
};

/// The adapters of one machine: the devices of a detection file, with the names, types and
/// positions that the product CD gives them. The list owns the detection document and its items.
///
///     CustomPCIDeviceList adapters;
///     adapters.setMapFileLocation(CustomPCIDeviceList::getConfigurationPathName());
///     adapters.setSystemKeyword("SRV_ALPHA");
///     adapters.setInputFile("scan.ini");
///     if (!adapters.initialize(15)) return noAdapters();  // 15: all four flags
///     adapters.sortDevicesByType();
class CustomPCIDeviceList : public PCIDeviceList {
public:
    /// The flags of initialize(), combined with "|". The first three select a step each.
    enum {
        INIT_NAME_ADAPTERS = 1,     ///< getNamedAdapters()
        INIT_LABEL_ONBOARD = 2,     ///< labelOnBoardAdapters()
        INIT_COUNT_DUPLICATES = 4,  ///< countDuplicateAdapters()
        INIT_FROM_INPUT_FILE = 8,   ///< From now on, take the devices from the detection file.
    };

    CustomPCIDeviceList();
    ~CustomPCIDeviceList();
    CustomPCIDeviceList(const CustomPCIDeviceList&) = delete;
    CustomPCIDeviceList& operator=(const CustomPCIDeviceList&) = delete;

    // --- What the files hold, and the rules that need no list ---

    /// The environment variable that names the root directory of the product CD.
    static constexpr const char* kCDRootVariable = "RWCD";

    /// The detection file: its sections and keys.
    static constexpr const char* kSystemSection = "System";
    static constexpr const char* kMachineTypeKey = "Machine_Type";
    static constexpr const char* kModelNumberKey = "Model_Number";
    static constexpr const char* kSerialNumberKey = "Serial_Number";
    static constexpr const char* kNumberOfEnclosuresKey = "Number_Of_Enclosures";
    static constexpr const char* kBIOSVersionKey = "BIOS_Version";
    static constexpr const char* kBIOSBuildLevelKey = "BIOS_Build_Level";
    static constexpr const char* kDiagnosticsBuildLevelKey = "ROM_Diagnostics_Build_Level";
    static constexpr const char* kActiveProcessorsKey = "Active_Processors";
    static constexpr const char* kProcessorSlotsKey = "Processor_Slots";
    static constexpr const char* kTotalMemoryKey = "Total_Enabled_Memory_Mb";
    static constexpr const char* kSystemKeys[] = {
        kMachineTypeKey,    kModelNumberKey,    kSerialNumberKey,          kNumberOfEnclosuresKey,
        kBIOSVersionKey,    kBIOSBuildLevelKey, kDiagnosticsBuildLevelKey, kActiveProcessorsKey,
        kProcessorSlotsKey, kTotalMemoryKey,
    };
    static constexpr const char* kDeviceSection = "PCI";
    static constexpr const char* kTotalKey = "Total_Number_Of_Devices";
    static constexpr DeviceKey kDeviceKeys[] = {
        {"Vendor_ID", 16, &PCIDevice::vendorID},
        {"Device_ID", 16, &PCIDevice::deviceID},
        {"Subvendor_ID", 16, &PCIDevice::subVendorID},
        {"Subdevice_ID", 16, &PCIDevice::subDeviceID},
        {"Bus_Number", 0, &PCIDevice::busNumber},
        {"Device_Number", 0, &PCIDevice::deviceNumber},
        {"Class_Code", 0, &PCIDevice::classCode},
        {"Revision", 0, &PCIDevice::revision},
        {"Header_Type", 0, &PCIDevice::headerType},
    };

    /// The system configuration file: its sections and keys, besides the sections that are named
    /// after systems and adapters.
    static constexpr const char* kSystemMapSection = "SystemIDMap";
    static constexpr const char* kDirectoryKey = "Directory";
    static constexpr const char* kMapSection = "PCIIDMap";
    static constexpr const char* kTypeKey = "AdapterType";
    static constexpr const char* kSystemsKey = "Systems";
    /// The system adapters. No scan finds them: the file lists the systems that have them.
    static constexpr const char* kSystemAdapters[] = {"STORMPETREL",
                                                      "CORVEL_ADV_SYS_MGT_ISA_CONTROLLER"};
    /// The CD-ROM adapter. No scan finds it either, but every system has it.
    static constexpr const char* kCDROMAdapter = "IDE";

    /// The per-system file: the key in the section of an adapter.
    static constexpr const char* kOnBoardKey = "OnBoard";
    static constexpr unsigned kMaxPositions = 4;  ///< Positions after these are ignored.
    /// What labelling writes into PCIDevice::onBoard.
    static constexpr const char* kOnBoard = "TRUE";
    static constexpr const char* kNotOnBoard = "FALSE";

    /// The path of a file on the CD: the value of kCDRootVariable, unchanged, then "/rwise/ini/"
    /// and the name. If the variable is not set, its value counts as empty.
    static CString getCDPathName(CString fileName);
    /// The path of the system configuration file on the CD.
    static CString getConfigurationPathName();
    /// The machine type that a detection file gives; "" if it gives none.
    static CString getMachineType(CIniFile& detection);
    /// The system identifier of the machine type in the system configuration file. kUnknownSystem
    /// if the file has none.
    static CString getSystemID(CIniFile& configuration, const CString& machineType);
    static constexpr const char* kUnknownSystem = "UNKNOWN_SERVER";

    /// The groups of adapters.
    enum Group {
        GROUP_DASD,
        GROUP_NETWORK,
        GROUP_SYSTEM,
        GROUP_VIDEO,
        GROUP_SERVICE_PROCESSOR,
        GROUP_CDROM,
        GROUP_ALL,
        GROUP_ON_BOARD,
        GROUP_COUNT,  ///< How many there are.
    };
    struct GroupDef {
        Group group;
        const char* name;
        const char* word;  ///< An adapter whose type contains it joins. Null: no type selects it.
    };
    /// In the order of the report. It is also the order in which the words are tried.
    static constexpr GroupDef kGroups[] = {
        {GROUP_DASD, "DASDAdapters", "DASD"},
        {GROUP_NETWORK, "NetworkAdapters", "NETWORK"},
        {GROUP_SYSTEM, "SystemDevices", nullptr},
        {GROUP_VIDEO, "VideoAdapter", "VIDEO"},
        {GROUP_SERVICE_PROCESSOR, "ServiceProcessor", "ServiceProcessor"},
        {GROUP_CDROM, "CDROM", nullptr},
        {GROUP_ALL, "AllAdapters", nullptr},
        {GROUP_ON_BOARD, "OnBoardAdapters", nullptr},
    };
    static_assert(std::size(kGroups) == GROUP_COUNT);
    /// The first group whose word the type contains; the case of letters counts. Null if none.
    static const GroupDef* findGroup(const CString& adapterType);
    /// The same, if the case of letters did not count: what a misspelt type was meant to select.
    static const GroupDef* findGroupNoCase(const CString& adapterType);

    /// What the value of a key of a device entry reads as.
    struct DeviceNumber {
        std::uint32_t value;
        const char* rest;  ///< The text after the number.
        bool isTooWide;    ///< The number does not fit: `value` has only its low bits.
    };
    static DeviceNumber readNumber(const DeviceKey& key, const char* text);

    // --- Set-up, in this order ---

    void setMapFileLocation(CString path);    ///< The system configuration file.
    void setSystemKeyword(CString systemID);  ///< The system identifier.
    void setInputFile(CString path);  ///< Loads the detection file. A second call does nothing.
    /// Does INIT_FROM_INPUT_FILE first, then the steps in the order above.
    /// Returns false if the list is empty when INIT_LABEL_ONBOARD is due. If no step is selected,
    /// scans the base class's source, which is empty, and returns true.
    bool initialize(int flags);

    // --- The steps ---

    /// A new item for the next device entry of the detection file, which the caller owns. Null if
    /// there is no further one or no detection file. A missing key gives 0. Before
    /// INIT_FROM_INPUT_FILE, returns the next item of the base class's source instead.
    PCIDeviceItem* getNextPCIDevice();
    /// Fills the list with the devices that the system configuration file names, in the order of
    /// the device entries. Always true.
    bool getNamedAdapters();
    /// Labels each item "TRUE" or "FALSE". It is on-board if its bus and device number are among
    /// the first four positions that the per-system file lists for its name. Always true.
    bool labelOnBoardAdapters();
    /// Sets count and instance of each item, one item after the other in list order. An item whose
    /// count is not above 0 counts itself and the later items of its name, and gives them all that
    /// count, whatever they had. One whose instance is not above 0 numbers itself and the later
    /// items in the same way, but no more than its count. Always true.
    bool countDuplicateAdapters();
    /// The key of the item's IDs in PCIIDMap: "0x" and eight upper-case hexadecimal digits.
    CString getDeviceINIFileEntry(const PCIDeviceItem* item) const;
    /// The path of the per-system file on the CD. Its name is the text after the first "_" of the
    /// system identifier and ".ini", or the same in lower case if no such file can be opened. "" if
    /// neither can be opened, or the identifier has no "_".
    CString getSysINIPathName() const;
    /// Gives the two paths that getSysINIPathName() tries, in that order. Returns false, and leaves
    /// both unchanged, if the system identifier has no "_".
    bool getSysINICandidates(CString& asWritten, CString& inLowerCase) const;

    // --- The device entries. The file may have fewer than its total says. ---

    /// The total in the file, which may be negative. 0 if there is no detection file.
    int getTotalNumEntries() const;
    /// The smallest number, from `from` on, of a device entry that has a key in the file. -1 if
    /// there is none. The number may be above the total.
    int findEntry(int from) const;
    /// Moves getNextPCIDevice() forward to the next device entry that has a key in the file, but at
    /// most to the total. Returns the number of the device entry to read next.
    int skipMissingEntries();

    // --- Grouping ---

    /// Builds the group lists. Does not sort the items. A second call adds all names again, except
    /// to the CD-ROM list.
    void sortDevicesByType();
    /// The list of a group: names joined by ",". Items come first, in list order, then the adapters
    /// without an item. The list of GROUP_SYSTEM is always "". That of GROUP_CDROM is "IDE" once
    /// the lists are built.
    CString getDevices(Group group) const;
    CString getDASDDevices() const { return getDevices(GROUP_DASD); }
    CString getNetworkDevices() const { return getDevices(GROUP_NETWORK); }
    CString getSystemDevices() const { return getDevices(GROUP_SYSTEM); }
    CString getVideoDevices() const { return getDevices(GROUP_VIDEO); }
    CString getServiceProcessorDevices() const { return getDevices(GROUP_SERVICE_PROCESSOR); }
    CString getCDROMDevices() const { return getDevices(GROUP_CDROM); }
    CString getAllDevices() const { return getDevices(GROUP_ALL); }
    CString getOnBoardDevices() const { return getDevices(GROUP_ON_BOARD); }
    /// Returns the list with the item appended, after a "," unless the list was empty.
    CString addItemToList(CString list, CString item) const;

private:
    void requireMemoryForRest() const;

    CString mapFileLocation;  // the path of the system configuration file
    CString systemKeyword;    // the system identifier
    CString groups[GROUP_COUNT];
    bool readFromInputFile = false;
    CIniFile* inputFile = nullptr;  // the detection document; null before setInputFile()
    int nextDeviceIndex = 0;  // the next device entry to read; only grows, at most to the total
};
