#include <memory>

#include "pci/CustomPCIDeviceList.h"
#include "pci/PCIException.h"
#include "support.h"

namespace {
const std::string kTotal = "Total_Number_Of_Devices = ", kNIC = "Vendor_ID.0=1\nDevice_ID.0=2\n";
constexpr int kAll = 15;

// The inventory of a detection file of these entries, with one adapter to name, on the board.
struct Inventory : ScratchFolder, CustomPCIDeviceList {
    explicit Inventory(const std::string& entries) {
        setenv("RWCD", path("CD").c_str(), 1);
        file("CD/rwise/ini/syscfg.ini", "[PCIIDMap]\n0x00010002 = NIC\n");
        file("CD/rwise/ini/ONE.ini", "[NIC]\nOnBoard = 0,0\n");
        setMapFileLocation(getCDPathName("syscfg.ini"));
        setSystemKeyword("S_ONE");
        setInputFile(file("scan.ini", "[PCI]\n" + entries).c_str());
        setInputFile("none");  // only the first one counts
    }
};
}  // namespace

TEST(Inventory, ReadsEachEntryOnce) {
    Inventory list(kTotal +
                   "2x\nVendor_ID.0 = -1\nDevice_ID.0 = 0xg\nFunction_Number.0 = 3\n"
                   "Class_Code.0 = 0x12345678ABC060400\nRevision.0 = 012\nHeader_Type.0 = 0200\n"
                   "Device_Number.1 = 18446744073709551623\nVendor_ID.2 = 1\n");
    constexpr int kFromFile = CustomPCIDeviceList::INIT_FROM_INPUT_FILE;
    EXPECT_FALSE(list.getNextPCIDevice() || list.initialize(kAll - kFromFile));  // not yet from it
    EXPECT_EQ("1|0", joined({list.initialize(kFromFile), list.getTotalNumDevices()}));
    for (const std::string numbers : {"0xFFFF0000|0|0|3154510848|10|128", "0x00000000|7|0|0|0|0"}) {
        const std::unique_ptr<PCIDeviceItem> item(list.getNextPCIDevice());
        EXPECT_EQ(numbers + "||||-1|-1",
                  joined({list.getDeviceINIFileEntry(item.get()), item->deviceNumber,
                          item->functionNumber, item->classCode, item->revision, item->headerType,
                          item->adapterName, item->adapterType, item->onBoard, item->count,
                          item->instance}));
    }
    for (int i = 0; i < 2; ++i) EXPECT_EQ(nullptr, list.getNextPCIDevice());
}

TEST(Inventory, NeedsANamedEntry) {
    for (const std::string& entries : {kTotal + "-1\n" + kNIC, kNIC, kTotal + "1\nVendor_ID.0=1\n"})
        EXPECT_FALSE(Inventory(entries).initialize(kAll)) << entries;
    CustomPCIDeviceList list;  // no file is set; 16 is no step at all
    EXPECT_EQ("0|1|1|0", joined({list.initialize(2), list.initialize(4), list.initialize(16),
                                 list.initialize(kAll)}));
}

TEST(Inventory, FindsTheFileOfTheSystem) {
    Inventory list("");
    const auto find = [&](const char* keyword) {
        list.setSystemKeyword(keyword);
        return list.getSysINIPathName().GetName();
    };
    EXPECT_EQ("ONE.ini|||", joined({find("S_ONE"), find("ONE"), find("S_TWO"), find("")}));
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
