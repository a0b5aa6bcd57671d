#include "pci/CustomPCIDeviceList.h"
#include "support.h"

namespace {
// The inventory of a detection file: the text begins with the total, and the device entries follow.
// The CD names two adapters. The first of them is on the board.
struct Inventory : ScratchFolder, CustomPCIDeviceList {
    explicit Inventory(const std::string& text) {
        setenv("RWCD", path("CD").c_str(), 1);
        file("CD/rwise/ini/syscfg.ini", "[PCIIDMap]\n0x00010002 = NIC\n0x00010003 = HBA\n");
        file("CD/rwise/ini/one.ini", "[NIC]\nOnBoard = 0,0\n");
        setMapFileLocation(getCDPathName("syscfg.ini"));
        setSystemKeyword("S_ONE");
        setInputFile(file("scan.ini", "[PCI]\nTotal_Number_Of_Devices = " + text).c_str());
        setInputFile("none");  // does nothing
    }
};
const std::string kNIC = "1\nVendor_ID.0 = 1\nDevice_ID.0 = 2\n";

constexpr int kName = CustomPCIDeviceList::INIT_NAME_ADAPTERS;
constexpr int kLabel = CustomPCIDeviceList::INIT_LABEL_ONBOARD;
constexpr int kCount = CustomPCIDeviceList::INIT_COUNT_DUPLICATES;
constexpr int kFile = CustomPCIDeviceList::INIT_FROM_INPUT_FILE;

struct Initialization {
    const char* rule;
    int flags;
    bool result;
    const char* onBoard;  // null: the list stays empty
    int count;
};
const Initialization kInitializations[] = {
    {"only the detection file has devices to name", kName, true, nullptr, 0},
    {"labelling fails without an item", kName | kLabel | kCount, false, nullptr, 0},
    {"to take the detection file is not a step", kFile, true, nullptr, 0},
    {"counting does not need an item", kCount, true, nullptr, 0},
    {"items are named", kFile | kName, true, "", -1},
    {"items are named and labelled", kFile | kName | kLabel, true, "TRUE", -1},
    {"items are named and counted", kFile | kName | kCount, true, "", 1},
    {"16 is not a flag", 16, true, nullptr, 0},
};

using Numbers = std::vector<std::pair<int, int>>;  // the count and the instance of each item
struct Counting {
    const char* rule;
    Numbers before, after;  // of the adapters NIC, HBA, NIC and NIC
};
const Counting kCountings[] = {
    {"each name has numbers of its own",
     {{-1, -1}, {-1, -1}, {-1, -1}, {-1, -1}},
     {{3, 1}, {1, 1}, {3, 2}, {3, 3}}},
    {"numbers from 1 on stay", {{5, 1}, {2, 4}, {5, 7}, {5, 8}}, {{5, 1}, {2, 4}, {5, 7}, {5, 8}}},
    {"the first item of a name numbers the later ones, even if they have numbers",
     {{0, 0}, {-1, -1}, {-1, -1}, {9, 9}},
     {{3, 1}, {1, 1}, {3, 2}, {3, 3}}},
    {"an item numbers no more items than it counts",
     {{1, -1}, {-1, -1}, {-1, -1}, {-1, -1}},
     {{1, 1}, {1, 1}, {2, 1}, {2, 2}}},
    {"a count may be too high",
     {{9, -1}, {-1, -1}, {-1, -1}, {-1, -1}},
     {{9, 1}, {1, 1}, {2, 2}, {2, 3}}},
};
}  // namespace

TEST(Inventory, HasItemsOfZerosThatAreNotCounted) {
    const PCIDeviceItem item;
    const std::uint32_t numbers[] = {item.vendorID,       item.deviceID,  item.subVendorID,
                                     item.subDeviceID,    item.busNumber, item.deviceNumber,
                                     item.functionNumber, item.classCode, item.revision,
                                     item.headerType};
    EXPECT_THAT(numbers, testing::Each(0U));
    EXPECT_EQ(-1, item.entryNumber);
    EXPECT_EQ(-1, item.count);
    EXPECT_EQ(-1, item.instance);
}

TEST(Inventory, ReadsNumbersAndDeviceEntriesUpToTheTotal) {
    Inventory list(
        "5x\nVendor_ID.0 = -1\nDevice_ID.0 = 0xg\nFunction_Number.0 = 3\nRevision.0 = 0x12\n"
        "Header_Type.0 = 012\nClass_Code.0 = 4294967307\nDevice_Number.0 = 18446744073709551623\n"
        "Vendor_ID.3 = 1\nVendor_ID.7 = 1\n");
    EXPECT_TRUE(list.initialize(kFile));
    const std::unique_ptr<PCIDeviceItem> item(list.getNextPCIDevice());
    ASSERT_NE(nullptr, item);
    EXPECT_EQ(0xFFFF, item->vendorID) << "a number is cut to 16 bits";
    EXPECT_EQ(0, item->deviceID) << "0x without a digit after it is the number 0";
    EXPECT_EQ("0xFFFF0000", list.getDeviceINIFileEntry(item.get()));
    EXPECT_EQ(7, item->deviceNumber) << "the low bits of more than 64 are kept";
    EXPECT_EQ(0, item->functionNumber) << "it is not read from the file";
    EXPECT_EQ(11U, item->classCode) << "the low 32 bits are kept";
    EXPECT_EQ(18, item->revision) << "0x begins a hexadecimal number";
    EXPECT_EQ(10, item->headerType) << "0 begins an octal number";
    EXPECT_EQ(3, list.skipMissingEntries());
    const std::unique_ptr<PCIDeviceItem> next(list.getNextPCIDevice());
    ASSERT_NE(nullptr, next);
    EXPECT_EQ(1, next->vendorID);
    EXPECT_EQ(3, next->entryNumber) << "those that were skipped count";
    EXPECT_EQ(7, list.findEntry(4));
    EXPECT_EQ(5, list.skipMissingEntries());
    EXPECT_EQ(nullptr, list.getNextPCIDevice());
}

TEST(Inventory, TakesTheStepsOfItsFlags) {
    for (const Initialization& row : kInitializations) {
        SCOPED_TRACE(row.rule);
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

TEST(Inventory, NumbersTheAdaptersOfEachName) {
    for (const Counting& row : kCountings) {
        Inventory list(
            "4\nVendor_ID.0 = 1\nVendor_ID.1 = 1\nVendor_ID.2 = 1\nVendor_ID.3 = 1\n"
            "Device_ID.0 = 2\nDevice_ID.1 = 3\nDevice_ID.2 = 2\nDevice_ID.3 = 2\n");
        EXPECT_TRUE(list.initialize(kFile | kName));
        list.resetList();
        for (const auto& [count, instance] : row.before) {
            PCIDeviceItem* const item = list.getNextDeviceFromList();
            ASSERT_NE(nullptr, item);
            item->count = count;
            item->instance = instance;
        }
        EXPECT_TRUE(list.countDuplicateAdapters());
        Numbers after;
        list.resetList();
        while (const PCIDeviceItem* item = list.getNextDeviceFromList())
            after.emplace_back(item->count, item->instance);
        EXPECT_EQ(row.after, after) << row.rule;
    }
}

TEST(Inventory, KeepsItsItemsWhenScannedAgain) {
    Inventory list(kNIC);
    EXPECT_TRUE(list.initialize(kFile | kName | kLabel | kCount));
    list.resetList();
    EXPECT_TRUE(list.initialize(kFile | kName | kLabel | kCount));
    EXPECT_TRUE(list.scanPCIBusAndCreateList());
    EXPECT_EQ(0, list.getTotalNumDevices()) << "only what the scan added counts";
    EXPECT_TRUE(PCIDeviceList().initialize()) << "even without a device";
    EXPECT_NE(nullptr, list.getNextDeviceFromList());
    EXPECT_EQ(nullptr, list.getNextDeviceFromList());
    list.resetList();
    EXPECT_NE(nullptr, list.getNextDeviceFromList());
}

TEST(Inventory, IsEmptyWithoutADetectionFile) {
    CustomPCIDeviceList list;
    EXPECT_TRUE(list.initialize(kFile));
    EXPECT_TRUE(list.getNamedAdapters());
    EXPECT_TRUE(list.labelOnBoardAdapters());
    EXPECT_EQ(0, list.getTotalNumEntries());
    EXPECT_EQ(-1, list.findEntry(0));
    EXPECT_EQ(nullptr, list.getNextDeviceFromList());
}

TEST(Inventory, GroupsAnItemByItsType) {
    using Names = CString (CustomPCIDeviceList::*)() const;
    const std::pair<const char*, Names> kGroups[] = {
        {"DASD", &CustomPCIDeviceList::getDASDDevices},
        {"NETWORK", &CustomPCIDeviceList::getNetworkDevices},
        {"VIDEO", &CustomPCIDeviceList::getVideoDevices},
        {"ServiceProcessor", &CustomPCIDeviceList::getServiceProcessorDevices}};
    for (const auto& [type, names] : kGroups) {
        Inventory list(kNIC);
        EXPECT_TRUE(list.initialize(kFile | kName));
        list.resetList();
        list.getNextDeviceFromList()->adapterType = type;
        list.sortDevicesByType();
        EXPECT_EQ("NIC", (list.*names)()) << type;
        EXPECT_EQ("", list.getSystemDevices());
    }
}

TEST(Inventory, GroupsItsItemsOnceMore) {
    Inventory list(kNIC);
    EXPECT_TRUE(list.initialize(kFile | kName));
    list.resetList();
    list.getNextDeviceFromList()->onBoard = "NOT TRUE YET";
    for (int i = 0; i < 2; ++i) list.sortDevicesByType();
    EXPECT_EQ("NIC,NIC", list.getOnBoardDevices()) << "whatever contains TRUE";
    EXPECT_EQ("NIC,IDE,NIC,IDE", list.getAllDevices());
    EXPECT_EQ("IDE", list.getCDROMDevices()) << "it is alone in its group";
    EXPECT_EQ("a,b", list.addItemToList(list.addItemToList("", "a"), "b"));
}

TEST(Inventory, LooksForTheCDAtTheRootUnlessToldWhere) {
    unsetenv("RWCD");
    EXPECT_EQ("/rwise/ini/a.ini", CustomPCIDeviceList::getCDPathName("a.ini"));
}

// An empty identifier is part of every list of systems, even of a missing one.
TEST(Inventory, ListsBothSystemAdaptersForAnEmptyIdentifier) {
    Inventory list(kNIC);
    list.setSystemKeyword("");
    list.sortDevicesByType();
    EXPECT_EQ("STORMPETREL,CORVEL_ADV_SYS_MGT_ISA_CONTROLLER", list.getServiceProcessorDevices());
}

TEST(Inventory, FreesAnyNumberOfItemsWithoutRecursion) {
    const Outcome run = inChild([] {
        PCIDeviceItem* const first = new PCIDeviceItem;
        PCIDeviceItem* last = first;
        for (int i = 0; i < 200000; ++i) last = last->next = new PCIDeviceItem;
        delete first;
        return 5;
    });
    EXPECT_EQ(5, run.status) << "the stack overflows";
}
