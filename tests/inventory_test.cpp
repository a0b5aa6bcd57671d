#include "pci/CustomPCIDeviceList.h"
#include "support.h"

namespace {
// The inventory of a detection file with these entries. The CD names one adapter, on the board.
struct Inventory : ScratchFolder, CustomPCIDeviceList {
    explicit Inventory(const std::string& entries) {
        setenv("RWCD", path("CD").c_str(), 1);
        file("CD/rwise/ini/syscfg.ini", "[PCIIDMap]\n0x00010002 = NIC\n");
        file("CD/rwise/ini/one.ini", "[NIC]\nOnBoard = 0,0\n");
        setMapFileLocation(getCDPathName("syscfg.ini"));
        setSystemKeyword("S_ONE");
        setInputFile(file("scan.ini", "[PCI]\nTotal_Number_Of_Devices = " + entries).c_str());
        setInputFile("none");  // only the first one counts
    }
};
const std::string kNIC = "1\nVendor_ID.0 = 1\nDevice_ID.0 = 2\n";

struct Initialization {
    int flags;
    bool result;
    const char* onBoard;  // null: the list stays empty
    int count;
};
const Initialization kInitializations[] = {
    {1, true, nullptr, 0},   // names come only from the detection file
    {7, false, nullptr, 0},  // no item that could be on the board
    {8, true, nullptr, 0},   // no step
    {9, true, "", -1},       // names alone
    {11, true, "TRUE", -1},  // and those on the board
    {13, true, "", 1},       // names and counts
    {16, true, nullptr, 0},  // not a flag
};
}  // namespace

TEST(Inventory, HasItemsOfZerosThatAreNotCounted) {
    const PCIDeviceItem item;
    const std::uint32_t numbers[] = {item.vendorID,       item.deviceID,  item.subVendorID,
                                     item.subDeviceID,    item.busNumber, item.deviceNumber,
                                     item.functionNumber, item.classCode, item.revision,
                                     item.headerType};
    EXPECT_THAT(numbers, testing::Each(0U));
    EXPECT_EQ(-1, item.count);
    EXPECT_EQ(-1, item.instance);
}

TEST(Inventory, ReadsNumbersAndEntriesUpToTheTotal) {
    Inventory list(
        "5x\nVendor_ID.0 = -1\nDevice_ID.0 = 0xg\nFunction_Number.0 = 3\nRevision.0 = 012\n"
        "Class_Code.0 = 4294967307\nDevice_Number.0 = 18446744073709551623\n"
        "Vendor_ID.3 = 1\nVendor_ID.7 = 1\n");
    EXPECT_TRUE(list.initialize(CustomPCIDeviceList::INIT_FROM_INPUT_FILE));
    const std::unique_ptr<PCIDeviceItem> item(list.getNextPCIDevice());
    ASSERT_NE(nullptr, item);
    EXPECT_EQ("0xFFFF0000", list.getDeviceINIFileEntry(item.get()));  // cut to 16 bits; 0
    EXPECT_EQ(7, item->deviceNumber);    // the low bits, of more than 64
    EXPECT_EQ(0, item->functionNumber);  // not read from the file
    EXPECT_EQ(11U, item->classCode);     // the low 32 bits
    EXPECT_EQ(10, item->revision);       // octal
    EXPECT_EQ(3, list.skipMissingEntries());
    EXPECT_EQ(1, std::unique_ptr<PCIDeviceItem>(list.getNextPCIDevice())->vendorID);
    EXPECT_EQ(7, list.findEntry(4));
    EXPECT_EQ(5, list.skipMissingEntries());
    EXPECT_EQ(nullptr, list.getNextPCIDevice());
}

TEST(Inventory, TakesTheStepsOfItsFlags) {
    for (const Initialization& row : kInitializations) {
        SCOPED_TRACE("flags " + std::to_string(row.flags));
        Inventory list(kNIC);
        EXPECT_EQ(row.result, list.initialize(row.flags));
        list.resetList();
        const PCIDeviceItem* item = list.getNextDeviceFromList();
        EXPECT_EQ(row.onBoard != nullptr, item != nullptr);
        if (!item) continue;
        EXPECT_EQ(row.onBoard, item->onBoard);
        EXPECT_EQ(row.count, item->count);
    }
}

TEST(Inventory, KeepsItsItemsWhenScannedAgain) {
    Inventory list(kNIC);
    EXPECT_TRUE(list.initialize(15));
    list.resetList();
    EXPECT_TRUE(list.initialize(15));
    EXPECT_TRUE(list.scanPCIBusAndCreateList());
    EXPECT_EQ(0, list.getTotalNumDevices());  // it counts only what the scan added
    EXPECT_NE(nullptr, list.getNextDeviceFromList());
    EXPECT_EQ(nullptr, list.getNextDeviceFromList());
    list.resetList();
    EXPECT_NE(nullptr, list.getNextDeviceFromList());
}

TEST(Inventory, ListsBothSystemAdaptersForAnEmptyKeyword) {
    Inventory list(kNIC);
    list.setSystemKeyword("");  // part of every list of systems, even of a missing one
    list.sortDevicesByType();
    EXPECT_EQ("STORMPETREL,CORVEL_ADV_SYS_MGT_ISA_CONTROLLER", list.getServiceProcessorDevices());
}

TEST(Inventory, FreesAnyNumberOfItemsWithoutRecursion) {
    PCIDeviceItem* const first = new PCIDeviceItem;
    PCIDeviceItem* last = first;
    for (int i = 0; i < 200000; ++i) last = last->next = new PCIDeviceItem;
    delete first;
}
