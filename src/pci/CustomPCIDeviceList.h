#pragma once

#include "pci/PCIDeviceList.h"
#include "util/CString.h"

class CIniFile;

/// The adapters of the machine that a detection file describes, as the files of the product CD name
/// and place them. It owns the detection document and its items.
///
///     CustomPCIDeviceList adapters;
///     adapters.setMapFileLocation(CustomPCIDeviceList::getCDPathName("syscfg.ini"));
///     adapters.setSystemKeyword("SRV_ALPHA");
///     adapters.setInputFile("scan.ini");
///     if (!adapters.initialize(15)) return noAdapters();  // all four steps
///     adapters.sortDevicesByType();
class CustomPCIDeviceList : public PCIDeviceList {
public:
    /// The steps of initialize(), to be added up.
    enum {
        INIT_NAME_ADAPTERS = 1,     ///< getNamedAdapters()
        INIT_LABEL_ONBOARD = 2,     ///< labelOnBoardAdapters()
        INIT_COUNT_DUPLICATES = 4,  ///< countDuplicateAdapters()
        INIT_FROM_INPUT_FILE = 8,   ///< Take the devices from the detection file, from then on.
    };

    CustomPCIDeviceList();
    ~CustomPCIDeviceList();
    CustomPCIDeviceList(const CustomPCIDeviceList&) = delete;
    CustomPCIDeviceList& operator=(const CustomPCIDeviceList&) = delete;

    /// The path of a file of the product CD: the environment variable RWCD as it is, nothing when
    /// unset, then "/rwise/ini/" and the name.
    static CString getCDPathName(CString fileName);

    // --- Set-up, in this order ---

    void setMapFileLocation(CString path);  ///< The system configuration file.
    void setSystemKeyword(CString keyword);
    void setInputFile(CString path);  ///< Loads the detection file. Later calls do nothing.
    /// Takes the steps of the flags. False when there is no item to label. With no step but
    /// INIT_FROM_INPUT_FILE it asks the base source, so the list stays empty, and is true.
    bool initialize(int flags);

    // --- The steps ---

    /// A new item for the next entry of the detection file, owned by the caller; null when there is
    /// none, or no detection file. An entry whose keys are missing reads as zeros. Before
    /// INIT_FROM_INPUT_FILE was given, the base source answers.
    PCIDeviceItem* getNextPCIDevice();
    /// Fills the list with the devices that the map names, in the order of their entries. Always
    /// true.
    bool getNamedAdapters();
    /// Marks each item "TRUE" or "FALSE": whether its bus and device number are among the first
    /// four positions that the system's own file gives for its name. Always true.
    bool labelOnBoardAdapters();
    bool countDuplicateAdapters();  ///< Sets count and instance of each item. Always true.
    /// The key of the map for the item's IDs: "0x" and eight upper-case hexadecimal digits.
    CString getDeviceINIFileEntry(const PCIDeviceItem* item) const;
    /// The path of the system's own file on the CD, named after what follows the first "_" of the
    /// system keyword, as it is or in lower case; "" when neither can be read, or there is no "_".
    CString getSysINIPathName() const;

    // --- Grouping ---

    /// Builds the group lists; the order of the items stays. A second call adds every name again.
    void sortDevicesByType();
    /// The groups: names joined by ",", in list order, one for each item.
    CString getDASDDevices() const;
    CString getNetworkDevices() const;
    CString getSystemDevices() const;  ///< Always empty.
    CString getVideoDevices() const;
    CString getServiceProcessorDevices() const;
    CString getCDROMDevices() const;  ///< "IDE".
    CString getAllDevices() const;
    CString getOnBoardDevices() const;
    /// The list with the item added: after a "," unless the list was empty.
    CString addItemToList(CString list, CString item) const;

private:
    CString readEntry(const char* key, const CString& suffix);
    int totalEntries() const;
    void skipMissingEntries();
    void requireMemoryForRest() const;
    CString* groupOf(const CString& adapterType);

    CString mapFileLocation;
    CString systemKeyword;
    CString dasdDevices;
    CString networkDevices;
    CString systemDevices;
    CString videoDevices;
    CString serviceProcessorDevices;
    CString cdromDevices;
    CString allDevices;
    CString onBoardDevices;
    bool readFromInputFile = false;
    CIniFile* inputFile = nullptr;  // the detection document
    int nextDeviceIndex = 0;        // of the detection file's entries; only grows
};
