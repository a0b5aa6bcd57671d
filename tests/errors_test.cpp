#include "support.h"
#include "util/ErrorHandler.h"

using Error = CErrorHandler;

namespace {
// Reports an error in a process of its own. It ends with status 7 if the report returns and leaves
// a "z" on standard input.
Outcome report(int reaction, int kind, const char* detail, const std::string& answer = "z") {
    const auto body = [=] {
        Error().ErrorHandler(static_cast<Error::ErrorCodeDef>(reaction),
                             static_cast<Error::ErrorCodeDef>(kind), detail);
        return std::getchar() == 'z' ? 7 : 0;
    };
    return inChild(body, answer);
}

const std::string kParse = "Parse Error\n\nUnable to parse data file...\n\n";
const std::string kCorrupt =
    "The data file may not be in the correct format or it may be corrupt.\n\n";
const std::string kLarge(600, 'd');

struct Message {
    const char* rule;
    int kind;
    const char* detail;
    std::string text;
};
const Message kMessages[] = {
    {"program", Error::ecProgram, "D", "General Program Error\n\nD"},
    {"a message is cut at 511, its line feed included", Error::ecCustom, kLarge.c_str(),
     kLarge.substr(0, 510)},
    {"open", Error::ecFileOpen, "D", "File Open Error\n\nUnable to open file...\n\nD"},
    {"read", Error::ecFileRead, "D", "File Read Error\n\nUnable to read from file...\n\nD"},
    {"write", Error::ecFileWrite, "D", "File Write Error\n\nUnable to write to file...\n\nD"},
    {"close, and a null detail", Error::ecFileClose, nullptr,
     "File Close Error\n\nUnable to close file...\n\n"},
    {"the detail of parse is in the middle", Error::ecParse, "D", kParse + "D\n\n" + kCorrupt},
    {"an empty detail of parse leaves no line", Error::ecParse, "", kParse + kCorrupt},
    {"TCP/IP", Error::ecTcpIp, "D", "TCP/IP Error\n\nD"},
    {"a number that is not a kind has no words", Error::ecTcpIp + 1, "D", ""},
    {"nor has 0", 0, "D", ""},
};
}  // namespace

TEST(Errors, ShowTheDetailAfterTheWordsOfTheirKind) {
    for (const Message& row : kMessages)
        EXPECT_EQ("\n\n" + row.text + "\n", report(Error::ecWarn, row.kind, row.detail).err)
            << row.rule;
}

TEST(Errors, EndTheProcessAsTheReactionSays) {
    constexpr int kKind = Error::ecCustom;
    const auto ask = [](const char* answer) { return report(Error::ecAsk, kKind, "D", answer); };
    for (const char* yes : {"yes z\nz", " \n\tY\nz"}) EXPECT_EQ(7, ask(yes).status) << yes;
    for (const char* no : {"ny\nz", ""}) EXPECT_EQ(1, ask(no).status) << no;
    EXPECT_EQ("\n\nD\n\nContinue anyway? ", ask("").err);
    EXPECT_EQ(1, report(Error::ecAbort, kKind, "D").status);
    EXPECT_EQ(7, report(Error::ecAsk + 1, kKind, "D").status) << "any other reaction warns";
}
