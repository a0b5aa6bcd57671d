#include "support.h"
#include "util/IniFile.h"

using namespace std::string_literals;

namespace {
struct Lookup {
    const char* rule;
    std::string document;
    const char* section;
    const char* key;
    CString value;
};
const Lookup kLookups[] = {
    {"the case of names does not count", "[Size]\nType = MT01\n", "sIZE", "TYPE", "MT01"},
    {"the last line needs no line feed", "[S]\nK = v", "S", "K", "v"},
    {"carriage returns and NULs vanish", "\0[S\0]\nK\r = v\rw\r\r\n"s, "S", "K", "vw"},
    {"blanks around names and values do not count", "\t[ \tS ] x\n K\t=\t\"a  b\" \t\n", "S", "K",
     "\"a  b\""},
    {"a comment is not an entry", "[S]\n;K = 1\n", "S", ";K", "absent"},
    {"the first entry of a key is found", "[S]\n\nK\n \t\nK = v\nk = w\n", "S", "K", "v"},
    {"the first section of a name is searched", "[S]\n[T]\n[S]\nK = v\n", "S", "K", "absent"},
    {"the empty name is above the first header", "K = v\n[S]\nK = w\n", "", "K", "v"},
    {"'@' is not a letter", "[S]\nK@ = v\n", "S", "K`", "absent"},
    {"'[' is not a letter", "[S]\nK[ = v\n", "S", "K{", "absent"},
    {"only whole names match", "[ST]\nK = v\n[S]\nKL = v\n", "S", "K", "absent"},
};

struct NumberedEntry {
    const char* rule;
    const char* entry;
    int number;
};
const NumberedEntry kNumberedEntries[] = {
    {"blanks after the number do not count", "L.3 =", 3},
    {"the name may be empty", ".4=", 4},
    {"a comment is not an entry", ";K.1=", -1},
    {"a number with a leading zero does not count", "K.02=", -1},
    {"a number has digits", "K.=", -1},
    {"a number is not a name", "4=", -1},
    {"an entry without a name has no number", "=4", -1},
    {"a number follows a dot", "K5=", -1},
    {"a name that is not counted does not count", "X.5=", -1},
    {"a number may be INT_MAX", "K.2147483647=", 2147483647},
    {"a number above INT_MAX does not count", "K.2147483648=", -1},
};
}  // namespace

TEST(IniLookup, FollowsTheSyntax) {
    const ScratchFolder folder;
    for (const Lookup& row : kLookups) {
        CIniFile ini(folder.file("a.ini", row.document).c_str());
        EXPECT_EQ(row.value, ini.ReadString(row.section, row.key, "absent")) << row.rule;
    }
}

TEST(IniLookup, ReadsLinesOfAnyLength) {
    const std::string large(1 << 20, 'v'), nothing(1 << 16, '\0');  // more than is read at once
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", nothing + "[S]\nK = " + large + "\nL = 1\n").c_str());
    EXPECT_EQ(large.c_str(), ini.ReadString("S", "K"));
    EXPECT_EQ("1", ini.ReadString("S", "L"));
}

TEST(IniLookup, DividesALineThatHoldsLess) {
    CString name = "old", value = "old";
    EXPECT_EQ(CIniFile::lkHeader, CIniFile::DivideLine("[S", name, value));
    EXPECT_EQ("S", name);
    EXPECT_EQ("", value);
    name = "old";
    value = "old";
    EXPECT_EQ(CIniFile::lkBare, CIniFile::DivideLine("K", name, value));
    EXPECT_EQ("", name);
    EXPECT_EQ("", value);
}

TEST(IniLookup, FindsTheNextNumberedEntryThatCounts) {
    const ScratchFolder folder;
    const auto next = [&](const std::string& entries, const char* section, int from) {
        CIniFile ini(folder.file("a.ini", "[S]\n" + entries).c_str());
        const auto isCounted = [](std::string_view name) { return name != "X"; };
        return ini.FindNumber(section, isCounted, from);
    };
    for (const NumberedEntry& row : kNumberedEntries)
        EXPECT_EQ(row.number, next(row.entry, "S", 0)) << row.rule;
    const std::pair<int, int> kNext[] = {{0, 0}, {1, 3}, {3, 3}, {4, 7}, {8, -1}};
    for (const auto& [from, number] : kNext)
        EXPECT_EQ(number, next("L.0=\nK.7=\nL.3=\n", "S", from)) << "from " << from;
    EXPECT_EQ(-1, next("K.7=\n", "T", 0)) << "there is no such section";
}

TEST(IniLookup, AnswersFromMemoryAndWritesNothing) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "K = v\n[S]").c_str());
    std::filesystem::remove(folder.path("a.ini"));
    CString line;
    EXPECT_TRUE(ini.FindItem("", "K", line));
    EXPECT_EQ("K = v", line) << "the whole line";
    EXPECT_FALSE(ini.FindItem("T", "K", line));
    EXPECT_EQ("[S]", line) << "the last line that was visited";
    EXPECT_EQ(0, ini.ReadInteger("", "none"));
    EXPECT_FALSE(ini.Flush());
    EXPECT_FALSE(ini.Exists());
}
