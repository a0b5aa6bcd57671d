#include <climits>
#include <clocale>
#include <cstring>

#include "support.h"

constexpr const char* kNull = nullptr;

namespace {
// Sets a locale of a decimal comma, in which "A" is the upper case of "1". It is made here, since a
// system may have no other locale than "C".
class OddLocale : ScratchFolder {
public:
    OddLocale() {
        const std::string rules =
            file("rules",
                 "LC_CTYPE\ntoupper (<U0031>,<U0041>)\ntolower (<U0041>,<U0031>)\nEND LC_CTYPE\n"
                 "LC_NUMERIC\ndecimal_point \",\"\ngrouping -1\nEND LC_NUMERIC\n");
        std::ostringstream characters;
        characters << "CHARMAP\n" << std::hex << std::setfill('0');
        for (int i = 0; i < 128; ++i)
            characters << "<U" << std::setw(4) << i << "> \\x" << std::setw(2) << i << "\n";
        const std::string map = file("characters", characters.str() + "END CHARMAP\n");
        // Its status is not 0, since other categories are missing.
        const std::string command = "localedef -c -f " + map + " -i " + rules + " " + path("odd");
        EXPECT_NE(-1, std::system((command + " >/dev/null 2>&1").c_str()));
        setenv("LOCPATH", path().c_str(), 1);
        EXPECT_NE(nullptr, std::setlocale(LC_ALL, "odd"));
    }
    ~OddLocale() { std::setlocale(LC_ALL, "C"); }
};
}  // namespace

TEST(Strings, AreMadeOfNumbersAndReadAsSuch) {
    EXPECT_EQ("-2147483648", CString(INT_MIN));
    EXPECT_EQ("4294967295", CString(UINT_MAX));
    EXPECT_EQ("-12", CString(-12L));
    EXPECT_EQ("-32768", CString(short{SHRT_MIN}));
    EXPECT_EQ("-1.23457e+06", CString(-1234567.0)) << "six significant digits";
    EXPECT_EQ("0.1", CString(0.1F));
    const std::pair<CString, int> kNumbers[] = {
        {" \t-12a", -12}, {"010", 10}, {"2147483648", INT_MAX}, {"-9999999999999999", INT_MIN}};
    for (const auto& [text, number] : kNumbers) EXPECT_EQ(number, text.ToInt()) << text;
}

TEST(Strings, AssignAppendAndSubtractEvenThemselves) {
    CString s = "cdef";
    CString& same = s;
    s = same;
    s = std::move(same);
    EXPECT_EQ("cdef", s);
    s += s.c_str() + 2;
    EXPECT_EQ("cdefef", s);
    s += kNull;
    s += '\0';
    s += 'g';
    EXPECT_EQ("cdefefg", s);
    s -= CString("ef");
    EXPECT_EQ("cdefg", s) << "only the first one goes";
    s -= "ef";
    EXPECT_EQ("cdg", s);
    s = 'x';
    EXPECT_EQ("x", s);
    s = kNull;
    EXPECT_EQ("", s);
}

TEST(Strings, AddUpAndCompareWithOperandsThatChange) {
    CString s = "x";
    EXPECT_EQ("axbyc", "a" + s + "b" + 'y' + CString("c"));
    EXPECT_EQ("yxx", 'y' + (s + s));
    EXPECT_TRUE(s.AddPath("d") == s) << "whichever operand is read first";
    EXPECT_EQ("/d/d", s.GetPath("/d/f") + s);
}

TEST(Strings, CompareByBytesAndWithNullTexts) {
    EXPECT_LT(CString("z"), "\xE4") << "bytes are unsigned";
    EXPECT_GT(CString(), kNull) << "null comes before all, and equals none";
    EXPECT_TRUE(CString("aBc").EqualsNoCase("AbC"));
}

TEST(Strings, AreSearchedAndTrimmed) {
    CString s = "aaaa";
    EXPECT_EQ(2, s.Find("aa", 3)) << "occurrences may overlap";
    EXPECT_EQ(2U, s.GetNumberOccurances("aa")) << "those that overlap are not counted";
    s = " \tkey = v\r\n";
    EXPECT_STREQ("key = v\r", s.Trim()) << "carriage return is not a blank";
}

TEST(Strings, ChangeCaseInPlaceOrInACopy) {
    CString s = "ab1\xE4[`{";
    EXPECT_EQ("AB1\xE4[`{", s.Upper()) << "only ASCII letters have a case";
    EXPECT_EQ("aB1\xE4[`{", s.ToUpper(1));
    EXPECT_EQ("ab1\xE4[`{", s.ToLower());
}

TEST(Strings, AreTheSameInEveryLocale) {
    const OddLocale locale;
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    ASSERT_STREQ("1,5", text);
    EXPECT_EQ("1.5", CString(1.5));
    EXPECT_EQ("1A", CString("1a").Upper());
    EXPECT_EQ("1a", CString("1A").Lower());
    EXPECT_FALSE(CString("1").EqualsNoCase("A"));
}

TEST(Strings, KeepStillWhileLocked) {
    CString s = "a;b;c";
    s.StrTok(";");
    char* const buffer = s.Get(10);  // each operation under one of its names
    s = "x";
    EXPECT_FALSE(s.SetAt(0, 'x'));
    EXPECT_STREQ("a;b;c", buffer);
    for (int i = 0; i < 10; ++i) buffer[i] = '7';  // all that was promised, but no NUL
    EXPECT_TRUE(s.Release());
    EXPECT_EQ("", s.StrTok()) << "the walk has ended";
    EXPECT_STREQ("777", s.c_str(3));
    s.GetBuffer(4)[3] = '8';
    EXPECT_STREQ("7778", s.GetBuffer(9)) << "a new buffer keeps a text without a NUL";
    EXPECT_STREQ("7778", s.Get(0)) << "a locked string is unlocked, not emptied";
    EXPECT_TRUE(s.rc_str());
    EXPECT_STREQ(s.Get(), std::as_const(s).Get());
    s.Converter(CString("abc").GetCharString(), 2);
    EXPECT_EQ("ab", s);
}

TEST(Strings, BeginInMemoryOfAnyBytes) {
    alignas(CString) unsigned char room[sizeof(CString)];
    std::memset(room, 'x', sizeof room);
    CString* const s = reinterpret_cast<CString*>(room);
    s->Initialize();
    EXPECT_EQ("", *s);
    EXPECT_EQ("", s->StrTok());
    *s = "a";
    EXPECT_EQ("a", *s);
    s->~CString();
}

TEST(Strings, MakeArraysOfBytes) {
    const std::unique_ptr<char[]> empty(CString::CreateCharString(3));
    EXPECT_STREQ("", empty.get());
    char* copy = nullptr;
    for (const char* text : {"a", "bc"}) {
        EXPECT_TRUE(CString().CopyString(&copy, text));
        EXPECT_STREQ(text, copy) << "the array before is freed";
    }
    delete[] copy;
    const Outcome run = inChild([] { return CString::CreateCharString(INT_MAX + 1U) ? 3 : 4; });
    EXPECT_EQ(1, run.status) << "a text that is too long is fatal";
}
