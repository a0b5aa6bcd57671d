#include <sys/stat.h>

#include "support.h"
#include "util/MyFileIO.h"

namespace {
long filesIn(const std::string& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}
long openFiles() { return filesIn("/proc/self/fd"); }
}  // namespace

TEST(Files, AreReadLineByLine) {
    const ScratchFolder folder;
    CMyFileIO file;
    CString line;
    EXPECT_FALSE(file.ReadString(line));
    EXPECT_TRUE(file.OpenFile(folder.file("a", std::string("a\0b\r\n\ncd", 8)).c_str()));
    EXPECT_FALSE(file.OpenFile(""));  // the open file stays
    for (int pass = 0; pass < 2; ++pass) {
        for (const char* expected : {"ab\n", "\n", "cd"}) {
            SCOPED_TRACE(expected);
            EXPECT_FALSE(file.IsEOF());
            EXPECT_TRUE(file.ReadString(line));
            EXPECT_EQ(expected, line);
        }
        EXPECT_TRUE(file.IsEOF());
        EXPECT_TRUE(file.Rewind());
    }
}

TEST(Files, GetEachLineAtOnceInTheModesOfFopen) {
    const std::pair<const char*, const char*> kModes[] = {
        {"w", "b\n"}, {"w+", "b\n"}, {"a", "a\nb\n"}, {"r+", "b\n"}};
    const ScratchFolder folder;
    for (const auto& [mode, content] : kModes) {
        SCOPED_TRACE(mode);
        CMyFileIO file(folder.file("a", "a\n").c_str());
        EXPECT_TRUE(file.Open(mode));
        EXPECT_TRUE(file.WriteStringNL("b"));
        EXPECT_EQ(content, readFile(folder.path("a")));
        EXPECT_TRUE(file.OpenFile("/dev/full", mode));
        EXPECT_FALSE(file.WriteStringNL("x"));
        EXPECT_TRUE(file.WriteString("x"));  // without a line feed, the text waits
        EXPECT_FALSE(file.Close());
    }
}

TEST(Files, LeaveNothingOpenAndNoTemporaryOneBehind) {
    const ScratchFolder folder;
    const CString dir = folder.path().c_str(), other = folder.file("other", "kept").c_str();
    const long before = openFiles();
    {
        CMyFileIO file, second;
        EXPECT_TRUE(file.OpenTempFile(dir));
        EXPECT_TRUE(second.OpenTempFile(dir));
        EXPECT_EQ(3, filesIn(folder.path()));
        EXPECT_TRUE(file.OpenFile(other));  // the temporary one goes, not the other
        EXPECT_EQ(2, filesIn(folder.path()));
        EXPECT_FALSE(file.OpenTempFile("none"));
    }
    EXPECT_EQ(1, filesIn(folder.path()));
    CMyFileIO file(other);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(file.Open());  // the second closes the first
    EXPECT_TRUE(file.DeleteFile());                        // closes it, too
    EXPECT_EQ(before, openFiles());
    EXPECT_FALSE(file.Exists());
}

TEST(Files, ExistAsPipesAndDevices) {
    const ScratchFolder folder;
    ASSERT_EQ(0, mkfifo(folder.path("pipe").c_str(), 0600));
    EXPECT_TRUE(CMyFileIO::Exists(folder.path("pipe").c_str()));  // without waiting for a writer
    EXPECT_TRUE(CMyFileIO::Exists("/dev/null"));
}

TEST(Files, AreCopiedByteForByte) {
    const ScratchFolder folder;
    const std::string bytes = readFile(SLOTRPT_PROGRAM), copy = folder.path("copy");
    const CString source = folder.file("a", bytes).c_str(), target = copy.c_str();
    EXPECT_FALSE(CMyFileIO::CopyFile("none", target));
    EXPECT_TRUE(CMyFileIO::CopyFile(source, target));
    EXPECT_TRUE(CMyFileIO::CopyFile(target, target));  // leaves it alone
    EXPECT_TRUE(bytes == readFile(copy));
    EXPECT_FALSE(CMyFileIO::CopyFile(source, folder.path().c_str()));
}

TEST(Files, HaveVersionsThatCompareByNumbers) {
    EXPECT_EQ(0, CMyFileIO::CompareFileVersion("old4.5", "x.5"));  // what is no number counts as 0
    EXPECT_EQ(-1, CMyFileIO::CompareFileVersion("6.0.0 7.7", "6.0.0.7"));  // cut at the blank
}
