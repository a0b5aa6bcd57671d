#include <fcntl.h>
#include <sys/stat.h>

#include <tuple>

#include "support.h"
#include "util/MyFileIO.h"

namespace {
std::string utf16(const std::string& text) {
    std::string bytes;
    for (const char c : text) bytes += {c, '\0'};
    return bytes;
}

long filesIn(const std::string& folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}
}  // namespace

TEST(Files, AreReadAndWrittenLineByLine) {
    const ScratchFolder folder;
    CMyFileIO file;
    CString line = "old";
    EXPECT_EQ("0|0|0|0|0||1",
              joined({file.Open(), file.Close(), file.Rewind(), file.WriteStringNL(),
                      file.ReadString(line), line, file.IsEOF()}));
    // Without a name, the open file stays.
    EXPECT_TRUE(file.OpenFile(folder.file("a", std::string("a\0b\r\n\ncd", 8)).c_str()) &&
                !file.OpenFile(""));
    for (int pass = 0; pass < 2; ++pass) {
        for (const char* expected : {"1|ab\n|0", "1|\n|0", "1|cd|1", "0||1"})
            EXPECT_EQ(expected, joined({file.ReadString(line), line, file.IsEOF()}));
        EXPECT_EQ("1|0", joined({file.Rewind(), file.IsEOF()}));
    }
    EXPECT_FALSE(file.WriteString("x") || file.OpenFile(folder.path("new").c_str()));
    EXPECT_TRUE(file.Open("w+") && file.WriteString("a") && file.WriteStringNL() &&
                file.WriteStringNL("b"));
    EXPECT_EQ("1|1|a\nb\n",
              joined({file.Close(), file.Exists(), readFile(folder.path("new")).c_str()}));
    EXPECT_EQ("1|0|0", joined({file.DeleteFile(), file.Exists(), file.DeleteFile()}));
    EXPECT_EQ("1|0|1|0", joined({file.OpenFile("/dev/full", "w+"), file.WriteStringNL("x"),
                                 file.WriteString("x"), file.Close()}));
}

TEST(Files, OfATemporaryKindVanish) {
    const ScratchFolder folder;
    const CString other = folder.file("other", "kept").c_str(), dir = folder.path().c_str();
    const auto open = [] { return filesIn("/proc/self/fd"); };
    const long before = open();
    {
        CMyFileIO file, second;
        CString line;
        EXPECT_TRUE(file.OpenTempFile(dir) && second.OpenTempFile(dir));
        EXPECT_EQ(joined({3, before + 2}), joined({filesIn(folder.path()), open()}));
        EXPECT_TRUE(file.WriteString("x") && file.Rewind() && file.ReadString(line));
        EXPECT_EQ("x|1|3", joined({line, file.OpenTempFile(dir), filesIn(folder.path())}));
        EXPECT_EQ("1|1|2",
                  joined({file.OpenFile(other), file.OpenFile(other), filesIn(folder.path())}));
        EXPECT_EQ("1|0|0", joined({file.CloseFile(), file.OpenTempFile("none"), file.CloseFile()}));
    }
    EXPECT_EQ(joined({1, before, "kept"}),
              joined({filesIn(folder.path()), open(), readFile(other.c_str()).c_str()}));
}

TEST(Files, AreWhateverCanBeOpened) {
    const ScratchFolder folder;
    const std::string pipePath = folder.path("pipe");
    const CString name = pipePath.c_str();
    ASSERT_EQ(0, mkfifo(pipePath.c_str(), 0600));
    EXPECT_TRUE(CMyFileIO::Exists(name));  // does not wait for a writer
    EXPECT_TRUE(CMyFileIO::Exists("/dev/null"));

    const int writer = open(pipePath.c_str(), O_RDWR);
    ASSERT_EQ(3, write(writer, "a\nb", 3));
    CMyFileIO file;
    CString line;
    EXPECT_TRUE(file.OpenFile(name));
    close(writer);
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_STREQ("a\n", line.c_str());
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_STREQ("b", line.c_str());
    EXPECT_FALSE(file.ReadString(line));

    EXPECT_TRUE(CMyFileIO::CopyFile(folder.path().c_str(), folder.path("copy").c_str()));
    EXPECT_EQ("", readFile(folder.path("copy")));  // that of a folder
}

TEST(Files, AreCopiedByteForByte) {
    using File = CMyFileIO;
    const ScratchFolder folder;
    const std::string bytes = readFile(SLOTRPT_PROGRAM);
    CString source = folder.file("a", bytes).c_str(), target = (folder.path() + "b").c_str(),
            dir = folder.path().c_str();
    EXPECT_FALSE(File::CopyFile("none", target) || File::Exists(target));
    EXPECT_TRUE(File::CopyFile(source, target) && File::CopyFile(source, source) &&
                File::Exists(dir));
    EXPECT_TRUE(readFile(target.c_str()) == bytes && readFile(source.c_str()) == bytes);
    EXPECT_FALSE(File::CopyFile(source, dir) || File::SetReadOnly("none", true) ||
                 File::GetFileVersion("none", dir));
    const auto mode = [&](bool readOnly) {
        EXPECT_TRUE(File::SetReadOnly(target, readOnly));
        return static_cast<int>(std::filesystem::status(target.c_str()).permissions());
    };
    EXPECT_EQ(joined({0400, 0200}), joined({mode(true), mode(false)}));
    EXPECT_EQ("0|1||1", joined({File::GetFiles("", dir), File::GetFiles("/", dir), dir,
                                File::GetSubdirectories("/", dir)}));
}

TEST(Files, CarryAVersionStamp) {
    const ScratchFolder folder;
    const std::string zero(2, '\0'), value = "1.2." + std::string(100, '3'),
                                     name = utf16("FileVersion") + zero;
    const std::string key = "MZ" + utf16("FileVe") + "x" + name + zero,
                      stamp = key + utf16(value) + zero;
    const auto read = [&](const std::string& bytes) {
        CString version = "old";
        CMyFileIO file(folder.file("a.exe", bytes).c_str());
        return joined({file.GetFileVersion(version), version});
    };
    for (std::size_t cut = 0; cut < stamp.size(); ++cut) {
        const std::size_t got = cut < key.size() ? 0 : (cut - key.size() + 1) / 2;
        EXPECT_EQ("0|old" + value.substr(0, got), read(stamp.substr(0, cut)));
    }
    EXPECT_EQ("1|old" + value, read(stamp + utf16("5")));
    // The last letter is not compared; a byte that ends a match does not begin the next one.
    EXPECT_EQ("1|old2", read(utf16("FileVersioX") + zero + utf16("2") + zero));
    EXPECT_EQ("0|old", read("F" + name + utf16("2") + zero));
}

TEST(Files, HaveVersionsAndCommentsToTell) {
    const std::tuple<const char*, const char*, int> kVersions[] = {
        {"5.0.2195.1620", " 5.0.2195.1620.9\n", 0},  // four fields count
        {"5.10", "5.9.9.9", 1},                      // as numbers, the first difference
        {"6.0.0 7.7", "6.0.0.7", -1},                // nothing behind a blank
        {"6.12a", "6.12.0.x", 0},
    };
    for (const auto& [a, b, order] : kVersions)
        EXPECT_EQ(joined({order, -order}), joined({CMyFileIO::CompareFileVersion(a, b),
                                                   CMyFileIO::CompareFileVersion(b, a)}));
    for (const char* line : {"; x", " \t# x", "// x", ";"}) EXPECT_TRUE(CMyFileIO::IsComment(line));
    for (const char* line : {"/ x", "/", "x ;", ""}) EXPECT_FALSE(CMyFileIO::IsComment(line));
}
