#include "support.h"

TEST(Tokens, AreCountedFetchedAndParsed) {
    const std::tuple<CString, const char*, const char*, unsigned> kLists[] = {
        {" a , b ", ",", "a | b||", 2},  // the list is trimmed, its tokens are not
        {"A;;B;", ";", "A||B|||", 4},    // empty ones count
        {"a, b,c", ", ", "a|b,c||", 2},  // the separator is a text, not a set
        {" \t\n", ";", "|", 0},
        {"a;b", "", "|", 0}};
    for (const auto& [list, separator, expected, total] : kLists) {
        std::string tokens;
        for (unsigned i = 0; i <= total; ++i) tokens += joined({list.GetToken(i, separator), ""});
        EXPECT_EQ(joined({expected, total}),
                  joined({tokens.c_str(), list.GetNumberTokens(separator)}));
    }
    CString list = " A ; ;B\t;C;D", out[4] = {"", "", "", "kept"};
    const unsigned parsed = list.ParseTokens(out, 3, ";");
    EXPECT_EQ("3|A||B|kept|C|4|C|0",
              joined({parsed, out[0], out[1], out[2], out[3], list.StrTok(),
                      list.ParseTokens(out, 4, ";"), out[3], list.ParseTokens(out, 0, ";")}));
}

TEST(Tokens, AreWalkedOverASnapshot) {
    CString list = "a;; b";
    EXPECT_EQ("|a|a;; b||a", joined({list.StrTok(), list.StrTok(";"), list.StrTok("="),
                                     list.StrTok(), list.StrTok(";")}));
    CString copy = list;
    list = "k:v:w";
    EXPECT_EQ(
        "|| b||k:v:w",  // a walk is not copied
        joined({copy.StrTok(), list.StrTok(), list.StrTok(), list.StrTok(), list.StrTok("")}));
    EXPECT_EQ("k:|v:w|v:w|k:v:w|", joined({list.StrBreak(":"), list.StrBreak(), list.StrBreak(),
                                           list.StrBreak("="), list.StrBreak()}));
    CString parts[2] = {"a;b;c;d"};  // the list is the first to be overwritten
    EXPECT_EQ("2|a|b|b|c|d", joined({parts[0].ParseTokens(parts, 2, ";"), parts[0], parts[1],
                                     parts[0].StrTokIt(), parts[0].StrTok(), parts[0].StrBreak()}));
}

TEST(Tokens, AreFoundInsertedAndSorted) {
    const auto find = [](CString list, CString token) { return list.FindToken(token, ","); };
    EXPECT_EQ("2|3|2|4|-1|-1|-1|0",  // an empty separator is found at once
              joined({find("  a,b", "b"), find("ba,a", "a"), find("a,,b", ""), find("a,b,", ""),
                      find("a, b", "b"), find("a,B", "b"), find("", ""),
                      CString("a").FindToken("x", "")}));
    const auto insert = [](CString list, CString token, CString before) {
        list.InsertToken(token, before, ",");
        return list;
    };
    EXPECT_EQ("a,b,c|a,c,b|b,c,a|b,a|b|a,b",  // found in any case
              joined({insert("a,c", "b", "C"), insert("a,c", "b", "z"), insert("c,a", "b", "c"),
                      insert("a", "b", ""), insert("", "b", ""), insert("a,b", "", "b")}));
    const auto sort = [](CString list) {
        list.SortTokens(",");
        list.AddToken("", "; ");  // an empty token adds the separator
        return list;
    };
    EXPECT_EQ("Fig,apple,fig,pear; |A,a b,a c,b,b; |,; ",  // blanks inside count, empty tokens go
              joined({sort("pear,Fig,apple,fig"), sort(" b,,a c,a b,b,A "), sort(",")}));
}
