#pragma once

#include <cstddef>
#include <iosfwd>
#include <string_view>
#include <utility>

/// An owned, NUL-terminated byte string with value semantics: no encoding, no embedded NULs.
///
/// Positions and lengths are in bytes. Positions start at 0. No operation reports an error: "not
/// found" is -1, and a position out of range is clamped or gives NUL or "". A null text counts as
/// "", except in comparisons. If memory runs out, or a text would grow longer than INT_MAX, the
/// process prints the fatal report and exits with status 1.
///
/// Many operations build their result in one scratch string, which all strings share, and return a
/// copy. The copy is independent, but two threads must not use strings at the same time.
///
/// A string is locked from GetBuffer(n) to ReleaseBuffer(). While it is locked, the caller owns the
/// buffer, every other operation that would change the text does nothing, and ToInt() returns 0.
class CString {
public:
    /// The characters that Trim() and the token operations remove. Not carriage return.
    static constexpr char kBlanks[] = " \t\n";
    static constexpr bool IsBlank(char c) {
        // The first comparison decides for nearly every character of a document.
        return c <= ' ' && (c == kBlanks[0] || c == kBlanks[1] || c == kBlanks[2]);
    }
    /// The text without the blanks at both ends.
    static std::string_view Trimmed(std::string_view text);

    // --- Construction and lifetime ---

    constexpr CString() {}  // constexpr, so that static strings are ready before any code runs
    CString(const CString& other) : CString(other.buffer) {}  ///< Copies only the text.
    /// Takes the text of `other`, which becomes empty. If `other` is locked, copies the text.
    CString(CString&& other) noexcept : CString() { *this = std::move(other); }
    CString(const char* text);    ///< A null text gives the empty string.
    CString(char c, unsigned n);  ///< `n` copies of `c`.
    /// The number as text, as ToString() writes it. A single char counts as a number here.
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
        freeText();
    }
    /// Sets all members to those of a new, empty string. Does NOT free what they held: only for the
    /// start of a constructor.
    void Initialize() {
        buffer = emptyText;
        lockedLength = 0;
        tokenBuffersReady = false;
        tokenWork = tokenRest = tokenSeparator = nullptr;
    }

    // --- Assignment, appending and concatenation. The operand may point into the string. ---

    void operator=(const CString& other) { *this = other.buffer; }
    /// Swaps the texts. If `other` is locked, copies its text instead.
    void operator=(CString&& other) noexcept {
        if (lockedLength == 0 && other.lockedLength == 0)
            std::swap(buffer, other.buffer);
        else
            *this = other.buffer;
    }
    void operator=(const char* text);
    /// The string becomes this one character. Beware: `s = 5` stores the character of code 5.
    void operator=(char c);
    /// The string becomes this text, which must not hold a NUL.
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
    /// The string becomes `n` copies of `c`. Returns its text.
    char* RepeatChar(char c, unsigned n);
    void Empty() {
        if (lockedLength == 0) freeText();
    }

    // --- Comparison, byte by byte. A null text comes before every string and equals none. ---

    // The operands are references, so that `s.AddPath("d") == s` compares the text after the call,
    // whichever operand is evaluated first.
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
    int Compare(CString other) const;        ///< The result of strcmp: negative, 0 or positive.
    int CompareNoCase(CString other) const;  ///< The same, but ASCII letters have no case.
    bool Equals(CString other) const;
    bool EqualsNoCase(CString other) const;

    // --- Element access and size ---

    unsigned GetLength() const;  ///< Counts the characters on each call.
    bool IsEmpty() const { return *buffer == '\0'; }
    char GetAt(unsigned i) const;  ///< NUL if `i` is not below the length.
    char operator[](unsigned i) const { return GetAt(i); }
    char GetLastChar() const;  ///< NUL for the empty string.
    /// Stores `c` and returns true, except past the end and while locked. A NUL cuts the text.
    bool SetAt(unsigned i, char c);

    // --- Numbers ---

    /// The string becomes the number in decimal. A float or double is written as printf's %g writes
    /// it, with six significant digits, but the decimal point is a "." in every locale.
    void ToString(short number) { ToString(int{number}); }
    void ToString(unsigned short number) { ToString(int{number}); }
    void ToString(int number);
    void ToString(unsigned int number);
    void ToString(long number);
    void ToString(unsigned long number);
    void ToString(float number) { ToString(double{number}); }
    void ToString(double number);
    /// The string becomes the first `n` characters of `text`. Frees `text` with delete[], even
    /// while locked. If n < 1, empties the string and frees nothing.
    void Converter(char* text, int n);
    /// The decimal number at the start of the text, which may have white space and a sign before
    /// it. 0 if there is none. A number out of the range of a 32-bit int gives the nearest limit.
    int ToInt() const;
    /// Writes the text. A template, so that a program that does not use it links no streams.
    template <class Traits>
    friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& stream,
                                                        const CString& string) {
        return stream << string.GetBuffer();
    }

    // --- Raw buffer ---

    char* GetBuffer() { return buffer; }
    const char* GetBuffer() const { return buffer; }
    /// Locks the string and returns a buffer of n + 1 bytes, which holds the first n characters of
    /// the text. The caller may write up to n characters and a NUL. Frees the old buffer, even that
    /// of a locked string. GetBuffer(0) does not lock: it unlocks a locked string and empties an
    /// unlocked one.
    char* GetBuffer(unsigned n);
    /// Unlocks the string. Its text is the content of the buffer up to the first NUL. Ends the
    /// token walk. Always true.
    bool ReleaseBuffer();
    char* Get() { return GetBuffer(); }
    const char* Get() const { return GetBuffer(); }
    char* Get(unsigned n) { return GetBuffer(n); }
    char* c_str() { return GetBuffer(); }
    const char* c_str() const { return GetBuffer(); }
    char* c_str(unsigned n) { return GetBuffer(n); }
    bool Release() { return ReleaseBuffer(); }
    bool rc_str() { return ReleaseBuffer(); }
    /// A new array of n + 1 bytes that begins with a NUL. The caller frees it with delete[].
    static char* CreateCharString(unsigned n);
    char* GetCharString() const;  ///< A new copy of the text. The caller frees it with delete[].
    void BufferInit();            ///< Creates the strings of the token walk if there are none.
    /// Frees the strings of the token walk, and so ends the walk.
    void BufferRelease() {
        if (tokenBuffersReady) deleteTokenBuffers();
    }
    /// Prints the fatal report that memory has run out and exits with status 1.
    [[noreturn]] static void OutOfMemory();
    /// Returns the result of an allocation, which is fatal if it is null. For every allocation
    /// whose failure has no other answer: `item = CString::Required(new (std::nothrow) Item)`.
    template <class Memory>
    static Memory* Required(Memory* memory) {
        if (!memory) OutOfMemory();
        return memory;
    }

    // --- Search ---

    int Find(CString sub) const;  ///< Position of the first occurrence. "" is never found.
    /// Position of occurrence `n`, counted from 1. Occurrences may overlap. n = 0 means the last.
    int Find(CString sub, unsigned n) const;
    int ReverseFind(CString sub) const;  ///< Position of the last occurrence.
    bool IsSubstring(CString sub) const;
    bool StartsWith(CString s) const;  ///< False for "".
    bool EndsWith(CString s) const;    ///< False for "".
    /// How often `sub` occurs, counted from the left without overlaps. 0 for "".
    unsigned GetNumberOccurances(CString sub) const;

    // --- Trimming removes the characters at an end that are in `set`. Returns the text; "" if the
    // string is locked, and then removes nothing. ---

    const char* TrimLeft(CString set);
    const char* TrimRight(CString set);
    const char* Trim(CString set);  ///< Trims both ends.
    const char* Trim();             ///< Trims kBlanks from both ends.

    // --- Substrings ---

    CString Left(int n) const;  ///< The first `n` characters, or the whole text if `n` is negative.
    /// Up to `count` characters from position `start`; count = 0 means all that follow. A negative
    /// start counts as 0.
    CString Mid(int start, unsigned count) const;
    CString Right(unsigned n) const;  ///< The last `n` characters.
    /// The same as Mid(). A start above INT_MAX counts as 0.
    CString Substring(unsigned start, unsigned count) const;
    bool RemoveSubstring(CString sub);  ///< Removes the first occurrence. False if there is none.
    void operator-=(const CString& sub) { RemoveSubstring(sub); }
    void operator-=(const char* sub) { RemoveSubstring(sub); }

    // --- Tokens are the parts of the text between separators. A separator is a whole string. ---

    /// Starts a token walk over a copy of the text and returns the first token, untrimmed. A string
    /// has one walk at a time. The walk lasts until StrTok(sep), StrBreak(sep) or ParseTokens()
    /// starts the next one, ReleaseBuffer() is called, or the string is destroyed. A copy of the
    /// string does not have the walk.
    CString StrTok(CString sep);
    CString StrTok();    ///< The next token. Returns "" for an empty token and after the last one.
    CString StrTokIt();  ///< The step that both forms of StrTok() take.
    /// Starts a walk and returns the text up to the first separator, with the separator; the whole
    /// text if there is none. Beware: StrTok() after it uses the separator of the walk before.
    CString StrBreak(CString sep);
    CString StrBreak();  ///< The text that the walk has not reached yet. Takes no step.
    /// The number of tokens in the blank-trimmed text. 0 if the text or the separator is empty.
    unsigned GetNumberTokens(CString sep) const;
    /// Token `n`, counted from 0, of the blank-trimmed text. The token is not trimmed. "" if there
    /// are not so many. Beware: counts separators that overlap, such as ";;" in ";;;", twice.
    CString GetToken(unsigned n, CString sep) const;
    /// Position in the blank-trimmed text of the first token equal to `token`, or -1. An empty
    /// separator gives 0.
    int FindToken(CString token, CString sep) const;
    bool IsToken(CString token, CString sep) const { return FindToken(token, sep) >= 0; }
    /// Appends the token, with a separator before it unless the string is empty.
    void AddToken(CString token, CString sep);
    /// Inserts `token` before the token `before`, which is found without regard to case. If
    /// `before` is empty, inserts at the start; if it is not found, appends. An empty token changes
    /// nothing. Beware: positions count in the trimmed text, so leading blanks shift the place. And
    /// a separator with lower-case letters is not found.
    void InsertToken(CString token, CString before, CString sep);
    /// Sorts the tokens in byte order and drops empty ones. If all are empty, the text stays.
    /// Beware: tokens that differ only in case may stay in the wrong order, since InsertToken()
    /// does not tell them apart. So may tokens divided by a separator with lower-case letters.
    void SortTokens(CString sep);
    /// Stores up to `max` tokens, blank-trimmed, in `out` and returns how many it stored.
    /// Leaves the other elements unchanged. If it stored a token, it starts a token walk: StrTok()
    /// then returns the token after the last one stored. Beware: counts the tokens of the trimmed
    /// text, but walks the untrimmed one. They differ if the blanks at an end hold a separator.
    unsigned ParseTokens(CString* out, unsigned max, CString sep);

    // --- Case of ASCII letters. While locked, the forms that change the string return "". ---

    CString ToUpper();            ///< Changes the string and returns a copy.
    CString ToUpper(unsigned i);  ///< Changes only the character at `i`. Past the end, returns "".
    CString ToLower();
    CString ToLower(unsigned i);
    CString Upper() const;  ///< An upper-cased copy.
    CString Lower() const;  ///< A lower-cased copy.

    // --- Paths as texts, without a look at the file system. Only '/' separates directories. ---

    /// The text before the last '/'. If there is no '/', the text before the first ':'. "" if there
    /// is neither.
    CString GetPath() const;
    CString GetPath(CString path);  ///< The string becomes path.GetPath(). Returns a copy.
    /// The text after the last '/'. If there is no '/', the text after the first ':'. The whole
    /// text if there is neither.
    CString GetName() const;
    /// Splits the blank-trimmed text into four parts, for example "C:", "/dir/sub/", "file",
    /// ".txt". An extension has at most three characters after its '.'. Always true.
    bool SplitPath(CString& drive, CString& directory, CString& name, CString& extension) const;
    CString GetDrive() const;
    CString GetDirectory() const;
    CString GetFileName() const;  ///< Without the extension.
    CString GetExtension() const;
    /// The string becomes directory and name, joined by AddPath(), and then the extension. Ignores
    /// the drive. Returns the text.
    const char* MakePath(CString drive, CString directory, CString name, CString extension);
    /// Appends `part`. If neither is empty, adds a '/' between them if both lack it, and drops one
    /// if both have it. Returns the text.
    const char* AddPath(CString part);
    CString GetAbsolutePath() const;  ///< A copy of the text, unchanged.

    /// Frees the array *dest with delete[] and replaces it by a new copy of `src`, which the caller
    /// owns. Always true. Does not use this string's text.
    bool CopyString(char** dest, const char* src);
    bool CopyString(char** dest, CString src);

private:
    static int order(const char* a, const char* b);
    static CString joined(const char* left, const char* right);
    static CString copyOf(std::string_view text);
    template <class Number, class... Form>
    void assignNumber(Number number, Form... form);
    void store(std::size_t kept, std::string_view tail);
    void adopt(char* text);
    template <class IsInSet>
    const char* trim(IsInSet isInSet, bool trimsLeft, bool trimsRight);
    void divide(const CString& sep, bool keepsSeparator);
    CString pathPart(int which) const;
    CString convert(char (*fold)(char));
    CString convert(unsigned i, char (*fold)(char));

    void freeText();  // the string is then empty
    // Only for a locked string. The caller may have filled the buffer, without a NUL.
    void unlock() {
        buffer[lockedLength] = '\0';
        lockedLength = 0;
    }
    void deleteTokenBuffers();

    static char emptyText[1];  // the buffer of every string that holds no memory

    char* buffer = emptyText;   // never null
    unsigned lockedLength = 0;  // while locked, the n of GetBuffer(n); otherwise 0
    bool tokenBuffersReady = false;
    CString* tokenWork = nullptr;  // the strings of a token walk, or three nulls
    CString* tokenRest = nullptr;
    CString* tokenSeparator = nullptr;
};
