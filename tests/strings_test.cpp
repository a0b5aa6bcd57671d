#include <climits>

#include "support.h"

constexpr const char* kNull = nullptr;

TEST(Strings, AreMadeOfAnything) {
    EXPECT_EQ("|x|xxx|", joined({CString('x', 0), CString('x', 1), CString('x', 3), kNull}));
    EXPECT_EQ(
        "-32768|65535|-2147483648|4294967295|" + std::to_string(LONG_MIN),
        joined({short{SHRT_MIN}, static_cast<unsigned short>(65535), INT_MIN, UINT_MAX, LONG_MIN}));
    EXPECT_EQ("2|0.1|-1.23457e+06|1e-05|100000|1e+10|-1.5e-300",
              joined({2.0, 0.1f, -1234567.0, 0.00001, 100000.0, 1e10, -1.5e-300}));
    const auto toInt = [](CString text) { return text.ToInt(); };
    EXPECT_EQ("-12|7|10|0|2147483647|-2147483648",
              joined({toInt(" \t-12a"), toInt("+7"), toInt("010"), toInt("a"), toInt("2147483648"),
                      toInt("-9999999999999999")}));
}

TEST(Strings, AssignAndAppendEvenThemselves) {
    CString s = "abcdef", copy = s;
    s = s.c_str() + 2;
    s += s;
    s += s.c_str() + 6;
    CString& same = s;
    s = same;
    s = std::move(same);
    s += kNull;
    s += '\0';
    EXPECT_EQ("abcdef|cdefcdefef", joined({copy, s}));
    copy = kNull;
    s = 'x';  // the sums go through one scratch string
    EXPECT_EQ("|axbyc|xx|yx", joined({copy, "a" + s + "b" + 'y' + CString("c"), s + s, 'y' + s}));
    EXPECT_EQ("120|0|1|0|", joined({s.GetLastChar(), s[1], s.SetAt(0, '\0'), s.SetAt(0, 'y'), s}));
    for (int i = 0; i < 1000; ++i) s += "ab";
    EXPECT_EQ(s, s.Left(999) + s.Right(1001));
}

TEST(Strings, CompareEvenWithNullTexts) {
    const CString s = "abc";
    const auto compare = [](auto a, auto b) {
        return joined({a == b, a != b, a < b, b < a, a <= b, a >= b});
    };
    EXPECT_EQ("1|0|0|0|1|1", compare(s, "abc"));
    EXPECT_EQ("0|1|1|0|1|0", compare("z", CString("\xE4")));  // bytes are unsigned
    EXPECT_EQ("0|1|0|1|0|1", compare(CString(), kNull));
    std::ostringstream stream;
    stream << s << CString();
    EXPECT_EQ("0|0|1|abc", joined({s.CompareNoCase("ABC"), s.Equals("ABC"), s.EqualsNoCase("ABC"),
                                   stream.str().c_str()}));
}

// Compilers differ in which operand they evaluate first.
TEST(Strings, AreReadWhenAnOperandOfTheExpressionHasChangedThem) {
    const std::string name(1000, 'n');
    CString s;
    EXPECT_TRUE(s.AddPath(name.c_str()) == s);
    EXPECT_TRUE(s == s.AddPath(name.c_str()));
    EXPECT_STREQ("/d/d", (s.GetPath("/d/f") + s).c_str());
    s.ToString(5);
    EXPECT_TRUE(s == 5 && 5 == s);
}

TEST(Strings, FindCutAndTrim) {
    CString s = "abcabc", a = "aaaa";
    // Occurrences overlap where they are looked for, but not where they are counted.
    EXPECT_EQ("1|4|-1|4|-1|-1|2|1|2",
              joined({s.Find("bc"), s.Find("bc", 2), s.Find("bc", 3), s.ReverseFind("bc"),
                      s.Find("bd", 0), s.Find(""), a.Find("aa", 0), a.Find("aa", 2),
                      a.GetNumberOccurances("aa")}));
    EXPECT_TRUE(s.IsSubstring("cab") && s.StartsWith("abca") && s.StartsWith(s) && s.EndsWith(s));
    EXPECT_FALSE(s.IsSubstring("") || s.StartsWith("") || s.EndsWith("") || s.EndsWith("b") ||
                 s.StartsWith("abcabca") || s.EndsWith("aabcabc"));
    EXPECT_EQ("|abcabc|abcabc|abcabc|bc||ab|b|1|0|0|aabc",  // the first one only
              joined({s.Left(0), s.Left(-1), s.Left(7), s.Right(7), s.Mid(4, 0), s.Mid(6, 0),
                      s.Substring(UINT_MAX, 2), s.Mid(1, 1), s.RemoveSubstring("bc"),
                      s.RemoveSubstring("x"), s.RemoveSubstring(""), s}));
    s = " \tkey = v\r\n";  // carriage return is no blank; a set is no sequence
    EXPECT_EQ("key = v\r|key = v\r|y = v\r|y =|",
              joined({s.Trim(CString::kBlanks), s.Trim(""), s.TrimLeft("ek\r"),
                      s.TrimRight("yv \r"), s.TrimLeft(s)}));
}

TEST(Strings, KeepStillWhileLocked) {
    CString s = "a;b;c";
    s.StrTok(";");
    char* buffer = s.GetBuffer(10);
    s = "x";
    s += "x";
    s.ToString(1);
    s.Converter(new char[2]{'x'}, 1);  // takes the array all the same
    s.Trim("ac");
    s.SortTokens("b");
    s.InsertToken("x", "b", ";");
    s.AddPath("x");
    EXPECT_EQ("a;b;c|0|0||||A;B;C",
              joined({s.RepeatChar('x', 2), s.RemoveSubstring("b"), s.SetAt(0, 'x'), s.ToUpper(),
                      s.ToLower(0), s.TrimLeft("a"), s.Upper()}));
    const CString copy = s, moved = std::move(s);
    for (int i = 0; i < 10; ++i) buffer[i] = '7';  // all that was promised, but no NUL
    EXPECT_EQ("0|1|10|a;b;c|a;b;c",
              joined({s.ToInt(), s.ReleaseBuffer(), s.GetLength(), copy, moved}));
    EXPECT_EQ("|777", joined({s.StrTok(), s.GetBuffer(3)}));      // the walk has ended
    EXPECT_EQ("777|", joined({s.GetBuffer(0), s.GetBuffer(0)}));  // unlocks first, then empties
    s.Converter(new char[3]{'x', 'y', 'z'}, 2);
    char* array = s.GetCharString();
    EXPECT_TRUE(s.CopyString(&array, CString(array) + s));
    EXPECT_EQ("xy|xyxy", joined({s, array}));
    delete[] array;
}
