#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>
#include <utility>

/// An owned, NUL-terminated byte string with value semantics: no encoding, no embedded NULs.
///
/// Positions and lengths count bytes from 0. Nothing fails: "not found" is -1, a position out of
/// range is clamped or gives the NUL character or "", a null text reads as "". Only memory can run
/// out, and a text can grow past INT_MAX bytes, where positions end: both are the fatal report and
/// exit status 1.
///
/// Every operation that returns a CString builds it in one scratch string that all strings share
/// and returns a copy of that: the result is independent, but no two threads may use strings.
///
/// Between GetBuffer(n) and ReleaseBuffer() a string is locked: the buffer belongs to the caller,
/// every operation that would change the text does nothing, and ToInt() gives 0.
class CString {
public:
    /// The characters that Trim() and the token operations remove. Carriage return is not one.
    static constexpr char kBlanks[] = " \t\n";
    static constexpr bool IsBlank(char c) {
        return c == kBlanks[0] || c == kBlanks[1] || c == kBlanks[2];
    }
    /// The part of the text between the blanks at its ends.
    static std::string_view Trimmed(std::string_view text);

    // --- Construction and lifetime ---

    constexpr CString() {}  // constant: strings work before main, in any order of static objects
    CString(const CString& other) : CString(other.buffer) {}  ///< Copies the text only.
    /// Takes the text, which leaves `other` empty; copies the text of a locked one.
    CString(CString&& other) noexcept : CString() { *this = std::move(other); }
    CString(const char* text);    ///< Null gives the empty string.
    CString(char c, unsigned n);  ///< `n` copies of `c`.
    /// The decimal text of the number, as ToString makes it. A lone char counts as a number here.
    CString(short number) : CString() { ToString(number); }
    CString(unsigned short number) : CString() { ToString(number); }
    CString(int number) : CString() { ToString(number); }
    CString(unsigned int number) : CString() { ToString(number); }
    CString(long number) : CString() { ToString(number); }
    CString(unsigned long number) : CString() { ToString(number); }
    CString(float number) : CString() { ToString(number); }
    CString(double number) : CString() { ToString(number); }
    ~CString() {
        BufferRelease();
        release();
    }
    /// Makes all members those of a new, empty string. What they held is NOT freed: this is the
    /// first step of every constructor, and only that.
    void Initialize() {
        buffer = emptyText;
        lockedLength = 0;
        tokenBuffersReady = false;
        tokenWork = tokenRest = tokenSeparator = nullptr;
    }

    // --- Assignment, appending and concatenation. The operand may be, or lie in, the string. ---

    void operator=(const CString& other) { *this = other.buffer; }
    /// Takes the text, and leaves `other` with another one, unless either of them is locked.
    void operator=(CString&& other) noexcept {
        if (lockedLength == 0 && other.lockedLength == 0)
            std::swap(buffer, other.buffer);
        else
            *this = other.buffer;
    }
    void operator=(const char* text);
    void operator=(char c);  ///< The string becomes this one character.
    /// The string becomes this text, which holds no NUL: the assignment where the length is known.
    void Assign(std::string_view text) {
        if (lockedLength == 0) store(0, text);
    }
    void operator+=(const CString& other) { *this += other.buffer; }
    void operator+=(const char* text);
    void operator+=(char c);  ///< NUL appends nothing.
    friend CString operator+(const CString& left, const CString& right);
    friend CString operator+(const CString& left, const char* right);
    friend CString operator+(const char* left, const CString& right);
    friend CString operator+(const CString& left, char right);
    friend CString operator+(char left, const CString& right);
    char* RepeatChar(char c, unsigned n);  ///< The string becomes `n` copies of `c`; its text.
    void Empty() {
        if (lockedLength == 0) release();
    }

    // --- Comparison, byte by byte. A null text orders before every string and equals none. ---

    // The strings come by reference: an operand of the same expression may still change them.
    friend bool operator==(const CString& a, const CString& b) { return a == b.buffer; }
    friend bool operator==(const CString& a, const char* b) { return order(a.buffer, b) == 0; }
    friend bool operator==(const char* a, const CString& b) { return order(a, b.buffer) == 0; }
    friend bool operator!=(const CString& a, const CString& b) { return a != b.buffer; }
    friend bool operator!=(const CString& a, const char* b) { return order(a.buffer, b) != 0; }
    friend bool operator!=(const char* a, const CString& b) { return order(a, b.buffer) != 0; }
    friend bool operator<(const CString& a, const CString& b) { return a < b.buffer; }
    friend bool operator<(const CString& a, const char* b) { return order(a.buffer, b) < 0; }
    friend bool operator<(const char* a, const CString& b) { return order(a, b.buffer) < 0; }
    friend bool operator>(const CString& a, const CString& b) { return a > b.buffer; }
    friend bool operator>(const CString& a, const char* b) { return order(a.buffer, b) > 0; }
    friend bool operator>(const char* a, const CString& b) { return order(a, b.buffer) > 0; }
    friend bool operator<=(const CString& a, const CString& b) { return a <= b.buffer; }
    friend bool operator<=(const CString& a, const char* b) { return order(a.buffer, b) <= 0; }
    friend bool operator<=(const char* a, const CString& b) { return order(a, b.buffer) <= 0; }
    friend bool operator>=(const CString& a, const CString& b) { return a >= b.buffer; }
    friend bool operator>=(const CString& a, const char* b) { return order(a.buffer, b) >= 0; }
    friend bool operator>=(const char* a, const CString& b) { return order(a, b.buffer) >= 0; }
    int Compare(CString other) const;        ///< What strcmp gives: any negative, 0, any positive.
    int CompareNoCase(CString other) const;  ///< The same, with ASCII letters folded.
    bool Equals(CString other) const;
    bool EqualsNoCase(CString other) const;

    // --- Element access and size ---

    unsigned GetLength() const;  ///< Counted anew on each call.
    bool IsEmpty() const { return *buffer == '\0'; }
    char GetAt(unsigned i) const;  ///< NUL at and past the end.
    char operator[](unsigned i) const { return GetAt(i); }
    char GetLastChar() const;  ///< NUL for the empty string.
    /// Whether `c` was stored: false past the end and while locked. NUL cuts the string at `i`.
    bool SetAt(unsigned i, char c);

    // --- Numbers ---

    /// The string becomes the number in decimal; a float or double with six significant digits, in
    /// the form that %g of printf gives it.
    void ToString(short number) { ToString(int{number}); }
    void ToString(unsigned short number) { ToString(int{number}); }
    void ToString(int number);
    void ToString(unsigned int number);
    void ToString(long number);
    void ToString(unsigned long number);
    void ToString(float number) { ToString(double{number}); }
    void ToString(double number);
    /// The string becomes the first `n` characters of `text`, an array of new[] that is taken over
    /// and freed, also while locked. n < 1 empties the string and frees nothing.
    void Converter(char* text, int n);
    /// The number that the text begins with, after white space and a sign; without one, 0. A
    /// number beyond an int of 32 bits gives the nearest one.
    int ToInt() const;
    /// Writes the text. A template, so that a program that prints no string links no stream.
    template <class Traits>
    friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                                        const CString& string) {
        return stream << string.GetBuffer();
    }

    // --- Raw buffer ---

    char* GetBuffer() { return buffer; }
    const char* GetBuffer() const { return buffer; }
    /// Locks the string and returns its buffer, of n + 1 bytes for the caller to write n characters
    /// and a NUL into; it holds the first n characters of the text. n = 0 unlocks instead, and
    /// empties a string that was not locked.
    char* GetBuffer(unsigned n);
    /// Unlocks the string: its text is what the buffer holds up to the first NUL. Ends any walk
    /// over tokens. Always true.
    bool ReleaseBuffer();
    char* Get() { return GetBuffer(); }
    const char* Get() const { return GetBuffer(); }
    char* Get(unsigned n) { return GetBuffer(n); }
    char* c_str() { return GetBuffer(); }
    const char* c_str() const { return GetBuffer(); }
    char* c_str(unsigned n) { return GetBuffer(n); }
    bool Release() { return ReleaseBuffer(); }
    bool rc_str() { return ReleaseBuffer(); }
    /// A new array of n + 1 bytes, the first of them NUL, for the caller to free with delete[].
    static char* CreateCharString(unsigned n);
    char* GetCharString() const;  ///< A new copy of the text, for the caller to free with delete[].
    void BufferInit();            ///< Makes the strings of the token walk, once.
    /// Frees the strings of the token walk, which ends it.
    void BufferRelease() {
        if (tokenBuffersReady) deleteTokenBuffers();
    }
    /// Ends the process with the fatal report that memory has run out, and status 1. Whatever in
    /// the system has no other answer to a failed allocation ends here.
    [[noreturn]] static void OutOfMemory();

    // --- Search ---

    int Find(CString sub) const;  ///< First occurrence; "" is never found.
    /// The `n`-th occurrence, counted from 1, overlapping ones included; n = 0: the last.
    int Find(CString sub, unsigned n) const;
    int ReverseFind(CString sub) const;  ///< Last occurrence.
    bool IsSubstring(CString sub) const;
    bool StartsWith(CString s) const;                 ///< False for "".
    bool EndsWith(CString s) const;                   ///< False for "".
    unsigned GetNumberOccurances(CString sub) const;  ///< Overlapping ones not counted.

    // --- Trimming: every character of `set` counts by itself. The results point to the text. ---

    const char* TrimLeft(CString set);  ///< While locked, changes nothing and returns "".
    const char* TrimRight(CString set);
    const char* Trim(CString set);  ///< Both ends.
    const char* Trim();             ///< Both ends, of kBlanks.

    // --- Substrings ---

    CString Left(int n) const;  ///< The first `n` characters; a negative `n` gives the whole text.
    /// At most `count` characters from `start` on (a negative one is 0); count = 0: to the end.
    CString Mid(int start, unsigned count) const;
    CString Right(unsigned n) const;                          ///< The last `n` characters.
    CString Substring(unsigned start, unsigned count) const;  ///< Mid; a start above INT_MAX is 0.
    bool RemoveSubstring(CString sub);  ///< Removes the first occurrence; whether there was one.
    void operator-=(const CString& sub) { RemoveSubstring(sub); }
    void operator-=(const char* sub) { RemoveSubstring(sub); }

    // --- Tokens: the parts of the text between occurrences of the separator, a whole string. ---

    /// Starts a walk over a snapshot of the text and returns the first token, untrimmed. The walk
    /// is kept in the string until the next one, ReleaseBuffer() or destruction; it is not copied.
    CString StrTok(CString sep);
    CString StrTok();    ///< The next token; "" once the text is used up, as for an empty token.
    CString StrTokIt();  ///< The step that both forms of StrTok take.
    CString StrBreak(CString sep);  ///< The text up to and including the first separator.
    CString StrBreak();             ///< The text after what the last StrBreak(sep) returned.
    /// How many tokens the blank-trimmed text holds: none when it or the separator is empty.
    unsigned GetNumberTokens(CString sep) const;
    /// Token `n`, counted from 0, of the blank-trimmed text; untrimmed itself; "" past the last.
    CString GetToken(unsigned n, CString sep) const;
    /// Position in the blank-trimmed text of the first token equal to `token`, or -1. An empty
    /// separator gives 0.
    int FindToken(CString token, CString sep) const;
    bool IsToken(CString token, CString sep) const { return FindToken(token, sep) >= 0; }
    void AddToken(CString token, CString sep);  ///< Appends; an empty token adds the separator.
    /// Inserts `token` in front of the token `before`, found without regard to case; an empty
    /// `before` means in front of all, an absent one at the end. An empty token changes nothing.
    /// The position comes from FindToken, so blanks at the start of the text shift the place.
    void InsertToken(CString token, CString before, CString sep);
    /// Sorts the tokens in byte order and drops empty ones. Tokens that differ only in case may
    /// stay out of order, since InsertToken does not tell them apart.
    void SortTokens(CString sep);
    /// Fills out[0] to out[k - 1] with the first tokens, blank-trimmed, and returns k: the number
    /// of tokens, but at most `max`. The other elements are left alone. It is a walk itself:
    /// StrTok() goes on behind the last token parsed.
    unsigned ParseTokens(CString* out, unsigned max, CString sep);

    // --- Case, of ASCII letters only. While locked, the forms that change the text return "". ---

    CString ToUpper();            ///< Changes the string, and returns a copy of it.
    CString ToUpper(unsigned i);  ///< Changes the character at `i` only; past the end, returns "".
    CString ToLower();
    CString ToLower(unsigned i);
    CString Upper() const;  ///< An upper-cased copy.
    CString Lower() const;  ///< A lower-cased copy.

    // --- Paths, as texts: nothing here asks the file system. Only '/' separates directories. ---

    CString GetPath() const;        ///< The directory without its last '/'; "" when there is none.
    CString GetPath(CString path);  ///< The string becomes the directory of `path`; a copy of it.
    CString GetName() const;        ///< What follows the last '/', or without one the first ':'.
    /// The four parts of the blank-trimmed text, e.g. "C:", "/dir/sub/", "file", ".txt". An
    /// extension has at most three characters after its '.'. Always true.
    bool SplitPath(CString& drive, CString& directory, CString& name, CString& extension) const;
    CString GetDrive() const;
    CString GetDirectory() const;
    CString GetFileName() const;  ///< Without the extension.
    CString GetExtension() const;
    /// The string becomes directory and name joined by AddPath, followed by the extension as it
    /// is. The drive is ignored. Returns the text.
    const char* MakePath(CString drive, CString directory, CString name, CString extension);
    /// Appends `part` with exactly one '/' between; an empty side adds none. Returns the text.
    const char* AddPath(CString part);
    CString GetAbsolutePath() const;  ///< A copy of the text as it is.

    /// Replaces the array *dest, freed with delete[] when not null, by a new copy of `src` that the
    /// caller owns. Always true. Neither form uses this string's text.
    bool CopyString(char** dest, const char* src);
    bool CopyString(char** dest, CString src);

private:
    static int order(const char* a, const char* b);
    static CString joined(const char* left, const char* right);
    static CString copyOf(std::string_view text);
    void format(const char* form, ...) __attribute__((format(printf, 2, 3)));
    void store(std::size_t kept, std::string_view tail);
    void adopt(char* text);
    template <class IsInSet>
    const char* trim(IsInSet isInSet, bool left, bool right);
    void divide(const CString& sep, bool keepSeparator);
    CString pathPart(int which) const;
    CString convert(int (*fold)(int));
    CString convert(unsigned i, int (*fold)(int));

    void release();  // frees the text: the string is empty then
    void deleteTokenBuffers();

    static char emptyText[1];  // what empty strings share, so that none of them allocates

    char* buffer = emptyText;   // never null
    unsigned lockedLength = 0;  // 0, or the capacity that GetBuffer(n) handed out
    bool tokenBuffersReady = false;
    CString* tokenWork = nullptr;  // the three strings of a token walk: null until the first one
    CString* tokenRest = nullptr;
    CString* tokenSeparator = nullptr;
};
