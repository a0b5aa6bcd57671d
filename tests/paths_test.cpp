#include "support.h"

TEST(Paths, AreSplit) {
    const char* const kPaths[][4] = {
        {"dir/a:b", "dir/a:||b|", "dir", "a:b"},                     // a drive may hold a "/"
        {"C:a:b", "C:||a:b|", "C", "a:b"},                           // the first ":" divides
        {"a\\b.tar.html", "||a\\b.tar.html|", "", "a\\b.tar.html"},  // more than three characters
        {".ini", "|||.ini", "", ".ini"},
        {"C:/d.x/a.", "C:|/d.x/|a|.", "C:/d.x", "a."},
        {" /tmp/a.b.c\n", "|/tmp/|a.b|.c", " /tmp", "a.b.c\n"},  // only the four parts are trimmed
    };
    for (const auto& [whole, parts, path, name] : kPaths) {
        CString text = whole, drive, file, extension, other;
        EXPECT_EQ(joined({path, name, path, path, whole, parts}),
                  joined({text.GetPath(), text.GetName(), other.GetPath(text), other,
                          text.GetAbsolutePath(), text.GetDrive() + "|" + text.GetDirectory(),
                          text.GetFileName(), text.GetExtension()}));
        EXPECT_TRUE(text.SplitPath(drive, text, file, extension));  // into itself
        EXPECT_EQ(parts, joined({drive, text, file, extension}));
    }
}

TEST(Paths, AreJoinedByOneSlash) {
    const auto join = [](CString path, CString part) { return CString(path.AddPath(part)); };
    EXPECT_EQ("a/x|a/x|a/x|a/x|x|/x|a|/|old/d/f.txt",
              joined({join("a", "x"), join("a", "/x"), join("a/", "x"), join("a/", "/x"),
                      join("", "x"), join("", "/x"), join("a", ""), join("/", "/"),
                      CString().MakePath("C:", "old/d/", "/f", ".txt")}));
}

TEST(Paths, ChangeCaseInPlaceOrInACopy) {
    CString s = "ab1\xE4[`{";  // only ASCII letters have a case
    EXPECT_EQ("AB1\xE4[`{|ab1\xE4[`{", joined({s.Upper(), s}));
    EXPECT_EQ("aB1\xE4[`{|||ab1\xE4[`{|AB1\xE4[`{",
              joined({s.ToUpper(1), s.ToUpper(7), s.ToLower(7), s.ToLower(1), s.ToUpper()}));
    EXPECT_EQ("ab1\xE4[`{|AB1\xE4[`{|ab1\xE4[`{", joined({s.Lower(), s, s.ToLower()}));
}
