// Edits an INI file: sets one entry, in a new section or a new file where need be.
//
//     inied FILE SECTION KEY VALUE

#include <cstdio>

#include "util/IniFile.h"

int main(int argc, char* argv[]) {
    if (argc != 5) {
        std::fputs("usage: inied FILE SECTION KEY VALUE\n", stderr);
        return 2;
    }
    CIniFile ini(argv[1]);
    if (!ini.WriteString(argv[2], argv[3], argv[4], false, false)) {
        std::fputs("inied: the section has that line already\n", stderr);
        return 1;
    }
    if (ini.Flush()) {  // true: still unsaved
        std::fprintf(stderr, "inied: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
