#include <memory>

#include "pci/CustomPCIDeviceList.h"
#include "pci/PCIException.h"
#include "support.h"

namespace {
const std::string kMap = "[PCIIDMap]\n0x00010002 = NIC\n[NIC]\nAdapterType = xNETWORKx\n";
const std::string kTotal = "Total_Number_Of_Devices = ", kNIC = "Vendor_ID.0=1\nDevice_ID.0=2\n";
constexpr int kAll = 15;

// The inventory of a detection file of these entries, with this map on the CD.
struct Inventory : ScratchFolder, CustomPCIDeviceList {
    Inventory(const std::string& entries, const std::string& map = kMap) {
        setenv("RWCD", path("CD").c_str(), 1);
        file("CD/rwise/ini/syscfg.ini", map);
        file("CD/rwise/ini/ONE.ini", "[NIC]\nOnBoard = 0,0\n");
        setMapFileLocation(getCDPathName("syscfg.ini"));
        setSystemKeyword("S_ONE");
        setInputFile(file("scan.ini", "[PCI]\n" + entries).c_str());
        setInputFile("none");  // only the first one counts
    }
    // The names in the list, each with its instance and count.
    std::string names() {
        std::string names;
        resetList();
        while (const PCIDeviceItem* item = getNextDeviceFromList())
            names += joined({item->adapterName, item->instance, item->count}) + "; ";
        return names;
    }
};
}  // namespace

TEST(Inventory, ReadsEachEntryOnce) {
    Inventory list(kTotal +
                   "2x\nVendor_ID.0 = -1\nDevice_ID.0 = 0xg\nFunction_Number.0 = 3\n"
                   "Class_Code.0 = 0xABC060400\nRevision.0 = 0x12\nHeader_Type.0 = 0200\n"
                   "Device_Number.1 = 18446744073709551623\nVendor_ID.2 = 1\n");
    EXPECT_EQ(nullptr, list.getNextPCIDevice());  // not yet from the file
    EXPECT_TRUE(list.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE));
    EXPECT_EQ("0", list.names() + joined({list.getTotalNumDevices()}));  // nor by this
    for (const std::string numbers : {"65535|0|0|0|3154510848|18|128", "0|0|7|0|0|0|0"}) {
        const std::unique_ptr<PCIDeviceItem> item(list.getNextPCIDevice());
        EXPECT_EQ(numbers + "||||-1|-1",
                  joined({item->vendorID, item->deviceID, item->deviceNumber, item->functionNumber,
                          item->classCode, item->revision, item->headerType, item->adapterName,
                          item->adapterType, item->onBoard, item->count, item->instance}));
    }
    for (int i = 0; i < 2; ++i) EXPECT_EQ(nullptr, list.getNextPCIDevice());
}

TEST(Inventory, HoldsTheNamedEntries) {
    const std::pair<std::string, const char*> kLists[] = {
        {kTotal + "2\n" + kNIC, "NIC|1|1; "},
        {kTotal + "-1\n" + kNIC, ""},
        {kTotal + "one\n" + kNIC, ""},
        {kNIC, ""},
        {kTotal + "1\nVendor_ID.0 = 1\n", ""},
        {kTotal + "2000000000\nVendor_ID.1999999999=1\nDevice_ID.1999999999=2\n" + kNIC,
         "NIC|1|2; NIC|2|2; "},  // what lies between takes no time
        {kTotal + "9\nvendor_id.7 = 1\nVendor_ID.5=0\nDEVICE_ID.7=2\n" + kNIC,
         "NIC|1|2; NIC|2|2; "},  // in any order and case
    };
    for (const auto& [entries, names] : kLists) {
        Inventory list(entries);
        EXPECT_EQ(*names != '\0', list.initialize(kAll)) << entries;
        EXPECT_EQ(names, list.names()) << entries;
        EXPECT_TRUE(list.countDuplicateAdapters());
        EXPECT_EQ(names, list.names()) << entries;  // counted once
        EXPECT_EQ(nullptr, list.getNextDeviceFromList());
    }
    Inventory zeros(kTotal + "3\n" + kNIC, "[PCIIDMap]\n0x00000000=ZERO\n0x00010002=NIC\n");
    EXPECT_TRUE(zeros.initialize(kAll));
    EXPECT_EQ("NIC|1|1; ZERO|1|2; ZERO|2|2; ", zeros.names());  // entries that are missing
    CustomPCIDeviceList list;  // no file is set; 16 is no step at all
    EXPECT_EQ("0|1|1|0", joined({list.initialize(2), list.initialize(4), list.initialize(16),
                                 list.initialize(kAll)}));
}

TEST(Inventory, FindsTheFileOfTheSystem) {
    Inventory list("");
    for (const std::string name : {"SERVER", "b_c", "", "Mix", "mix"})
        list.file("CD/rwise/ini/" + name + ".ini", "");
    std::string found;
    for (const char* keyword : {"A_SERVER", "A_B_C", "A_", "A_Mix", "A_NONE", "SERVER", ""}) {
        list.setSystemKeyword(keyword);
        (found += list.getSysINIPathName().GetName().c_str()) += "|";
    }
    EXPECT_EQ("SERVER.ini|b_c.ini|.ini|Mix.ini||||", found);
}

TEST(Inventory, AppendsToItsGroupsOnEachCall) {
    Inventory list(kTotal + "1\n" + kNIC);
    EXPECT_TRUE(list.initialize(kAll));
    list.setSystemKeyword("");  // part of every list of systems, even of a missing one
    for (int i = 0; i < 2; ++i) list.sortDevicesByType();
    const std::string pair = "STORMPETREL,CORVEL_ADV_SYS_MGT_ISA_CONTROLLER";
    EXPECT_EQ("NIC,NIC|IDE|" + pair + "," + pair,
              joined({list.getOnBoardDevices(), list.getCDROMDevices(),
                      list.getServiceProcessorDevices()}));
    EXPECT_EQ(("NIC," + pair + ",IDE,NIC," + pair + ",IDE").c_str(), list.getAllDevices());
    EXPECT_EQ("a,,", list.addItemToList("a,", ""));  // nothing is trimmed or left out
}

TEST(Inventory, FreesAMillionItemsWithoutRecursion) {
    PCIDeviceItem* first = new PCIDeviceItem;
    PCIDeviceItem* last = first;
    for (int i = 0; i < 1000000; ++i) last = last->next = new PCIDeviceItem;
    delete first;
    EXPECT_EQ("text", PCIException("text").message);
}
