#include "support.h"
#include "util/CLParams.h"

namespace {
constexpr auto kSwitch = CCLParams::CLSwitch;
constexpr auto kParam = CCLParams::CLParam;
constexpr auto kPath = CCLParams::CLPathParam;
constexpr auto kNone = CCLParams::CLNone;
constexpr auto kAbove = static_cast<CCLParams::CLParamModes>(4);

struct Parameter {
    CCLParams::CLParamModes mode;
    const char* name;
    const char* value;  // null: not found
    bool isRequired = false;
};

struct Parse {
    const char* rule;
    std::vector<Parameter> parameters;
    std::vector<const char*> arguments;
    int result;
    int characters;  // 4 for the program; for each parameter found, 1, its name and its value
};
const Parse kParses[] = {
    {"a value goes on over arguments up to a switch, a path only in quotes",
     {{kParam, "/o:", "a b", true}, {kSwitch, "/v", ""}, {kPath, "", "\"My D\""}},
     {"/O:a", "b", "/v", "\"My", "D\""},
     CCLParams::kParsed,
     4 + 7 + 3 + 7},
    {"a path goes on only while it has exactly one quote",
     {{kPath, "-q", "\"a\"\""}, {kPath, "", "b"}},
     {"-q\"a\"\"", "b"},
     CCLParams::kParsed,
     4 + 7 + 2},
    {"a parameter is found once; after that, its name is part of a value",
     {{kSwitch, "/v", ""}, {kParam, "-p", " a /v"}},
     {"/v", "-p", "a", "/v"},
     CCLParams::kParsed,
     4 + 3 + 8},
    {"a switch equals its argument, and what nothing accepts ends the parse",
     {{kSwitch, "/v", nullptr}, {kPath, "-q", "a"}},
     {"-qa", "/vx", "/v"},
     CCLParams::kMismatch,
     4 + 4},
    {"a required parameter must not be missing",
     {{kSwitch, "/v", ""}, {kSwitch, "/r", nullptr, true}},
     {"/v"},
     CCLParams::kMismatch,
     4 + 3},
    {"a parameter without a mode fails when an argument meets it",
     {{kNone, "-", nullptr}, {kSwitch, "/v", nullptr, true}},
     {"/v"},
     CCLParams::kUnknownMode,
     4},
    {"so does one with a mode above the last, and what was found before counts",
     {{kSwitch, "/v", ""}, {kAbove, "-", nullptr}},
     {"/v", "-"},
     CCLParams::kUnknownMode,
     4 + 3},
};
}  // namespace

TEST(Params, TakeArgumentsInTheOrderOfTheirDeclaration) {
    for (Parse row : kParses) {
        SCOPED_TRACE(row.rule);
        CCLParams params;
        for (const Parameter& parameter : row.parameters)
            EXPECT_TRUE(params.Add(parameter.name, parameter.mode, parameter.isRequired));
        row.arguments.insert(row.arguments.begin(), "tool");
        const int argc = static_cast<int>(row.arguments.size());
        EXPECT_EQ(row.result, params.Parse(argc, row.arguments.data(), false));
        EXPECT_EQ(row.characters, params.GetNumberOfCommandLineCharacters());
        unsigned position = 0;
        for (const Parameter& parameter : row.parameters) {
            SCOPED_TRACE(parameter.name);
            CString value;
            EXPECT_EQ(parameter.value != nullptr, params.GetValue(++position, value));
            EXPECT_EQ(CString(parameter.value), value);
        }
    }
}

TEST(Params, AreFoundByTheirExactNameUntilDeleted) {
    CCLParams params;
    for (const char* name : {"/v", "/V"}) params.Add(name, kParam, false);
    const char* argv[] = {"/usr/bin/tool.exe", "/V1", "a"};
    CString value, none = "old";
    EXPECT_EQ(CCLParams::kParsed, params.Parse(3, argv, true));
    EXPECT_FALSE(params.GetValue("/v"));
    EXPECT_TRUE(params.GetValue("/V", value));
    EXPECT_EQ("1 a", value);
    EXPECT_EQ(4 + 4 + 2, params.GetNumberOfCommandLineCharacters());  // "tool", " /V1", " a"
    EXPECT_FALSE(params.GetValue(3, none));
    EXPECT_EQ("", none);
    EXPECT_EQ(CCLParams::kParsed, params.Parse(1, argv, true));
    EXPECT_TRUE(params.GetValue("/V", value)) << "another parse clears nothing";
    EXPECT_EQ("1 a", value);
    EXPECT_EQ(CCLParams::kMismatch, params.Parse(2, argv, true)) << "/V was found before";
    params.DeleteNodes();
    EXPECT_FALSE(params.GetValue("/V"));
    EXPECT_NE(nullptr, params.MakeNewNode());
    EXPECT_EQ(CCLParams::kUnknownMode, params.Parse(3, argv, true)) << "it has no mode";
    EXPECT_EQ(CCLParams::kParsed, params.Parse(0, nullptr, true)) << "not even a program";
}

TEST(Params, AreCollectedFromAnIndexOn) {
    const CCLParams params;
    const char* argv[] = {"tool", "/V1", "a", "/V2"};
    CString value;
    int index = 0, pathIndex = 1, before = -1, end = 2;
    EXPECT_EQ(2, params.GetParam(index, 2, argv + 1, "/V", value)) << "the index after the value";
    EXPECT_EQ("1 a", value);
    EXPECT_EQ(2, params.GetPathParam(pathIndex, 3, argv, "/V", value));
    EXPECT_EQ("1", value);
    EXPECT_EQ(0, params.GetParam(before, 0, argv + 1, "/V", value));
    EXPECT_EQ("", value) << "no argument has an index below 0";
    EXPECT_EQ(3, params.GetParam(end, 2, argv + 1, "/V", value));
    EXPECT_EQ("", value) << "the last argument is before this index";
}
