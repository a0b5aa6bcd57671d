#include <climits>

#include "support.h"

namespace {
constexpr const char* kNull = nullptr;

template <class A, class B>
void expectOrder(int order, const A& a, const B& b) {
    EXPECT_EQ(order == 0, a == b);
    EXPECT_EQ(order != 0, a != b);
    EXPECT_EQ(order < 0, a < b);
    EXPECT_EQ(order > 0, a > b);
    EXPECT_EQ(order <= 0, a <= b);
    EXPECT_EQ(order >= 0, a >= b);
}
}  // namespace

TEST(Strings, AreMadeOfNumbersAndReadAsSuch) {
    EXPECT_EQ("-2147483648", CString(INT_MIN));
    EXPECT_EQ("4294967295", CString(UINT_MAX));
    EXPECT_EQ("-12", CString(-12L));
    EXPECT_EQ("-1.23457e+06", CString(-1234567.0));  // six digits
    const std::pair<CString, int> kNumbers[] = {{" \t-12a", -12},
                                                {"+7", 7},
                                                {"010", 10},
                                                {"a", 0},
                                                {"2147483648", INT_MAX},
                                                {"-9999999999999999", INT_MIN}};
    for (const auto& [text, number] : kNumbers) EXPECT_EQ(number, text.ToInt()) << text;
}

TEST(Strings, AssignAndAppendEvenThemselves) {
    CString s = "abcdef";
    s = s.c_str() + 2;
    s += s;
    s += s.c_str() + 6;
    CString& same = s;
    s = same;
    s = std::move(same);
    s += kNull;
    s += '\0';
    EXPECT_EQ("cdefcdefef", s);
    s -= "def";
    s -= CString("cde");
    s += 'g';
    EXPECT_EQ("cfefg", s);
    s = kNull;
    for (int i = 0; i < 1000; ++i) s += "ab";
    EXPECT_EQ(s, s.Left(999) + s.Right(1001));
}

TEST(Strings, AddUpThroughOneScratchString) {
    CString s = "old";
    s = 'x';
    EXPECT_EQ("axbyc", "a" + s + "b" + 'y' + CString("c"));
    EXPECT_EQ("yxx", 'y' + (s + s));
    EXPECT_TRUE(s.AddPath("d") == s);  // whichever operand is read first
    EXPECT_TRUE(s == s.AddPath(CString('n', 1000)));
    EXPECT_EQ("/d/d", s.GetPath("/d/f") + s);
}

TEST(Strings, CompareEvenWithNullTexts) {
    const std::tuple<CString, const char*, int> kOrders[] = {
        {"abc", "abc", 0},
        {"abc", "abd", -1},
        {"z", "\xE4", -1},  // bytes are unsigned
        {"", kNull, 1},     // null comes before all, and equals none
    };
    for (const auto& [a, b, order] : kOrders) {
        SCOPED_TRACE(a);
        expectOrder(order, a, b);
        expectOrder(-order, b, a);
        if (b) expectOrder(order, a, CString(b));
    }
    EXPECT_TRUE(CString("aBc").EqualsNoCase("AbC"));
    EXPECT_FALSE(CString("aBc").Equals("AbC"));
    std::ostringstream stream;
    stream << CString("abc") << CString();
    EXPECT_EQ("abc", stream.str());
}

TEST(Strings, AreSearchedFromEitherEnd) {
    const CString s = "abcabc", a = "aaaa";
    EXPECT_EQ(1, s.Find("bc"));
    EXPECT_EQ(4, s.Find("bc", 2));
    EXPECT_EQ(-1, s.Find("bc", 3));
    EXPECT_EQ(4, s.ReverseFind("bc"));
    EXPECT_EQ(-1, s.ReverseFind("bd"));
    EXPECT_EQ(-1, s.Find(""));
    EXPECT_EQ(2, a.Find("aa", 3));              // occurrences overlap
    EXPECT_EQ(2, a.GetNumberOccurances("aa"));  // but are not counted so
    for (const char* head : {"abca", "abcabc"}) EXPECT_TRUE(s.StartsWith(head)) << head;
    for (const char* head : {"", "b", "abcabca"}) EXPECT_FALSE(s.StartsWith(head)) << head;
    for (const char* tail : {"cabc", "abcabc"}) EXPECT_TRUE(s.EndsWith(tail)) << tail;
    for (const char* tail : {"", "b", "aabcabc"}) EXPECT_FALSE(s.EndsWith(tail)) << tail;
}

TEST(Strings, AreCutAndTrimmed) {
    CString s = "abcabc";
    EXPECT_EQ("", s.Left(0));
    EXPECT_EQ("abcabc", s.Left(-1));
    EXPECT_EQ("abcabc", s.Right(7));
    EXPECT_EQ("bc", s.Mid(4, 0));
    EXPECT_EQ("", s.Mid(6, 0));
    EXPECT_EQ("ab", s.Substring(UINT_MAX, 2));
    EXPECT_TRUE(s.RemoveSubstring("bc"));
    EXPECT_FALSE(s.RemoveSubstring(""));
    EXPECT_EQ("aabc", s);  // only the first one
    EXPECT_EQ('b', s[2]);
    EXPECT_EQ('\0', s[4]);
    EXPECT_EQ('c', s.GetLastChar());
    EXPECT_TRUE(s.SetAt(2, '\0'));
    EXPECT_FALSE(s.SetAt(2, 'x'));
    EXPECT_EQ("aa", s);
    s = " \tkey = v\r\n";
    EXPECT_STREQ("key = v\r", s.Trim());  // carriage return is no blank
    EXPECT_STREQ("y = v\r", s.TrimLeft("ek\r"));
    EXPECT_STREQ(" = ", s.Trim("vy\r"));
}

TEST(Strings, KeepStillWhileLocked) {
    CString s = "a;b;c";
    s.StrTok(";");
    char* const buffer = s.GetBuffer(10);
    s = "x";
    s += "x";
    s.Converter(new char[2]{'x'}, 1);  // takes the array all the same
    s.SortTokens("b");
    s.AddPath("x");
    EXPECT_STREQ("", s.TrimLeft("a"));
    EXPECT_FALSE(s.RemoveSubstring("b"));
    EXPECT_FALSE(s.SetAt(0, 'x'));
    EXPECT_EQ("", s.ToUpper());
    EXPECT_EQ("a;b;c", CString(std::move(s)));
    for (int i = 0; i < 10; ++i) buffer[i] = '7';  // all that was promised, but no NUL
    EXPECT_EQ(0, s.ToInt());
    EXPECT_TRUE(s.ReleaseBuffer());
    EXPECT_EQ(10U, s.GetLength());
    EXPECT_EQ("", s.StrTok());  // the walk has ended
    EXPECT_STREQ("777", s.GetBuffer(3));
    EXPECT_STREQ("777", s.GetBuffer(0));  // unlocks
    s += "x";
    EXPECT_STREQ("777x", s.GetBuffer());
    EXPECT_STREQ("", s.GetBuffer(0));  // empties
}

TEST(Strings, TakeTheirTextOutOfAnArray) {
    CString s;
    s.Converter(CString("abc").GetCharString(), 2);
    EXPECT_EQ("ab", s);
}
