#include "support.h"

TEST(Paths, AreSplit) {
    CString text = " C:/tmp/a.b.txt\n", drive, name, extension;
    EXPECT_EQ(" C:/tmp", text.GetPath());
    EXPECT_EQ("C:", text.GetDrive());  // only a split trims
    EXPECT_EQ("/tmp/", text.GetDirectory());
    EXPECT_TRUE(text.SplitPath(drive, text, name, extension));  // a part may be the path
    EXPECT_EQ("/tmp/", text);
    EXPECT_EQ("dir/a:", CString("dir/a:b").GetDrive());  // a drive may hold a "/"
    EXPECT_EQ("C", CString("C:a:b").GetPath());          // the first ":" divides
    EXPECT_EQ("", CString("b.html").GetExtension());     // more than three characters
}

TEST(Paths, AreJoinedByOneSlash) {
    EXPECT_STREQ("a/x", CString("a/").AddPath("/x"));
    EXPECT_STREQ("/x", CString().AddPath("/x"));
    EXPECT_STREQ("a", CString("a").AddPath(""));
}
