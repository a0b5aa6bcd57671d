#include "support.h"
#include "util/ErrorHandler.h"

using Error = CErrorHandler;

// Ends with 7 when it went on, and read a "z" behind the answer.
static std::string report(int reaction, int kind, const char* detail, const char* answer = "z") {
    const auto body = [=] {
        Error().ErrorHandler(static_cast<Error::ErrorCodeDef>(reaction),
                             static_cast<Error::ErrorCodeDef>(kind), detail);
        return std::getchar() == 'z' ? 7 : 0;
    };
    return inChild(body, answer).end;
}

TEST(Errors, HaveAMessageForEachKind) {
    const std::string parse = "Parse Error\n\nUnable to parse data file...\n\n", large(600, 'd');
    const std::string corrupt =
        "The data file may not be in the correct format or it may be corrupt.\n\n";
    const std::tuple<int, const char*, std::string> kMessages[] = {
        {0, "D", ""},
        {11, "D", ""},
        {Error::ecSystem, "D", "General System Error\n\nD"},
        {Error::ecProgram, "D", "General Program Error\n\nD"},
        {Error::ecFileOpen, "D", "File Open Error\n\nUnable to open file...\n\nD"},
        {Error::ecFileRead, "D", "File Read Error\n\nUnable to read from file...\n\nD"},
        {Error::ecFileWrite, "D", "File Write Error\n\nUnable to write to file...\n\nD"},
        {Error::ecFileClose, nullptr, "File Close Error\n\nUnable to close file...\n\n"},
        {Error::ecTcpIp, "D", "TCP/IP Error\n\nD"},
        {Error::ecParse, "D", parse + "D\n\n" + corrupt},
        {Error::ecParse, "", parse + corrupt},
        {Error::ecCustom, large.c_str(), large.substr(0, 510)},  // 511 with the first line feed
        {Error::ecParse, large.c_str(), (parse + large).substr(0, 510)}};
    for (const auto& [kind, detail, message] : kMessages)
        EXPECT_EQ("7|\n\n" + message + "\n", report(Error::ecWarn, kind, detail));
}

TEST(Errors, EndTheProcessOrAsk) {
    const auto ask = [](const char* answer) { return report(Error::ecAsk, 3, "D", answer); };
    const std::string asked = "|\n\nD\n\nContinue anyway? ";
    for (const char* yes : {"yes z\nz\n", " \n\tYz\nz"}) EXPECT_EQ("7" + asked, ask(yes));
    for (const char* no : {"ny\nz", ""}) EXPECT_EQ("1" + asked, ask(no));
    EXPECT_EQ("1|\n\nD\n", report(Error::ecAbort, Error::ecCustom, "D"));
    EXPECT_EQ("7|\n\nD\n", report(3, Error::ecCustom, "D"));  // any other reaction is a warning
}
