#include "support.h"
#include "util/IniFile.h"

namespace {
struct Edit {
    const char* rule;
    const char* before;
    const char* section;
    const char* key;
    const char* value;
    const char* after;
};
const Edit kEdits[] = {
    {"the first entry of the key changes, and loses its indentation and comment",
     " [a]\r\n\tk=1 ; old\r\n\r\nK=3", "A", "K", " \t", "[a]\nK =\n\nK=3\n"},
    {"a comment counts as an entry", "[A]\n;K = 1\n", "A", ";K", "2", "[A]\n;K = 2\n"},
    {"a new entry goes into the first section of the name, before its last blank lines",
     "[A]\nK = 1\n\n\n[A]\n", "A", "N", "5", "[A]\nK = 1\nN = 5\n\n\n[A]\n"},
    {"a new section goes before the last blank lines, after one of its own", "X = 2\n\n\n", "C",
     "K", "1", "X = 2\n\n[C]\nK = 1\n\n\n"},
    {"a document of blank lines gets none above its first section", "\n\n", "C", "K", "1",
     "[C]\nK = 1\n\n\n"},
    {"a line that differs only in case is new", "[A]\nitem\n", "A", "", "Item",
     "[A]\nitem\nItem\n"},
};
}  // namespace

TEST(IniEdit, ChangesAnEntryOrAddsItBeforeTheBlanks) {
    const ScratchFolder folder;
    for (const Edit& row : kEdits) {
        SCOPED_TRACE(row.rule);
        const std::string path = folder.file("a.ini", row.before);
        CIniFile ini(path.c_str());
        EXPECT_TRUE(ini.WriteIt(row.section, row.key, row.value, false, false));
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
        EXPECT_FALSE(ini.Flush()) << "nothing is unsaved";
        EXPECT_FALSE(ini.Exists());
        EXPECT_TRUE(ini.WriteString("A", "", false, false)) << "nothing is added";
        EXPECT_TRUE(ini.WriteString("top", false, false));
    }
    EXPECT_EQ("top\n\n[A]\nK = 1\n", readFile(path));
}

TEST(IniEdit, StaysUnsavedWhenTheFileCannotBeWritten) {
    const ScratchFolder folder;
    const std::string copy = folder.path("copy");
    CIniFile ini("/dev/full");
    EXPECT_TRUE(ini.WriteString("A", "K", "1", false, true));
    EXPECT_TRUE(ini.WriteIniFile(copy.c_str()));
    EXPECT_TRUE(ini.Flush()) << "a copy does not save the document";
    EXPECT_EQ("[A]\nK = 1\n", readFile(copy));
}

TEST(IniEdit, WorksOnTheLinesThemselves) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "a\n\nb").c_str());
    CIniFile::IniLineDef* const first = ini.GetFirstLine();
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(first->pNext, ini.RewindBlanks(first->pPrev));
    EXPECT_EQ(nullptr, ini.RewindBlanks(nullptr));
    first->pPrev = first->pNext->pPrev = nullptr;
    EXPECT_FALSE(ini.InsertLine(first->pNext, "c")) << "an insertion needs the line before";
    CString line;
    EXPECT_FALSE(ini.FindItem("", "K", line));
    EXPECT_EQ("b", line) << "a lookup does not need this pPrev to find the last line";
    EXPECT_FALSE(ini.AddLine("c")) << "a line at the end does";
    EXPECT_TRUE(ini.InsertLine(first, " top "))
        << "an insertion before it does not need it, either";
    EXPECT_EQ("top", ini.GetFirstLine()->sLine);

    ini.DeleteLines();
    const std::unique_ptr<CIniFile::IniLineDef> made(ini.MakeNewLine(" \tnew\n"));
    EXPECT_EQ("new", made->sLine);
    EXPECT_EQ(made.get(), ini.RewindBlanks(made.get()));
    EXPECT_EQ(nullptr, ini.GetFirstLine()) << "the new line is in no document";
    EXPECT_TRUE(ini.ReadIniFile("/dev/zero")) << "a device counts as an empty file";
    EXPECT_FALSE(ini.ReadIniFile("none"));
    EXPECT_TRUE(ini.AddLine(" \tc\n"));
    EXPECT_EQ("c", ini.GetFirstLine()->sLine);
}
