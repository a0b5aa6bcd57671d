#include "support.h"

TEST(Tokens, AreCountedFetchedAndParsed) {
    const struct {
        const char *text, *sep, *tokens;
        unsigned total;
    } kLists[] = {
        {" a , b ", ",", "a | b|", 2},  // the list is trimmed, its tokens are not
        {"A;;B;", ";", "A||B||", 4},    // empty ones count
        {"a, b,c", ", ", "a|b,c|", 2},  // the separator is a text, not a set
        {" \t\n", ";", "", 0},         {"a;b", "", "", 0},
    };
    for (const auto& row : kLists) {
        const CString list = row.text;
        std::string tokens;
        for (unsigned i = 0; i <= row.total; ++i) tokens += joined({list.GetToken(i, row.sep), ""});
        EXPECT_EQ(row.tokens + std::string("|"), tokens);
        EXPECT_EQ(row.total, list.GetNumberTokens(row.sep)) << row.text;
    }
    CString list = " A ; ;B\t;C", out[4] = {"", "", "", "kept"};
    EXPECT_EQ(3u, list.ParseTokens(out, 3, ";"));
    EXPECT_EQ("A||B|kept", joined({out[0], out[1], out[2], out[3]}));
    EXPECT_EQ("4|C|0",
              joined({list.ParseTokens(out, 4, ";"), out[3], list.ParseTokens(out, 0, ";")}));
}

TEST(Tokens, AreWalkedOverASnapshot) {
    CString list = "a;; b";
    EXPECT_EQ("|a", joined({list.StrTok(), list.StrTok(";")}));
    CString copy = list;
    list = "k:v:w";
    EXPECT_EQ("", copy.StrTok());  // a walk is not copied
    EXPECT_EQ("| b||", joined({list.StrTok(), list.StrTok(), list.StrTok(), list.StrTok()}));
    EXPECT_EQ("k:v:w", list.StrTok(""));
    EXPECT_EQ("k:|v:w|v:w", joined({list.StrBreak(":"), list.StrBreak(), list.StrBreak()}));
    EXPECT_EQ("k:v:w|", joined({list.StrBreak("="), list.StrBreak()}));
}

TEST(Tokens, AreFoundInsertedAndSorted) {
    const auto find = [](CString list, CString token) { return list.FindToken(token, ","); };
    EXPECT_EQ("2|3|2|4|-1|-1|-1",
              joined({find("  a,b", "b"), find("ba,a", "a"), find("a,,b", ""), find("a,b,", ""),
                      find("a, b", "b"), find("a,B", "b"), find("", "")}));
    EXPECT_TRUE(CString("a").IsToken("x", ""));  // an empty separator is found at once
    const auto insert = [](CString list, CString token, CString before) {
        list.InsertToken(token, before, ",");
        return list;
    };
    EXPECT_EQ("a,b,c", insert("a,c", "b", "C"));  // found in any case
    EXPECT_EQ("a,c,b|b,c,a", joined({insert("a,c", "b", "z"), insert("c,a", "b", "c")}));
    EXPECT_EQ("b,a|b|a",
              joined({insert("a", "b", ""), insert("", "b", "z"), insert("a", "", "a")}));
    const std::pair<CString, const char*> kSorted[] = {
        {"pear,Apple,fig,apple", "Apple,apple,fig,pear"},
        {" b,,a c,a b,b,A ", "A,a b,a c,b,b"},  // blanks inside count, empty tokens go
        {",", ","},
    };
    for (auto [list, sorted] : kSorted) {
        list.SortTokens(",");
        EXPECT_EQ(sorted, list);
        list.AddToken("", "; ");
        EXPECT_EQ(sorted + CString("; "), list);  // an empty token adds the separator
    }
}
