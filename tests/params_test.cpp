#include "support.h"
#include "util/CLParams.h"

// The entries, each a kind (s: switch, p: parameter, q: path, ?: none), "!" when required, and a
// name; the arguments; the result, the characters, and the values, "-" for what is not found.
TEST(Params, AreParsedAndAskedFor) {
    const std::tuple<CString, CString, int, int, const char*> kParses[] = {
        {"p!/o:|s:/v|q:", "/O:a|b|/v|\"My|D\"", 0, 4 + 7 + 3 + 7, "a b||\"My D\"|"},
        {"s:/v|s!/r", "/v", 1, 4 + 3, "|-|"},                  // one is missing
        {"q:|s:/v", "/v|/V", 0, 4 + 3 + 3, "/V||"},            // each matches once
        {"s:/v|p:-p", "/v|-p|a|/v", 0, 4 + 3 + 8, "| a /v|"},  // what is found ends no value
        {"s:/v|p:-p", "-P1| ||/V", 0, 4 + 3 + 6, "|1  |"},     // what is not found does
        {"p:-p|q:-q", "-p1|-q2", 0, 4 + 4 + 4, "1|2|"},
        {"q:-q|s:/v", "-q\"a|/v", 0, 4 + 5 + 3, "\"a||"},        // even inside quotes
        {"q:-q|q:", "-qa|\"b\"c|d", 1, 4 + 4 + 5, "a|\"b\"c|"},  // outside, a value is one argument
        {"s:/vv|p:/v", "/VV", 0, 4 + 4, "|-|"},                  // in the order of declaration
        {"s:/v", "/vx", 1, 4, "-|"},  // a switch is equal, not begun with
        {"?:-|s!/v", "/v", 2, 4, "-|-|"},
        {"s:/v|?:-", "/v", 0, 4 + 3, "|-|"}};  // never examined
    for (const auto& [entries, arguments, expected, characters, found] : kParses) {
        CCLParams params;
        const unsigned total = entries.GetNumberTokens("|");
        for (unsigned i = 0; i < total; ++i) {
            const CString entry = entries.GetToken(i, "|");
            const int mode = CString("?spq").Find(entry.Left(1));
            EXPECT_TRUE(params.Add(entry.Mid(2, 0), static_cast<CCLParams::CLParamModes>(mode),
                                   entry[1] == '!'));
        }
        std::vector<const char*> argv = {"/usr/bin/tool.exe"};
        std::vector<CString> words(arguments.GetNumberTokens("|"));
        for (CString& word : words) {
            word = arguments.GetToken(static_cast<unsigned>(argv.size()) - 1, "|");
            argv.push_back(word.c_str());
        }
        const int result = params.Parse(static_cast<int>(argv.size()), argv.data(), false);
        std::string values;
        CString value;
        for (unsigned i = 1; i <= total; ++i)
            values += joined({params.GetValue(i, value) ? value : "-", ""});
        EXPECT_EQ(joined({expected, characters, found}),
                  joined({result, params.GetNumberOfCommandLineCharacters(), values.c_str()}));
    }
}

TEST(Params, MatchInTheirCaseAndByTheirExactName) {
    CCLParams params;
    for (const char* name : {"/v", "/V"}) params.Add(name, CCLParams::CLParam, false);
    const char* argv[] = {"tool", "/Vx"};
    CString value, none = "old";
    EXPECT_EQ("0|1|x|0|0|0|", joined({params.Parse(2, argv, true), params.GetValue("/V", value),
                                      value, params.GetValue("/v"), params.GetValue(0, none),
                                      params.GetValue(3, none), none}));
    params.DeleteNodes();
    EXPECT_EQ("0|1|2", joined({params.GetValue("/V"), params.MakeNewNode() != nullptr,
                               params.Parse(2, argv, true)}));  // a node of no known mode
}
