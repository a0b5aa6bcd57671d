#include "support.h"

TEST(Paths, AreSplit) {
    const struct {
        const char *text, *parts, *path, *name;
    } kPaths[] = {
        {"/rwise/ini/syscfg.ini", "|/rwise/ini/|syscfg|.ini", "/rwise/ini", "syscfg.ini"},
        {"C:/d/a.txt", "C:|/d/|a|.txt", "C:/d", "a.txt"},
        {"dir/a:b", "dir/a:||b|", "dir", "a:b"},            // a drive may hold a "/"
        {"C:a:b", "C:||a:b|", "C", "a:b"},                  // the first ":" divides
        {"a.tar.html", "||a.tar.html|", "", "a.tar.html"},  // more than three characters
        {".ini", "|||.ini", "", ".ini"},
        {"d.x/a.", "|d.x/|a|.", "d.x", "a."},
        {"/d\\file", "|/|d\\file|", "", "d\\file"},
        {" /tmp/a.b.c\n", "|/tmp/|a.b|.c", " /tmp", "a.b.c\n"},  // only the four parts are trimmed
        {"", "|||", "", ""},
    };
    for (const auto& row : kPaths) {
        CString text = row.text, drive, file, extension, other;
        EXPECT_EQ(joined({row.path, row.name, row.path, row.path, row.text}),
                  joined({text.GetPath(), text.GetName(), other.GetPath(text), other,
                          text.GetAbsolutePath()}));
        EXPECT_EQ(row.parts, joined({text.GetDrive(), text.GetDirectory(), text.GetFileName(),
                                     text.GetExtension()}));
        EXPECT_TRUE(text.SplitPath(drive, text, file, extension));  // into itself
        EXPECT_EQ(row.parts, joined({drive, text, file, extension}));
    }
}

TEST(Paths, AreJoinedByOneSlash) {
    const auto join = [](CString path, CString part) { return CString(path.AddPath(part)); };
    for (const char* path : {"/tmp", "/tmp/"})
        for (const char* part : {"x", "/x"}) EXPECT_EQ("/tmp/x", join(path, part));
    EXPECT_EQ("x|/x|/tmp|/",
              joined({join("", "x"), join("", "/x"), join("/tmp", ""), join("/", "/")}));
    EXPECT_STREQ("old/d/f.txt", CString().MakePath("C:", "old/d/", "/f", ".txt"));
}

TEST(Paths, ChangeCaseInPlaceOrInACopy) {
    CString s = "ab1\xE4[`{";  // only ASCII letters have a case
    EXPECT_EQ("AB1\xE4[`{|ab1\xE4[`{", joined({s.Upper(), s}));
    EXPECT_EQ("aB1\xE4[`{||", joined({s.ToUpper(1), s.ToUpper(7), s.ToLower(7)}));
    EXPECT_EQ("ab1\xE4[`{|AB1\xE4[`{", joined({s.ToLower(1), s.ToUpper()}));
    EXPECT_EQ("ab1\xE4[`{|AB1\xE4[`{|ab1\xE4[`{", joined({s.Lower(), s, s.ToLower()}));
}
