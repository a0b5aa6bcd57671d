#include "support.h"

using testing::ElementsAre;

namespace {
struct Insertion {
    const char* rule;
    CString list;
    const char* before;
    CString after;
};
const Insertion kInsertions[] = {
    {"before no token", "a", "", "b,a"},
    {"into an empty list", "", "", "b"},
    {"leading blanks shift the place", " a,c", "c", " a,b,,c"},
    {"before a token that is not there", "a,c", "z", "a,c,b"},
};
}  // namespace

TEST(Tokens, AreCountedAndFetched) {
    const CString list = " a ,, b ";
    EXPECT_EQ(3U, list.GetNumberTokens(","));
    EXPECT_EQ("a ", list.GetToken(0, ",")) << "the list is trimmed, its tokens are not";
    EXPECT_EQ("", list.GetToken(0, ""));
    EXPECT_EQ("a", CString(",a").GetToken(1, ","));
    EXPECT_EQ(0U, list.GetNumberTokens(""));
    EXPECT_EQ(0U, CString(" \t\n").GetNumberTokens(","));
}

TEST(Tokens, AreParsedTrimmed) {
    CString list = " A ; \t;B\n", out[4] = {"", "", "", "kept"};
    EXPECT_EQ(3U, list.ParseTokens(out, 4, ";"));
    EXPECT_THAT(out, ElementsAre("A", "", "B", "kept"));
    CString parts[2] = {"a;b;c"};
    EXPECT_EQ(2U, parts[0].ParseTokens(parts, 2, ";"));
    EXPECT_THAT(parts, ElementsAre("a", "b")) << "a token may replace the list";
}

TEST(Tokens, AreWalkedInOneWalkAtATime) {
    CString list = "k:v:w";
    EXPECT_EQ("", list.StrTokIt()) << "there is no walk yet";
    EXPECT_EQ("k", list.StrTok(":"));
    EXPECT_EQ(0U, list.ParseTokens(nullptr, 0, ","));
    EXPECT_EQ("v", list.StrTok()) << "to parse no token leaves the walk alone";
    EXPECT_EQ("k:v:w", list.StrTok(","));
    EXPECT_EQ("", list.StrTok()) << "the walk before has ended";
    EXPECT_EQ("k", list.StrTok(":"));
    EXPECT_EQ("k:v:w", list.StrBreak(","));
    EXPECT_EQ("", list.StrBreak()) << "the walk before has ended";
    EXPECT_EQ("k:v", list.StrBreak("v"));
    for (const CString token : {"", "w"})
        EXPECT_EQ(token, list.StrTok()) << "by the separator of the walk before";
}

TEST(Tokens, AreFoundAsTheyAre) {
    EXPECT_EQ(3, CString("  ba,a").FindToken("a", ",")) << "positions are in the trimmed list";
    EXPECT_EQ(-1, CString("a, b").FindToken("b", ",")) << "tokens are not trimmed";
    EXPECT_EQ(0, CString("a").FindToken("x", "")) << "an empty separator is found at once";
    EXPECT_EQ(-1, CString(" ").FindToken("", ",")) << "blanks are no token";
}

TEST(Tokens, AreInserted) {
    for (Insertion row : kInsertions) {
        row.list.InsertToken("b", row.before, ",");
        EXPECT_EQ(row.after, row.list) << row.rule;
    }
}

TEST(Tokens, AreSorted) {
    CString list = "pear,,Fig,a b,fig", blank = ",";
    list.InsertToken("", "Fig", ",");
    EXPECT_EQ("pear,,Fig,a b,fig", list) << "an empty token changes nothing";
    list.SortTokens(",");
    EXPECT_EQ("Fig,a b,fig,pear", list) << "in byte order, without empty ones";
    blank.SortTokens(",");
    EXPECT_EQ(",", blank) << "if all are empty, the text stays";
}
