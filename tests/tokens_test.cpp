#include "support.h"

using testing::ElementsAre;

TEST(Tokens, AreCountedAndFetched) {
    const std::tuple<CString, const char*, std::vector<CString>> kLists[] = {
        {" a , b ", ",", {"a ", " b"}},           // the list is trimmed, its tokens are not
        {";A;;B;", ";", {"", "A", "", "B", ""}},  // empty ones count
        {"a, b,c", ", ", {"a", "b,c"}},           // the separator is a text, not a set
        {" \t\n", ";", {}},
        {"a;b", "", {}},
    };
    for (const auto& [list, separator, tokens] : kLists) {
        SCOPED_TRACE(list);
        EXPECT_EQ(tokens.size(), list.GetNumberTokens(separator));
        for (unsigned i = 0; i <= tokens.size(); ++i)
            EXPECT_EQ(i < tokens.size() ? tokens[i] : "", list.GetToken(i, separator)) << i;
    }
}

TEST(Tokens, AreParsedTrimmed) {
    CString list = " A ; \t;B\n", out[4] = {"", "", "", "kept"};
    EXPECT_EQ(3U, list.ParseTokens(out, 4, ";"));
    EXPECT_THAT(out, ElementsAre("A", "", "B", "kept"));
    EXPECT_EQ(0U, list.ParseTokens(out, 0, ";"));
    CString parts[2] = {"a;b;c"};  // the list is the first to be overwritten
    EXPECT_EQ(2U, parts[0].ParseTokens(parts, 2, ";"));
    EXPECT_THAT(parts, ElementsAre("a", "b"));
    EXPECT_EQ("c", parts[0].StrTok());  // a walk goes on behind them
}

TEST(Tokens, AreWalkedOverASnapshot) {
    CString list = "a;; b";
    EXPECT_EQ("", list.StrTokIt());  // no walk yet
    EXPECT_EQ("a", list.StrTok(";"));
    CString copy = list;
    EXPECT_EQ("", copy.StrTok());  // a walk is not copied
    list = "k:v:w";
    for (const char* token : {"", " b", "", ""}) EXPECT_EQ(token, list.StrTok());
    EXPECT_EQ("k", list.StrTok(":"));
    EXPECT_EQ("k:v:w", list.StrTok(","));  // ends the walk before it
    EXPECT_EQ("", list.StrTok());
    EXPECT_EQ("k:", list.StrBreak(":"));
    EXPECT_EQ("k:v:w", list.StrBreak(","));  // so does this
    EXPECT_EQ("", list.StrBreak());
}

TEST(Tokens, AreFoundAsTheyAre) {
    const std::tuple<CString, const char*, int> kFound[] = {
        {"  a,b", "b", 2},  // in the trimmed list
        {"a,b", "a", 0},   {"ba,a", "a", 3}, {"a,b,", "", 4},
        {"a, b", "b", -1}, {"a,B", "b", -1}, {"", "", -1},
    };
    for (const auto& [list, token, position] : kFound) {
        EXPECT_EQ(position, list.FindToken(token, ",")) << list;
        EXPECT_EQ(position >= 0, list.IsToken(token, ",")) << list;
    }
    EXPECT_EQ(0, CString("a").FindToken("x", ""));  // an empty separator is found at once
}

TEST(Tokens, AreInsertedBeforeAnotherInAnyCase) {
    CString list = "a,c";
    list.InsertToken("b", "C", ",");
    EXPECT_EQ("a,b,c", list);
}

TEST(Tokens, AreSorted) {
    const std::pair<CString, CString> kSorted[] = {
        {"pear,,Fig,a b,fig", "Fig,a b,fig,pear"},  // in byte order; empty ones go
        {",", ","},
    };
    for (auto [list, expected] : kSorted) {
        list.SortTokens(",");
        EXPECT_EQ(expected, list);
    }
}
