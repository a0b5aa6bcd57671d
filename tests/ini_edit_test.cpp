#include "support.h"
#include "util/IniFile.h"

namespace {
struct Edit {
    const char *before, *section, *key, *value, *after;
};
const Edit kEdits[] = {
    // Replacing an entry: the caller's spelling; the first one; a comment counts as a line.
    {" [a]\r\n\tk=1 ; old\r\n\r\nL", "A", "K", "2", "[a]\nK = 2\n\nL\n"},
    {"[A]\nK = 1\nK = 2\n", "A", "K", " \t", "[A]\nK =\nK = 2\n"},
    {"[A]\n;K = 1\n", "A", ";K", "2", "[A]\n;K = 2\n"},
    // Adding to a section: the first of its name, before the blank lines that end it.
    {"[A]\n[A]\nK = 1\n", "A", "K", "2", "[A]\nK = 2\n\n[A]\nK = 1\n"},
    {"[A]\nK = 1\n\n\n[B]\nX = 2\n", "A", "N", "5", "[A]\nK = 1\nN = 5\n\n\n[B]\nX = 2\n"},
    {"[A]\n\nK = 1\n[B]\n", "A", "N", "5", "[A]\n\nK = 1\nN = 5\n\n[B]\n"},
    {"[A]\n[B]\nX = 2\n\n\n", "B", "N", "5", "[A]\n[B]\nX = 2\nN = 5\n\n\n"},
    {"[A]\nK = 1", "A", "N", "5", "[A]\nK = 1\nN = 5\n"},
    {"\n[A]\n", "", "K", "1", "K = 1\n\n[A]\n"},
    // Adding a section: before the blank lines at the end, behind one of its own.
    {"", "A", "K", "1", "[A]\nK = 1\n"},
    {"X = 2", "C", "K", "1", "X = 2\n\n[C]\nK = 1\n"},
    {"X = 2\n\n\n", "C", "K", "1", "X = 2\n\n[C]\nK = 1\n\n\n"},
    {"\n \n", "C", "K", "1", "[C]\nK = 1\n\n\n"},
    {"X = 2", "C", "", "", "X = 2\n\n[C]\n"},
    {"[A]\n[B]\n", "A", "", "", "[A]\n[B]\n"},
    // Bare lines: another case, or another section, makes no duplicate.
    {"[A]\nK = 1\n", "", "", "top", "top\n\n[A]\nK = 1\n"},
    {"[A]\nitem\n[B]\nItem\n", "A", "", "Item", "[A]\nitem\nItem\n\n[B]\nItem\n"},
};
}  // namespace

TEST(IniEdit, WritesTheFileBack) {
    const ScratchFolder folder;
    for (const Edit& row : kEdits) {
        SCOPED_TRACE(row.before);
        const std::string path = folder.file("a.ini", row.before);
        CIniFile ini(path.c_str());
        EXPECT_TRUE(ini.WriteIt(row.section, row.key, row.value, false, false));
        EXPECT_EQ(row.before, readFile(path));  // not yet
        EXPECT_FALSE(ini.Flush());
        EXPECT_EQ(row.after, readFile(path));
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
        EXPECT_TRUE(ini.WriteInteger("A", "K", -2) && ini.WriteString("A", "item", false, false));
        EXPECT_FALSE(ini.WriteString("A", "item", false, false));  // a duplicate
        EXPECT_TRUE(ini.WriteString("A", "item", true, false) &&
                    ini.WriteString("top", false, false));
    }
    EXPECT_EQ("top\n\n[A]\nK = -2\nitem\nitem\n", readFile(path));
}

TEST(IniEdit, ReportsWhatCannotBeSaved) {
    const ScratchFolder folder;
    for (const std::string& path : {std::string("/dev/full"), folder.path("none/a.ini")}) {
        CIniFile ini(path.c_str());
        EXPECT_TRUE(ini.WriteString("A", "K", "1", false, true)) << path;  // the edit is made
        EXPECT_TRUE(ini.WriteIniFile(folder.path("copy").c_str()));
        EXPECT_EQ("[A]\nK = 1\n", readFile(folder.path("copy")));
        EXPECT_TRUE(ini.Flush()) << path;  // still unsaved: a copy elsewhere does not count
    }
    EXPECT_TRUE(CIniFile("").WriteIniFile(folder.path("copy").c_str()));
    EXPECT_EQ("", readFile(folder.path("copy")));  // a file of no lines
}
