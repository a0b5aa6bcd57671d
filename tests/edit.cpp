// Edits a document of the sections A and B, in each of the ways in which lines come and change.

#include "util/IniFile.h"

int main(int argc, char* argv[]) {
    CIniFile ini(argc > 1 ? argv[1] : "");
    const bool made = ini.WriteString("A", "K", "changed", false, false) &&
                      ini.WriteInteger("A", "N", 5) && ini.WriteString("B", "bare", false, false) &&
                      ini.WriteString("C", "K", "1", false, false);
    return made && !ini.Flush() ? 0 : 2;
}
