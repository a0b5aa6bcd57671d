#include "support.h"

namespace {
struct Split {
    const char* rule;
    CString (CString::*part)() const;
    const char* path;
    CString expected;
};
const Split kSplits[] = {
    {"a path ends before the last slash", &CString::GetPath, " C:/tmp/a.b\n", " C:/tmp"},
    {"without a slash, the first colon divides", &CString::GetPath, "C:a:b", "C"},
    {"without both, there is no path", &CString::GetPath, "name", ""},
    {"the drive is trimmed", &CString::GetDrive, " C:/tmp", "C:"},
    {"a directory ends with its slash", &CString::GetDirectory, "C:/tmp/a", "/tmp/"},
    {"a file name has no extension", &CString::GetFileName, "/tmp/a.b.c\n", "a.b"},
    {"an extension begins with its dot", &CString::GetExtension, "/tmp/a.b.txt\n", ".txt"},
};
}  // namespace

TEST(Paths, AreSplitAtTheirMarks) {
    for (const Split& row : kSplits)
        EXPECT_EQ(row.expected, (CString(row.path).*row.part)()) << row.rule;
    CString text = "C:/tmp/a", drive, name, extension;
    EXPECT_TRUE(text.SplitPath(drive, text, name, extension));
    EXPECT_EQ("/tmp/", text) << "a part may be the path";
}

TEST(Paths, AreJoinedByOneSlash) {
    EXPECT_STREQ("/x", CString().AddPath("/x"));
    EXPECT_STREQ("a", CString("a").AddPath(""));
    EXPECT_STREQ("/d/f.txt", CString().MakePath("C:", "/d", "f", ".txt")) << "without the drive";
}
