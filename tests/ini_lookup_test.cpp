#include <sys/stat.h>

#include "support.h"
#include "util/IniFile.h"

using namespace std::string_literals;

namespace {
struct Lookup {
    std::string document;
    const char* section;
    const char* key;
    CString value;
};
const Lookup kLookups[] = {
    {"[Size]\nType = MT01", "sIZE", "TYPE", "MT01"},              // case; no line end at the end
    {"\0[S\0]\nK\r = v\rw\r\r\n"s, "S", "K", "vw"},               // CRs and NULs vanish
    {"\t[ \tS ] x\n K\t=\t\"a  b\" \t\n", "S", "K", "\"a  b\""},  // blanks around all names
    {"[S]\n;K = 1\n", "S", ";K", "absent"},                       // a comment
    {"[S]\n\nK\n \t\nK = v\nk = w\n", "S", "K", "v"},             // the first entry
    {"[S]\n[T]\n[S]\nK = v\n", "S", "K", "absent"},               // the first section only
    {"K = v\n[S]\nK = w\n", "", "K", "v"},                        // above the first header
    {"[ST]\nK = v\n[S]\nKL = v\n", "S", "K", "absent"},           // whole names only
};
}  // namespace

TEST(IniLookup, FollowsTheSyntax) {
    const ScratchFolder folder;
    for (const Lookup& row : kLookups) {
        SCOPED_TRACE(row.document);
        CIniFile ini(folder.file("a.ini", row.document).c_str());
        EXPECT_EQ(row.value, ini.ReadString(row.section, row.key, "absent"));
    }
}

TEST(IniLookup, ReadsLinesOfAnyLength) {
    const std::string large(1 << 20, 'v'), nothing(1 << 16, '\0');  // more than is read at once
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", nothing + "[S]\nK = " + large + "\nL = 1\n").c_str());
    EXPECT_EQ(large.c_str(), ini.ReadString("S", "K"));
    EXPECT_EQ("1", ini.ReadString("S", "L"));
}

TEST(IniLookup, FindsTheNextNumberedEntryThatCounts) {
    const ScratchFolder folder;
    const char* const entries =
        "[S]\nK.7=\nL.3 =\n;K.1=\nK.02=\nK.=\n.4=\nK5=\nX.5=\nK.2147483648=\n";
    CIniFile ini(folder.file("a.ini", entries).c_str());
    const auto isCounted = [](std::string_view name) { return name != "X"; };
    const std::pair<int, int> kNext[] = {{0, 3}, {4, 4}, {5, 7}, {8, -1}};
    for (const auto& [from, next] : kNext) EXPECT_EQ(next, ini.FindNumber("S", isCounted, from));
    EXPECT_EQ(-1, ini.FindNumber("T", isCounted, 0));
}

TEST(IniLookup, TellsWhichFileWasNotReadWhole) {
    const ScratchFolder folder;
    const std::string pipe = folder.path("pipe"), loop = folder.path("loop");
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    std::filesystem::create_symlink("loop", loop);
    const std::pair<std::string, int> kFaults[] = {
        {folder.path(), EISDIR}, {pipe, 0}, {loop, ELOOP}, {"/proc/self/mem", EIO}};
    for (const auto& [path, error] : kFaults) {
        SCOPED_TRACE(path);
        CIniFile(path.c_str());
        CIniFile("/dev/null");  // a later fault does not replace the first
        const CIniFile::LoadFaultDef fault = CIniFile::TakeLoadFault();
        EXPECT_EQ(path.c_str(), fault.sPath);
        EXPECT_EQ(error, fault.nError);
    }
    for (const char* fine : {"", "none", "/proc/self/status"}) CIniFile{fine};
    EXPECT_EQ("", CIniFile::TakeLoadFault().sPath);
}

TEST(IniLookup, AnswersFromMemoryAndWritesNothing) {
    const ScratchFolder folder;
    CIniFile ini(folder.file("a.ini", "K = v\n[S]").c_str());
    std::filesystem::remove(folder.path("a.ini"));
    CString line;
    EXPECT_TRUE(ini.FindItem("", "K", line));
    EXPECT_EQ("K = v", line);  // the whole line
    EXPECT_FALSE(ini.FindItem("T", "K", line));
    EXPECT_EQ("[S]", line);  // the last line visited
    EXPECT_EQ(0, ini.ReadInteger("", "none"));
    EXPECT_FALSE(ini.Flush());
    EXPECT_FALSE(ini.Exists());
}
