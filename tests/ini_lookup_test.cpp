#include "support.h"
#include "util/IniFile.h"

using namespace std::string_literals;

namespace {
const char* const kNo = " no\t";  // a fallback, which comes back untrimmed

struct Lookup {
    std::string document;
    const char *section, *key, *value;
};
const Lookup kLookups[] = {
    {"[System]\nType = MT01", "sYSTEM", "TYPE", "MT01"},          // case; no line end at the end
    {"\0[S\0]\r\r\nK\r = v\rw\0\r\n"s, "S", "K", "vw"},           // CRs and NULs vanish
    {"[S]\nK = a=b ; c # d\n", "S", "K", "a=b ; c # d"},          // only the first "=" divides
    {"\t[ \tS ] x\n K\t=\t\"a  b\" \t\n", "S", "K", "\"a  b\""},  // blanks around all names
    {"[S]\nK =\f v\v\n", "S", "K", "\f v\v"},                     // other white space stays
    {"[S]\nK =\n", "S", "K", ""},                                 // empty, but there
    {"[S]\n  ;K = 1\n", "S", ";K", kNo},                          // comments are skipped
    {"[S]\n# K = 1\n// K = 2\n", "S", "# k", "1"},                // but "#" begins none
    {"[S]\n\nK\n \t\nK = v\n", "S", "K", "v"},                    // blank and bare lines pass
    {"[S]\n[T]\n[S]\nK = v\n", "S", "K", kNo},                    // the first section only
    {"[S]\n[\nK = v\n", "S", "K", kNo},                           // any "[" ends it
    {"[S]\nK = 1\nk = 2\n", "S", "k", "1"},                       // the first entry counts
    {"K = 0\n[S]\nL = 1\n", "", "K", "0"},                        // above the first header
    {"K = 0\n[S]\nL = 1\n", "", "L", kNo},                        // and no further
    {"[]\nK = v\n", "", "K", kNo},                                // cannot be selected
    {"[S\nK = v\n", "S", "K", "v"},                               // unclosed
    {"[S]]\nK = v\n", "S]", "K", kNo},                            // the first "]" ends a name
    {"[S ]\nK = v\n", "S ", "K", kNo},                            // what is wanted is not trimmed
    {"[S]\nK = v\n", "S", "K ", kNo},
    {"[S]\na=b = v\n", "S", "a=b", kNo},            // no key holds a "="
    {"[S]\n = v\n", "S", "", "v"},                  // an empty key is a key
    {"[ST]\nK = v\n[S]\nKL = v\n", "S", "K", kNo},  // whole names only
    {"[S]\nK@ = 1\n\xC4 = 2\n", "S", "K`", kNo},    // only letters have a case
    {"[S]\nK@ = 1\n\xC4 = 2\n", "S", "\xE4", kNo},  // and only those of ASCII
};
}  // namespace

TEST(IniLookup, FollowsTheSyntax) {
    const ScratchFolder folder;
    for (const Lookup& row : kLookups) {
        CIniFile ini(folder.file("a.ini", row.document).c_str());
        EXPECT_EQ(row.value, ini.ReadString(row.section, row.key, kNo)) << row.document;
    }
    for (const unsigned length : {62u, 63u, 64u, 127u, 255u, 1023u, 1u << 20}) {
        const std::string value(length, 'v');
        CIniFile ini(folder.file("a.ini", "K=" + value + "\nL = 1\n").c_str());
        EXPECT_EQ(value + "|1", joined({ini.ReadString("", "K"), ini.ReadString("", "L")}))
            << length;
    }
}

TEST(IniLookup, AnswersFromMemoryAndNeverWrites) {
    const ScratchFolder folder;
    const CString path = folder.file("a.ini", "N = -12x\r\n  W = word\nL = 4294967296").c_str();
    CIniFile ini(path), missing(folder.path("none").c_str());
    EXPECT_EQ("1|0|0|0", joined({ini.Exists(), missing.Exists(), ini.Flush(), missing.Flush()}));
    EXPECT_EQ("N = -12x\r\n  W = word\nL = 4294967296", readFile(path.c_str()));
    std::filesystem::remove(path.c_str());
    EXPECT_EQ("0|0", joined({ini.Exists(), missing.Exists()}));
    CString line;
    EXPECT_TRUE(ini.FindItem("", "W", line));
    EXPECT_EQ("W = word", line);  // the whole of it
    // No number is 0, not the fallback; one that is too large is the nearest int.
    EXPECT_EQ("-12|0|2147483647", joined({ini.ReadInteger("", "N"), ini.ReadInteger("", "W", 7),
                                          ini.ReadInteger("", "L")}));
    EXPECT_EQ("-7|0|", joined({ini.ReadInteger("", "X", -7), ini.ReadInteger("", "X"),
                               missing.ReadString("", "N")}));
}
