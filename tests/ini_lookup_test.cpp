#include "support.h"
#include "util/IniFile.h"

using namespace std::string_literals;

TEST(IniLookup, FollowsTheSyntax) {
    const std::string large(1 << 20, 'v'), nothing(1 << 16, '\0');  // more than is read at once
    // The document, a section, keys with "|" between them, and their values with "|" behind each.
    const std::tuple<std::string, CString, CString, std::string> kLookups[] = {
        {"[System]\nType = MT01", "sYSTEM", "TYPE", "MT01|"},  // case; no line end at the end
        {"\0[S\0]\nK\r = v\rw\r\r\n"s, "S", "K", "vw|"},       // CRs and NULs vanish
        {"\t[ \tS ] x\n K\t=\t\"a  b\" \t\n", "S", "K", "\"a  b\"|"},  // blanks around all names
        {"[S]\nK =\f v\v\nL = a=b ; # d\n", "S", "K|L", "\f v\v|a=b ; # d|"},  // all that stays
        {"[S]\n  ;K = 1\n# K = 1\n// K = 2\n", "S", ";K|# k", " -|1|"},        // only ";" comments
        {"[S]\n\nK\n \t\nK = v\n", "S", "K", "v|"},   // blank and bare lines pass
        {"[S]\n[T]\n[S]\nK = v\n", "S", "K", " -|"},  // the first section only
        {nothing + "[S]\nK = " + large + "\nL = 1\n", "S", "K|L", large + "|1|"},
        {"[S]\nk = 1\nK = 2\n[\nL = v\n", "S", "K|L", "1| -|"},  // the first entry, up to any "["
        {"K = 0\n[S]\nL = 1\n", "", "K|L", "0| -|"},             // above the first header
        {"[]\nK = v\n", "", "K", " -|"},                         // cannot be selected
        {"[S\nK = v\n", "S", "K", "v|"},                         // unclosed
        {"[S]]\nK = v\n", "S]", "K", " -|"},                     // the first "]" ends a name
        {"[S]\nK = v\na=b = v\n = v\nL =\n", "S", "K |a=b||L", " -| -|v||"},  // not trimmed
        {"[ST]\nK = v\n[S]\nKL = v\n", "S", "K", " -|"},                      // whole names only
        {"[S]\nK@ = 1\n\xC4 = 2\n", "S", "K`|\xE4", " -| -|"}};  // only ASCII letters have a case
    const ScratchFolder folder;
    for (const auto& [document, section, keys, values] : kLookups) {
        CIniFile ini(folder.file("a.ini", document).c_str());
        std::string read;
        for (unsigned i = 0; i < keys.GetNumberTokens("|"); ++i)
            read += joined({ini.ReadString(section, keys.GetToken(i, "|"), " -"), ""});
        EXPECT_EQ(values, read) << document.substr(0, 60);
    }
}

TEST(IniLookup, AnswersFromMemoryAndNeverWrites) {
    const ScratchFolder folder;
    const std::string text = "N = -12x\r\n  W = word\nL = 4294967296";
    const CString path = folder.file("a.ini", text).c_str();
    CIniFile ini(path), missing(folder.path("none").c_str());
    EXPECT_EQ("1|0|0|0", joined({ini.Exists(), missing.Exists(), ini.Flush(), missing.Flush()}));
    EXPECT_EQ(text, readFile(path.c_str()));
    std::filesystem::remove(path.c_str());
    CString line;
    EXPECT_EQ("0|0|1", joined({ini.Exists(), missing.Exists(), ini.FindItem("", "W", line)}));
    EXPECT_EQ("W = word", line);  // the whole of it
    // No number is 0, not the fallback; one that is too large is the nearest int.
    EXPECT_EQ("-12|0|2147483647|-7|0|",
              joined({ini.ReadInteger("", "N"), ini.ReadInteger("", "W", 7),
                      ini.ReadInteger("", "L"), ini.ReadInteger("", "X", -7),
                      ini.ReadInteger("", "X"), missing.ReadString("", "N")}));
}
