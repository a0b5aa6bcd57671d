#include "support.h"
#include "util/IniFile.h"

namespace {
struct Edit {
    const char* before;
    const char* section;
    const char* key;
    const char* value;
    const char* after;
};
const Edit kEdits[] = {
    // The first entry of the key, or what looks like one in a comment; the line becomes the new
    // one.
    {" [a]\r\n\tk=1 ; old\r\n\r\nK=3", "A", "K", " \t", "[a]\nK =\n\nK=3\n"},
    {"[A]\n;K = 1\n", "A", ";K", "2", "[A]\n;K = 2\n"},
    // A new entry stands before the blank lines that end the section, the first of its name.
    {"[A]\n[A]\nK = 1\n", "A", "K", "2", "[A]\nK = 2\n\n[A]\nK = 1\n"},
    {"[A]\nK = 1\n\n\n[B]\n", "A", "N", "5", "[A]\nK = 1\nN = 5\n\n\n[B]\n"},
    // So does a new section, behind one blank line.
    {"X = 2\n\n\n", "C", "K", "1", "X = 2\n\n[C]\nK = 1\n\n\n"},
    {"\n \n", "C", "K", "1", "[C]\nK = 1\n\n\n"},
    {"[A]\n\n[B]\n", "A", "", "", "[A]\n\n[B]\n"},  // which is there already
    // Another case, or another section, makes no duplicate of a bare line.
    {"[A]\n\nitem\n[B]\nItem\n", "A", "", "Item", "[A]\n\nitem\nItem\n\n[B]\nItem\n"},
};
}  // namespace

TEST(IniEdit, KeepsTheLayoutOfTheFile) {
    const ScratchFolder folder;
    for (const Edit& row : kEdits) {
        SCOPED_TRACE(row.before);
        const std::string path = folder.file("a.ini", row.before);
        CIniFile ini(path.c_str());
        EXPECT_TRUE(ini.WriteIt(row.section, row.key, row.value, false, false));
        EXPECT_EQ(row.before, readFile(path));  // not written yet
        EXPECT_FALSE(ini.Flush());
        EXPECT_EQ(row.after, readFile(path));
    }
}

TEST(IniEdit, IsSavedOnRequestOrInTheEndAndOnlyOnce) {
    const ScratchFolder folder;
    const std::string path = folder.path("new.ini");
    {
        CIniFile ini(path.c_str());  // the file is missing
        EXPECT_TRUE(ini.WriteString("A", "K", "1", false, true));
        EXPECT_EQ("[A]\nK = 1\n", readFile(path));
        std::filesystem::remove(path);
        EXPECT_FALSE(ini.Flush());  // nothing is unsaved
        EXPECT_FALSE(ini.Exists());
        EXPECT_TRUE(ini.WriteInteger("A", "K", -2));
        EXPECT_TRUE(ini.WriteString("top", false, false));
    }
    EXPECT_EQ("top\n\n[A]\nK = -2\n", readFile(path));
}

TEST(IniEdit, RefusesABareLineThatIsThere) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "[A]\nitem\n").c_str());
    EXPECT_FALSE(ini.WriteString("A", "item", false, false));
    EXPECT_FALSE(ini.Flush());
    EXPECT_TRUE(ini.WriteString("A", "item", true, true));
    EXPECT_EQ("[A]\nitem\nitem\n", readFile(folder.path("a.ini")));
}

TEST(IniEdit, StaysUnsavedWhenTheFileCannotBeWritten) {
    const ScratchFolder folder;
    const std::string copy = folder.path("copy");
    CIniFile ini("/dev/full");
    EXPECT_TRUE(ini.WriteString("A", "K", "1", false, true));
    EXPECT_TRUE(ini.WriteIniFile(copy.c_str()));  // which does not save it
    EXPECT_TRUE(ini.Flush());
    EXPECT_EQ("[A]\nK = 1\n", readFile(copy));
}

TEST(IniEdit, ReachesTheLinesFromTheFirst) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "a\n\nb").c_str());
    CIniFile::IniLineDef* const first = ini.GetFirstLine();
    CIniFile::IniLineDef* const last = first->pPrev;
    EXPECT_EQ("b", last->sLine);
    EXPECT_EQ(first->pNext, ini.RewindBlanks(last));
    EXPECT_TRUE(ini.InsertLine(first, " top "));
    EXPECT_EQ("top", ini.GetFirstLine()->sLine);
    EXPECT_EQ(last, ini.GetFirstLine()->pPrev);
    ini.GetFirstLine()->pPrev = nullptr;  // before the first line, no link is asked for
    EXPECT_EQ("absent", ini.ReadString("", "K", "absent"));  // nor does a lookup
    EXPECT_TRUE(ini.InsertLine(ini.GetFirstLine(), "above"));

    ini.DeleteLines();
    EXPECT_EQ(nullptr, ini.GetFirstLine());
    const std::unique_ptr<CIniFile::IniLineDef> line(ini.MakeNewLine(" \tnew\n"));
    EXPECT_EQ("new", line->sLine);
    EXPECT_EQ(line.get(), ini.RewindBlanks(line.get()));
    EXPECT_EQ(nullptr, ini.GetFirstLine());  // a line of nobody
}
