#include "support.h"

using testing::ElementsAre;

TEST(Tokens, AreCountedAndFetched) {
    const CString list = " a ,, b ";  // the list is trimmed, its tokens are not
    EXPECT_EQ(3U, list.GetNumberTokens(","));
    EXPECT_EQ("a ", list.GetToken(0, ","));
    EXPECT_EQ("", list.GetToken(3, ","));
    EXPECT_EQ(2U, list.GetNumberTokens(", "));  // the separator is a text, not a set
    EXPECT_EQ("", list.GetToken(0, ""));
}

TEST(Tokens, AreParsedTrimmed) {
    CString list = " A ; \t;B\n", out[4] = {"", "", "", "kept"};
    EXPECT_EQ(3U, list.ParseTokens(out, 4, ";"));
    EXPECT_THAT(out, ElementsAre("A", "", "B", "kept"));
    CString parts[2] = {"a;b;c"};  // the list is the first to be overwritten
    EXPECT_EQ(2U, parts[0].ParseTokens(parts, 2, ";"));
    EXPECT_THAT(parts, ElementsAre("a", "b"));
    EXPECT_EQ("c", parts[0].StrTok());  // a walk goes on behind them
}

TEST(Tokens, AreWalkedOverASnapshot) {
    CString list = "a;; b";
    EXPECT_EQ("", list.StrTokIt());  // no walk yet
    EXPECT_EQ("a", list.StrTok(";"));
    list = "k:v:w";
    for (const char* token : {"", " b", "", ""}) EXPECT_EQ(token, list.StrTok());
    EXPECT_EQ("k", list.StrTok(":"));
    EXPECT_EQ("k:v:w", list.StrTok(","));  // ends the walk before it
    EXPECT_EQ("", list.StrTok());
    EXPECT_EQ("k", list.StrTok(":"));
    EXPECT_EQ("k:v:w", list.StrBreak(","));  // so does this
    EXPECT_EQ("", list.StrBreak());
}

TEST(Tokens, AreFoundAsTheyAre) {
    EXPECT_EQ(3, CString("  ba,a").FindToken("a", ","));  // in the trimmed list
    EXPECT_EQ(-1, CString("a, b").FindToken("b", ","));   // tokens are not trimmed
    EXPECT_EQ(0, CString("a").FindToken("x", ""));        // an empty separator is found at once
}

TEST(Tokens, AreSorted) {
    CString list = "pear,,Fig,a b,fig", blank = ",";
    list.SortTokens(",");
    EXPECT_EQ("Fig,a b,fig,pear", list);  // in byte order; empty ones go
    blank.SortTokens(",");
    EXPECT_EQ(",", blank);  // if all are empty, the text stays
}
