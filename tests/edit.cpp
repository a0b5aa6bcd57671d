// Edits a document of the sections A and B, in each of the ways in which lines come and change, and
// prints it.

#include <new>

#include "util/IniFile.h"

alignas(CIniFile) static unsigned char g_room[sizeof(CIniFile)];

int main(int, char* argv[]) {
    CIniFile& ini = *new (g_room) CIniFile(argv[1]);  // never destroyed: the file stays as it is
    const bool made = ini.WriteString("A", "K", "changed", false, false) &&
                      ini.WriteInteger("A", "N", 5) && ini.WriteString("B", "bare", false, false) &&
                      ini.WriteString("C", "K", "1", false, false);
    return made && ini.WriteIniFile("/dev/stdout") ? 0 : 2;
}
