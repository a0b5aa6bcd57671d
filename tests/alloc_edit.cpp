// A program whose allocations the tests let fail. Makes a line, an array and a parameter, and fails
// to execute a folder. Then edits a document of the sections A and B, in each of the ways in which
// lines come and change, and prints it. The status is 2 if an edit was refused. If a rule is
// broken, it is printed, and the status is 3.

#include <malloc.h>

#include <cstdio>
#include <new>

#include "util/CLParams.h"
#include "util/Exec.h"
#include "util/IniFile.h"

alignas(CIniFile) static unsigned char g_room[sizeof(CIniFile)];

static int broken(const char* rule) {
    std::fputs(rule, stderr);
    return 3;
}

int main(int, char* argv[]) {
    // Made before the document is loaded: later, the pool would have room for the line, and no
    // allocation could fail.
    const std::size_t used = mallinfo2().uordblks;
    auto* const line = new CIniFile::IniLineDef;
    line->sLine = "text";
    delete line;
    if (mallinfo2().uordblks != used)
        return broken("with its last block, the pool frees all memory");
    const char* const text = CString::CreateCharString(1000);
    if (!text) return broken("CreateCharString() returns no null");
    delete[] text;
    CCLParams params;
    const bool isAdded = params.Add("/v", CCLParams::CLSwitch, false);
    const char* words[] = {"edit", "/v"};
    if ((params.Parse(2, words, true) == CCLParams::kParsed) != isAdded)
        return broken("Add() returns whether the parameter was added");
    if (CExec("/").Execute()) return broken("Execute() returns false if nothing was started");

    CIniFile& ini = *new (g_room) CIniFile("");  // never destroyed: no file is written
    if (ini.ReadIniFile(argv[1]) && ini.ReadString("B", "X") != "2")
        return broken("ReadIniFile() returns whether all lines are there");
    const bool isMade =
        ini.WriteString("A", "K", "changed", false, false) && ini.WriteInteger("A", "N", 5) &&
        ini.WriteString("B", "bare", false, false) && ini.WriteString("C", "K", "1", false, false);
    if (isMade && ini.ReadString("C", "K") != "1") return broken("an edit that was made is there");
    return isMade && ini.WriteIniFile("/dev/stdout") ? 0 : 2;
}
