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
    CMyFileIO file, unopened;
    CString line;
    char block[1];
    EXPECT_TRUE(file.OpenFile(folder.file("a", std::string("a\0b\r\n\ncd", 8)).c_str()));
    EXPECT_EQ(0U, file.ReadBlock(block, 0));
    EXPECT_FALSE(file.OpenFile("")) << "the open file stays";
    for (int pass = 0; pass < 2; ++pass) {
        for (const CString expected : {"ab\n", "\n", "cd"}) {
            SCOPED_TRACE(expected);
            EXPECT_FALSE(file.IsEOF());
            EXPECT_TRUE(file.ReadString(line));
            EXPECT_EQ(expected, line);
        }
        EXPECT_TRUE(file.IsEOF());
        EXPECT_TRUE(file.Rewind());
    }
    EXPECT_TRUE(file.Close());
    for (CMyFileIO* closed : {&file, &unopened}) {
        EXPECT_TRUE(closed->IsEOF()) << "nothing is open";
        EXPECT_FALSE(closed->Rewind());
        EXPECT_FALSE(closed->Close());
        EXPECT_FALSE(closed->ReadString(line));
        EXPECT_EQ(0U, closed->ReadBlock(block, 1));
        EXPECT_FALSE(closed->WriteString("x"));
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
        EXPECT_TRUE(file.WriteString("x")) << "a text without a line feed waits";
        EXPECT_FALSE(file.Close());
    }
}

TEST(Files, AreDeletedOnClosingOnlyIfTemporary) {
    const ScratchFolder folder;
    const CString dir = folder.path().c_str(), other = folder.file("other", "kept").c_str();
    {
        CMyFileIO file, second;
        CString line;
        EXPECT_TRUE(file.OpenTempFile(dir));
        EXPECT_TRUE(second.OpenTempFile(dir));
        EXPECT_EQ(3, filesIn(folder.path())) << "each has a name of its own";
        EXPECT_TRUE(file.WriteStringNL("a"));
        EXPECT_TRUE(file.Rewind());
        EXPECT_TRUE(file.ReadString(line)) << "it is opened for reading, too";
        EXPECT_TRUE(file.OpenTempFile(dir));
        EXPECT_EQ(3, filesIn(folder.path())) << "the next one closes it";
        EXPECT_FALSE(second.OpenFile(""));
        EXPECT_TRUE(second.WriteString("x")) << "an empty name leaves the temporary file open";
        EXPECT_TRUE(file.OpenFile(other));
        EXPECT_EQ(2, filesIn(folder.path())) << "the next file closes the temporary one";
        EXPECT_FALSE(file.OpenFile(""));
        EXPECT_FALSE(file.Exists()) << "it has taken the empty name";
        EXPECT_FALSE(file.OpenTempFile("none"));
        EXPECT_TRUE(file.IsEOF()) << "the file before is closed all the same";
        EXPECT_TRUE(CMyFileIO::Exists(other)) << "an ordinary file stays";
    }
    EXPECT_EQ(1, filesIn(folder.path())) << "the end of the object closes it, too";

    const auto openFirst = [&] {
        close(0);
        return CMyFileIO().OpenTempFile(dir) ? 0 : 1;
    };
    EXPECT_EQ(0, inChild(openFirst).status) << "its descriptor may be 0";

    CMyFileIO file;
    const int descriptor = dup(0);
    close(descriptor);
    EXPECT_TRUE(file.OpenTempFile(dir));  // gets the same descriptor, since it is free again
    close(descriptor);
    EXPECT_FALSE(file.Close()) << "its descriptor is gone";
    EXPECT_TRUE(file.OpenFile(other));
    EXPECT_TRUE(file.Close());
    EXPECT_TRUE(file.Exists()) << "a file opened after one that cannot be closed is not temporary";
}

TEST(Files, LeaveNoDescriptorOpen) {
    const ScratchFolder folder;
    const long before = openFiles();
    {
        CMyFileIO file(folder.file("a", "").c_str()), temporary;
        for (int i = 0; i < 2; ++i) EXPECT_TRUE(file.Open());
        EXPECT_TRUE(temporary.OpenFile("/dev/null"));
        EXPECT_TRUE(temporary.OpenTempFile(folder.path().c_str()));
        EXPECT_EQ(before + 2, openFiles()) << "one for each object";
        EXPECT_TRUE(file.DeleteFile());
        EXPECT_EQ(before + 1, openFiles()) << "DeleteFile() closes the file";
        EXPECT_FALSE(file.Exists());
    }
    EXPECT_EQ(before, openFiles()) << "the end of the object closes the file";
}

TEST(Files, ExistAsPipesAndDevices) {
    const ScratchFolder folder;
    ASSERT_EQ(0, mkfifo(folder.path("pipe").c_str(), 0600));
    EXPECT_TRUE(CMyFileIO::Exists(folder.path("pipe").c_str())) << "no writer is waited for";
    EXPECT_TRUE(CMyFileIO::Exists("/dev/null"));
}

TEST(Files, AreThoseInMemoryIfThereAreAny) {
    const ScratchFolder folder;
    const CString onDisk = folder.file("disk", "x\n").c_str();
    const CMyFileIO::MemoryFileDef files[] = {
        {"a", "", 0}, {"b/c", "1\n2\n", 4}, {"b/d", "cut\nhere", 4}};
    CMyFileIO::SetMemoryFiles(files, std::size(files));
    CMyFileIO file;
    CString line;
    EXPECT_TRUE(file.OpenFile("a"));
    EXPECT_FALSE(file.ReadString(line)) << "an empty file is there";
    EXPECT_TRUE(file.OpenFile("b/c"));
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ("1\n", line);
    EXPECT_TRUE(file.OpenFile("b/d", "rb"));
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_FALSE(file.ReadString(line)) << "the length ends a text";
    EXPECT_FALSE(file.OpenFile(onDisk)) << "no other file exists";
    EXPECT_TRUE(CMyFileIO::Exists("b/d"));
    for (const char* other : {"b", "c"}) EXPECT_FALSE(CMyFileIO::Exists(other)) << other;
    EXPECT_FALSE(CMyFileIO::Exists(onDisk));
    EXPECT_FALSE(CMyFileIO::IsEndless("/dev/null"));
    EXPECT_TRUE(file.OpenFile(onDisk, "r+")) << "what is written is on disk";
    CMyFileIO::SetMemoryFiles(nullptr, 0);
    EXPECT_TRUE(CMyFileIO::Exists(onDisk));
    EXPECT_FALSE(CMyFileIO::Exists("a"));
}

TEST(Files, AreCopiedByteForByte) {
    const ScratchFolder folder;
    const std::string copy = folder.file("copy", std::string(300, 'x'));
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    const CString source = folder.file("a", bytes).c_str(), target = copy.c_str();
    EXPECT_FALSE(CMyFileIO::CopyFile("none", target));
    EXPECT_TRUE(CMyFileIO::CopyFile(source, target));
    EXPECT_TRUE(CMyFileIO::CopyFile(target, target)) << "a copy to itself changes nothing";
    EXPECT_EQ(bytes, readFile(copy));
    const CString readOnly = "/proc/sys/kernel/ostype";  // even for root
    for (const CString& other : {CString(folder.path().c_str()), readOnly}) {
        SCOPED_TRACE(other);
        EXPECT_FALSE(CMyFileIO::CopyFile(source, other));
        EXPECT_FALSE(CMyFileIO::CopyFile(other, other)) << "not even to itself";
    }
}

TEST(Files, AreReadOnlyOrWriteOnly) {
    const ScratchFolder folder;
    const std::string path = folder.file("a", "");
    for (const auto& [isReadOnly, mode] : {std::pair(true, 0400), std::pair(false, 0200)}) {
        EXPECT_TRUE(CMyFileIO::SetReadOnly(path.c_str(), isReadOnly));
        EXPECT_EQ(std::filesystem::perms(mode), std::filesystem::status(path).permissions());
    }
    EXPECT_FALSE(CMyFileIO::SetReadOnly("none", true));
}

TEST(Files, AreNotListed) {
    for (const auto list : {CMyFileIO::GetFiles, CMyFileIO::GetSubdirectories}) {
        CString files = "old", none = "old";
        EXPECT_TRUE(list("/", files));
        EXPECT_EQ("", files);
        EXPECT_FALSE(list("", none));
        EXPECT_EQ("", none);
    }
}

TEST(Files, HaveVersionsThatCompareByNumbers) {
    CString version = "old";
    EXPECT_FALSE(CMyFileIO::GetFileVersion("none", version));
    const ScratchFolder folder;
    std::string stamp;  // UTF-16; a "." stands for NUL
    for (const char c : std::string("FFileVersion..1.")) stamp += {c == '.' ? '\0' : c, '\0'};
    EXPECT_FALSE(CMyFileIO::GetFileVersion(folder.file("a", stamp).c_str(), version))
        << "an F that does not continue the key does not begin it";
    EXPECT_EQ("old", version);
    EXPECT_EQ(0, CMyFileIO::CompareFileVersion("old4.5", "x.5")) << "a field without digits is 0";
    EXPECT_EQ(-1, CMyFileIO::CompareFileVersion("6.0.0 7.7", "6.0.0.7")) << "a blank ends it";
    EXPECT_EQ(1, CMyFileIO::CompareFileVersion(" 1", "")) << "but not one at its start";
}

TEST(Files, HaveLinesThatAreComments) {
    for (const char* line : {";", " \t# x", "// x"})
        EXPECT_TRUE(CMyFileIO::IsComment(line)) << line;
    for (const char* line : {"/", "x ; y", ""}) EXPECT_FALSE(CMyFileIO::IsComment(line)) << line;
}
