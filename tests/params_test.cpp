#include "support.h"
#include "util/CLParams.h"

namespace {
// Entries are a kind (s: switch, p: parameter, q: path, ?: none), "!" when required, and a name.
const struct {
    const char *entries, *arguments;  // with "|" between them; the arguments after the program
    int result, characters;
    const char* values;  // with "|" behind each; "-" for an entry that is not found
} kParses[] = {
    {"p!/out:|s/v|q", "/OUT:report|final.txt|/v|\"My|Docs\"", 0, 4 + 22 + 3 + 10,
     "report final.txt||\"My Docs\"|"},
    {"s/v|s!/r", "/v", 1, 4 + 3, "|-|"},  // one is missing
    {"s/v", "/v|/v", 1, 4 + 3, "|"},      // each matches once
    {"s/v|q", "/v|/V", 0, 4 + 3 + 3, "|/V|"},
    {"s/v|p-p", "/v|-p|a|/v", 0, 4 + 3 + 8, "| a /v|"},  // what is found ends no value
    {"s/v|p-p", "-P1| ||/V", 0, 4 + 3 + 6, "|1  |"},     // what is not found does
    {"p-p|q-q", "-p1|-q2", 0, 4 + 4 + 4, "1|2|"},
    {"q-q|s/v", "-q\"a|/v", 0, 4 + 5 + 3, "\"a||"},  // even inside quotes
    {"q-q", "-q\"a| ||\"", 0, 4 + 9, "\"a   \"|"},
    {"q-q", "-q\"a\"b|c", 1, 4 + 7, "\"a\"b|"},  // outside, a value is one argument
    {"s/vv|p/v", "/VV", 0, 4 + 4, "|-|"},        // in the order of declaration
    {"s/v", "/vx", 1, 4, "-|"},                  // a switch is equal, not begun with
    {"?-|s!/v", "/v", 2, 4, "-|-|"},
    {"s/v|?-", "/v", 0, 4 + 3, "|-|"},  // never examined
};
}  // namespace

TEST(Params, AreParsedAndAskedFor) {
    for (const auto& row : kParses) {
        CCLParams params;
        const CString entries = row.entries, arguments = row.arguments;
        const unsigned total = entries.GetNumberTokens("|");
        for (unsigned i = 0; i < total; ++i) {
            const CString entry = entries.GetToken(i, "|");
            const bool required = entry[1] == '!';
            const auto mode =
                static_cast<CCLParams::CLParamModes>(CString("?spq").Find(entry.Left(1)));
            EXPECT_TRUE(params.Add(entry.Mid(required ? 2 : 1, 0), mode, required));
        }
        std::vector<std::string> words = {"/usr/bin/tool.exe"};
        for (unsigned i = 0; i < arguments.GetNumberTokens("|"); ++i)
            words.push_back(arguments.GetToken(i, "|").c_str());
        std::vector<const char*> argv;
        for (const std::string& word : words) argv.push_back(word.c_str());
        std::string values;
        EXPECT_EQ(row.result, params.Parse(static_cast<int>(argv.size()), argv.data(), false))
            << row.arguments;
        CString value;
        for (unsigned i = 1; i <= total; ++i)
            values += joined({params.GetValue(i, value) ? value : "-", ""});
        EXPECT_EQ(joined({row.values, row.characters}),
                  joined({values.c_str(), params.GetNumberOfCommandLineCharacters()}));
    }
}

TEST(Params, MatchInTheirCaseAndByTheirExactName) {
    CCLParams params;
    params.Add("/v", CCLParams::CLParam, false);
    params.Add("/V", CCLParams::CLParam, false);
    const std::string text(100000, 'x'), argument = "/V" + text;
    const char* argv[] = {"tool", argument.c_str()};
    CString value, none = "old";
    EXPECT_EQ("0|1|0", joined({params.Parse(2, argv, true), params.GetValue("/V", value),
                               params.GetValue("/v")}));
    EXPECT_EQ("0|0|", joined({params.GetValue(0, none), params.GetValue(3, none), none}));
    EXPECT_EQ(text.c_str(), value);
    params.DeleteNodes();
    EXPECT_EQ("0|1", joined({params.GetValue("/V"), params.MakeNewNode() != nullptr}));
    EXPECT_EQ(CCLParams::kUnknownMode, params.Parse(2, argv, true));
}
