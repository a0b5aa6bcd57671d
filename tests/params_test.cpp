#include "support.h"
#include "util/CLParams.h"

namespace {
constexpr auto kSwitch = CCLParams::CLSwitch;
constexpr auto kParam = CCLParams::CLParam;
constexpr auto kPath = CCLParams::CLPathParam;
constexpr auto kNone = CCLParams::CLNone;

struct Entry {
    CCLParams::CLParamModes mode;
    const char* name;
    const char* value;  // null: not found
    bool isRequired = false;
};

struct Parse {
    std::vector<Entry> entries;
    std::vector<const char*> arguments;
    int result;
};
const Parse kParses[] = {
    // A value goes on over arguments up to a switch, a path only in quotes.
    {{{kParam, "/o:", "a b", true}, {kSwitch, "/v", ""}, {kPath, "", "\"My D\""}},
     {"/O:a", "b", "/v", "\"My", "D\""},
     CCLParams::kParsed},
    // An entry is found once. After that, its name is part of a value.
    {{{kSwitch, "/v", ""}, {kParam, "-p", " a /v"}}, {"/v", "-p", "a", "/v"}, CCLParams::kParsed},
    // A switch equals its argument. What nothing accepts ends the parse.
    {{{kSwitch, "/v", nullptr}, {kPath, "-q", "a"}}, {"-qa", "/vx", "/v"}, CCLParams::kMismatch},
    // A required entry is missing.
    {{{kSwitch, "/v", ""}, {kSwitch, "/r", nullptr, true}}, {"/v"}, CCLParams::kMismatch},
    // An entry without a mode is an error when an argument meets it.
    {{{kNone, "-", nullptr}, {kSwitch, "/v", nullptr, true}}, {"/v"}, CCLParams::kUnknownMode},
};
}  // namespace

TEST(Params, AreParsed) {
    for (Parse row : kParses) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        CCLParams params;
        for (const Entry& entry : row.entries)
            EXPECT_TRUE(params.Add(entry.name, entry.mode, entry.isRequired));
        row.arguments.insert(row.arguments.begin(), "tool");
        const int argc = static_cast<int>(row.arguments.size());
        EXPECT_EQ(row.result, params.Parse(argc, row.arguments.data(), false));
        unsigned position = 0;
        for (const Entry& entry : row.entries) {
            CString value;
            EXPECT_EQ(entry.value != nullptr, params.GetValue(++position, value)) << entry.name;
            EXPECT_EQ(entry.value ? entry.value : "", value) << entry.name;
        }
    }
}

TEST(Params, AreFoundByTheirExactNameUntilDeleted) {
    CCLParams params;
    for (const char* name : {"/v", "/V"}) params.Add(name, kParam, false);
    const char* argv[] = {"/usr/bin/tool.exe", "/V1", "a"};
    CString value, none = "old";
    EXPECT_EQ(0, params.Parse(3, argv, true));
    EXPECT_FALSE(params.GetValue("/v"));
    EXPECT_TRUE(params.GetValue("/V", value));
    EXPECT_EQ("1 a", value);
    EXPECT_EQ(4 + 4 + 2, params.GetNumberOfCommandLineCharacters());  // "tool", " /V1", " a"
    EXPECT_FALSE(params.GetValue(3, none));
    EXPECT_EQ("", none);
    params.DeleteNodes();
    EXPECT_FALSE(params.GetValue("/V"));
    EXPECT_NE(nullptr, params.MakeNewNode());
    EXPECT_EQ(2, params.Parse(3, argv, true));  // it has no mode

    int index = 1, pathIndex = 1;
    EXPECT_EQ(3, params.GetParam(index, 3, argv, "/V", value));  // the index behind the value
    EXPECT_EQ(2, params.GetPathParam(pathIndex, 3, argv, "/V", value));
}
