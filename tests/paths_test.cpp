#include "support.h"

TEST(Paths, AreSplit) {
    struct Path {
        CString path, drive, directory, name, extension, getPath, getName;
    };
    const Path kPaths[] = {
        {"dir/a:b", "dir/a:", "", "b", "", "dir", "a:b"},              // a drive may hold a "/"
        {"C:a:b", "C:", "", "a:b", "", "C", "a:b"},                    // the first ":" divides
        {"a\\b.html", "", "", "a\\b.html", "", "", "a\\b.html"},       // more than three characters
        {"d/.txt", "", "d/", "", ".txt", "d", ".txt"},                 // only an extension
        {" /tmp/a.b.\n", "", "/tmp/", "a.b", ".", " /tmp", "a.b.\n"},  // only a split trims
    };
    for (const Path& row : kPaths) {
        SCOPED_TRACE(row.path);
        CString text = row.path, drive, name, extension;
        EXPECT_EQ(row.getPath, text.GetPath());
        EXPECT_EQ(row.getName, text.GetName());
        EXPECT_EQ(row.drive, text.GetDrive());
        EXPECT_EQ(row.directory, text.GetDirectory());
        EXPECT_EQ(row.name, text.GetFileName());
        EXPECT_EQ(row.extension, text.GetExtension());
        EXPECT_TRUE(text.SplitPath(drive, text, name, extension));  // a part may be the path
        EXPECT_EQ(row.directory, text);
    }
}

TEST(Paths, AreJoinedByOneSlash) {
    for (const CString start : {"a", "a/"})
        for (const char* part : {"x", "/x"}) EXPECT_STREQ("a/x", CString(start).AddPath(part));
    EXPECT_STREQ("/x", CString().AddPath("/x"));
    EXPECT_STREQ("a", CString("a").AddPath(""));
    EXPECT_EQ("../x", CString("../x").GetAbsolutePath());
}

TEST(Paths, ChangeCaseInPlaceOrInACopy) {
    CString s = "ab1\xE4[`{";  // only ASCII letters have a case
    EXPECT_EQ("AB1\xE4[`{", s.Upper());
    EXPECT_EQ("aB1\xE4[`{", s.ToUpper(1));
    EXPECT_EQ("ab1\xE4[`{", s.ToLower());
}
