#include <climits>
#include <clocale>
#include <cstring>
#include <iomanip>

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
    s += kNull;
    s += '\0';
    s += 'g';
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

TEST(Strings, KnowThreeBlanksAndTheLettersOfASCII) {
    CString s = " \t\r\nab1\xE4[`{\n";
    EXPECT_STREQ("\r\nab1\xE4[`{", s.Trim()) << "carriage return is not a blank";
    EXPECT_EQ("\r\nAB1\xE4[`{", s.ToUpper());
    EXPECT_EQ("\r\nab1\xE4[`{", s.Lower());
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

// Calls each operation under one of its names.
TEST(Strings, GiveTheirBufferAway) {
    CString s = "abcde";
    EXPECT_STREQ("abc", s.c_str(3));
    s.Get(4)[3] = '8';
    EXPECT_STREQ("abc8", s.GetBuffer(9)) << "a new buffer keeps a text without a NUL";
    EXPECT_STREQ("abc8", s.Get(0)) << "a locked string is not emptied";
    s += 'e';
    EXPECT_EQ("abc8e", s) << "it is unlocked";
    for (const bool isReleased : {s.rc_str(), s.Release()}) EXPECT_TRUE(isReleased);
    EXPECT_STREQ(s.Get(), std::as_const(s).Get());
    s.Converter(CString("abc").GetCharString(), 1);
    EXPECT_EQ("a", s);
    char kept[] = "k";
    s.Converter(kept, 0);
    EXPECT_EQ("", s);
    s = "x";
    s.Converter(nullptr, 1);
    EXPECT_EQ("", s);
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
