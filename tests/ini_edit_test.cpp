#include "support.h"
#include "util/IniFile.h"

TEST(IniEdit, WritesTheFileBack) {
    const char* const kEdits[][5] = {
        {" [a]\r\n\tk=1 ; old\r\n\r\nK=3", "A", "K", " \t", "[a]\nK =\n\nK=3\n"},  // the first K
        {"[A]\n;K = 1\n", "A", ";K", "2", "[A]\n;K = 2\n"},  // a comment counts as a line
        // Before the blank lines that end a section, the first of its name.
        {"[A]\n[A]\nK = 1\n", "A", "K", "2", "[A]\nK = 2\n\n[A]\nK = 1\n"},
        {"[A]\nK = 1\n\n\n[B]\nX = 2\n", "A", "N", "5", "[A]\nK = 1\nN = 5\n\n\n[B]\nX = 2\n"},
        {"[A]\n[B]\nX = 2\n\n\n", "B", "N", "5", "[A]\n[B]\nX = 2\nN = 5\n\n\n"},
        // A new section: before the blank lines at the end, behind one of its own.
        {"X = 2\n\n\n", "C", "K", "1", "X = 2\n\n[C]\nK = 1\n\n\n"},
        {"\n \n", "C", "K", "1", "[C]\nK = 1\n\n\n"},
        {"X = 2", "c", "", "", "X = 2\n\n[c]\n"},
        {"[A]\n\n[B]\n", "A", "", "", "[A]\n\n[B]\n"},
        // Another case, or another section, makes no duplicate of a bare line.
        {"[A]\n\nitem\n[B]\nItem\n", "A", "", "Item", "[A]\n\nitem\nItem\n\n[B]\nItem\n"},
    };
    const ScratchFolder folder;
    for (const auto& [before, section, key, value, after] : kEdits) {
        const std::string path = folder.file("a.ini", before);
        CIniFile ini(path.c_str());
        EXPECT_TRUE(ini.WriteIt(section, key, value, false, false)) << before;
        EXPECT_EQ(joined({before, 0, after}),  // not written yet, nothing left unsaved
                  joined({readFile(path).c_str(), ini.Flush(), readFile(path).c_str()}));
    }
}

TEST(IniEdit, SavesOnRequestOnDestructionAndOnlyOnce) {
    const ScratchFolder folder;
    const std::string path = folder.path("new.ini");
    {
        CIniFile ini(path.c_str());  // the file is missing
        EXPECT_TRUE(ini.WriteString("A", "K", "1", false, true));
        EXPECT_EQ("[A]\nK = 1\n", readFile(path));
        std::filesystem::remove(path);
        EXPECT_EQ("0|0", joined({ini.Flush(), ini.Exists()}));  // nothing is unsaved
        // A duplicate only on request.
        EXPECT_EQ("1|1|0|1|1", joined({ini.WriteInteger("A", "K", -2),
                                       ini.WriteString("A", "item", false, false),
                                       ini.WriteString("A", "item", false, false),
                                       ini.WriteString("A", "item", true, false),
                                       ini.WriteString("top", false, false)}));
    }
    EXPECT_EQ("top\n\n[A]\nK = -2\nitem\nitem\n", readFile(path));
}

TEST(IniEdit, ReportsWhatCannotBeSaved) {
    const ScratchFolder folder;
    const std::string copy = folder.path("copy");
    for (const std::string& path : {std::string("/dev/full"), folder.path("none/a.ini")}) {
        CIniFile ini(path.c_str());  // the edit is made; a copy elsewhere does not save it
        EXPECT_EQ("1|1|1", joined({ini.WriteString("A", "K", "1", false, true),
                                   ini.WriteIniFile(copy.c_str()), ini.Flush()}));
        EXPECT_EQ("[A]\nK = 1\n", readFile(copy)) << path;
    }
    EXPECT_EQ("1|", joined({CIniFile("").WriteIniFile(copy.c_str()), readFile(copy).c_str()}));
}

TEST(IniEdit, ReachesItsLinesFromTheFirst) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "a\n\nb").c_str());
    CIniFile::IniLineDef* const first = ini.GetFirstLine();
    CIniFile::IniLineDef* const last = first->pPrev;
    EXPECT_STREQ("a", first->sLine.c_str());
    EXPECT_STREQ("b", last->sLine.c_str());
    EXPECT_EQ(first->pNext, ini.RewindBlanks(last));

    EXPECT_TRUE(ini.InsertLine(first, " top "));
    EXPECT_STREQ("top", ini.GetFirstLine()->sLine.c_str());
    EXPECT_EQ(last, ini.GetFirstLine()->pPrev);
    ini.GetFirstLine()->pPrev = nullptr;  // who inserts before the first line asks for no link
    EXPECT_TRUE(ini.InsertLine(ini.GetFirstLine(), "above"));

    ini.DeleteLines();
    EXPECT_EQ(nullptr, ini.GetFirstLine());
}
