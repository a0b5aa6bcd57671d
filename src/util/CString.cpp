#include "util/CString.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "util/ErrorHandler.h"
#include "util/Pool.h"

namespace {
// The scratch string of the operations that return a new string.
CString g_sBuffer;

// The size of the buffer for a text of this length. A short text gets exactly what it needs, since
// documents hold many. The size of a long one is rounded up to five significant bits, by at most a
// sixteenth, so that the name lists of a large machine are seldom moved while they grow. The size
// depends on the length alone, so no member has to keep it.
std::size_t roomFor(std::size_t length) {
    unsigned shift = 0;
    while ((length >> shift) >= 32) ++shift;
    return ((length >> shift) + 1) << shift;
}

// The byte before each text holds the size of its block, for CPool::Free. All sizes above kLargest
// are stored as kLargest + 1.
using SizeByte = unsigned char;
static_assert(CPool::kLargest < std::numeric_limits<SizeByte>::max());

char* allocate(std::size_t length) {
    const std::size_t size = sizeof(SizeByte) + roomFor(length);
    auto* block = static_cast<SizeByte*>(
        CString::Required(length <= INT_MAX ? CPool::Allocate(size) : nullptr));
    *block = static_cast<SizeByte>(std::min(size, CPool::kLargest + 1));
    return reinterpret_cast<char*>(block + 1);
}

void deallocate(char* text) {
    SizeByte* block = reinterpret_cast<SizeByte*>(text) - 1;
    CPool::Free(block, *block);
}

// The first occurrence of `sub`, or null. An empty text never occurs.
const char* findFirst(const char* text, const char* sub) {
    return *sub ? std::strstr(text, sub) : nullptr;
}

std::size_t lengthOf(const char* begin, const char* end) {
    return static_cast<std::size_t>(end - begin);
}

// The position, but at most the length. A negative position gives `ifNegative`.
std::size_t clamped(int position, std::size_t length, std::size_t ifNegative) {
    return position < 0 ? ifNegative
                        : std::min<std::size_t>(static_cast<unsigned>(position), length);
}

// Removes the first token and its separator from `rest`. Returns whether there was a separator.
bool takeToken(const char*& rest, const CString& sep, std::string_view& token) {
    const char* end = findFirst(rest, sep.c_str());
    token = {rest, end ? lengthOf(rest, end) : std::strlen(rest)};
    rest = end ? end + sep.GetLength() : rest + token.size();
    return end;
}

struct AnyOf {
    const char* set;
    bool operator()(char c) const { return std::strchr(set, c); }
};

// The text without the characters of a set at its left end, its right end, or both.
template <class IsInSet>
std::string_view trimmed(std::string_view text, IsInSet isInSet, bool trimsLeft, bool trimsRight) {
    while (trimsLeft && !text.empty() && isInSet(text.front())) text.remove_prefix(1);
    while (trimsRight && !text.empty() && isInSet(text.back())) text.remove_suffix(1);
    return text;
}

// The end of the directory in a path: the last "/" or, if there is none, the first ":".
const char* directoryEnd(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash ? slash : std::strchr(path, ':');
}

// Only ASCII letters have a case. The functions of the C library follow the locale.
char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char raised(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
}  // namespace

std::string_view CString::Trimmed(std::string_view text) {
    return trimmed(text, IsBlank, true, true);
}

// ---------------------------------------------------------------- Storage

char CString::emptyText[1] = "";

void CString::OutOfMemory() {
    // All callers report the same place, the one that users know from this message.
    CErrorHandler().ErrorHandler(CErrorHandler::ecAbort, CErrorHandler::ecMemory,
                                 "CString::CreateCharString");
    std::abort();  // never reached, since ecAbort ends the process
}

void CString::freeText() {
    if (buffer != emptyText) deallocate(std::exchange(buffer, emptyText));
}

// Replaces the text by its own first `kept` characters and `tail`, which may point into the buffer.
// The buffer has at least the room that roomFor() gives for the present text. If that is enough for
// the result, the buffer stays.
void CString::store(std::size_t kept, std::string_view tail) {
    const std::size_t length = kept + tail.size();
    if (length == 0) return freeText();
    // To get the present length, only the characters after the first `kept` ones are counted.
    if (buffer != emptyText && length < roomFor(kept + std::strlen(buffer + kept))) {
        std::memmove(buffer + kept, tail.data(), tail.size());
        buffer[length] = '\0';
        return;
    }
    char* text = allocate(length);
    if (kept != 0) std::memcpy(text, buffer, kept);
    std::memcpy(text + kept, tail.data(), tail.size());
    text[length] = '\0';
    adopt(text);  // only here, since tail may point into the old buffer
}

void CString::adopt(char* text) {
    freeText();
    buffer = text;
}

CString CString::copyOf(std::string_view text) {
    g_sBuffer.Assign(text);
    return g_sBuffer;
}

// ---------------------------------------------------------------- Construction and assignment

CString::CString(const char* text) : CString() { *this = text; }

CString::CString(char c, unsigned n) : CString() { RepeatChar(c, n); }

void CString::operator=(const char* text) { Assign(text ? text : ""); }

void CString::operator=(char c) { RepeatChar(c, 1); }

void CString::operator+=(const char* text) {
    if (lockedLength == 0 && text) store(std::strlen(buffer), text);
}

void CString::operator+=(char c) {
    const char text[] = {c, '\0'};
    *this += text;
}

CString CString::joined(const char* left, const char* right) {
    g_sBuffer = left;
    g_sBuffer += right;
    return g_sBuffer;
}

CString operator+(const CString& left, const CString& right) { return left + right.buffer; }

CString operator+(const CString& left, const char* right) {
    return CString::joined(left.buffer, right);
}

CString operator+(const char* left, const CString& right) {
    return CString::joined(left, right.buffer);
}

CString operator+(const CString& left, char right) {
    const char text[] = {right, '\0'};
    return left + text;
}

CString operator+(char left, const CString& right) {
    const char text[] = {left, '\0'};
    return text + right;
}

char* CString::RepeatChar(char c, unsigned n) {
    if (lockedLength != 0) return buffer;
    if (c == '\0') n = 0;
    char* text = allocate(n);
    std::memset(text, c, n);
    text[n] = '\0';
    adopt(text);
    return buffer;
}

// ---------------------------------------------------------------- Comparison and elements

int CString::order(const char* a, const char* b) {
    if (!a || !b) return (a ? 1 : 0) - (b ? 1 : 0);
    return std::strcmp(a, b);
}

int CString::Compare(CString other) const { return std::strcmp(buffer, other.buffer); }

int CString::CompareNoCase(CString other) const {
    const char *a = buffer, *b = other.buffer;
    for (; *a && lowered(*a) == lowered(*b); ++a) ++b;
    return static_cast<unsigned char>(lowered(*a)) - static_cast<unsigned char>(lowered(*b));
}

bool CString::Equals(CString other) const { return Compare(std::move(other)) == 0; }

bool CString::EqualsNoCase(CString other) const { return CompareNoCase(std::move(other)) == 0; }

unsigned CString::GetLength() const { return static_cast<unsigned>(std::strlen(buffer)); }

char CString::GetAt(unsigned i) const { return i < GetLength() ? buffer[i] : '\0'; }

char CString::GetLastChar() const { return IsEmpty() ? '\0' : buffer[GetLength() - 1]; }

bool CString::SetAt(unsigned i, char c) {
    if (lockedLength != 0 || i >= GetLength()) return false;
    buffer[i] = c;
    return true;
}

// ---------------------------------------------------------------- Numbers

// By to_chars, since printf writes the decimal point of the locale.
template <class Number, class... Form>
void CString::assignNumber(Number number, Form... form) {
    char text[32];  // enough for 20 digits and a sign, and for -1.23457e+308
    const char* end = std::to_chars(text, text + sizeof text, number, form...).ptr;
    Assign({text, lengthOf(text, end)});
}

void CString::ToString(int number) { assignNumber(number); }
void CString::ToString(unsigned int number) { assignNumber(number); }
void CString::ToString(long number) { assignNumber(number); }
void CString::ToString(unsigned long number) { assignNumber(number); }
void CString::ToString(double number) { assignNumber(number, std::chars_format::general, 6); }

void CString::Converter(char* text, int n) {
    if (n < 1 || !text) return Empty();
    Assign({text, strnlen(text, static_cast<std::size_t>(n))});
    delete[] text;
}

int CString::ToInt() const {
    if (lockedLength != 0) return 0;
    // A long may be wider than an int. Beyond the limits of a long, strtol clamps by itself.
    const long number = std::strtol(buffer, nullptr, 10);
    return static_cast<int>(std::clamp<long>(number, INT_MIN, INT_MAX));
}

// ---------------------------------------------------------------- Raw buffer

char* CString::GetBuffer(unsigned n) {
    const bool isLocked = lockedLength != 0;
    if (isLocked) unlock();
    if (n == 0) {
        if (!isLocked) Empty();
        return buffer;
    }
    char* text = allocate(n);
    const std::size_t kept = strnlen(buffer, n);
    std::memcpy(text, buffer, kept);
    text[kept] = '\0';
    adopt(text);
    lockedLength = n;
    return buffer;
}

bool CString::ReleaseBuffer() {
    if (lockedLength != 0) unlock();
    BufferRelease();
    CString fitting = buffer;  // a copy in a buffer of the right size; frees the large one
    std::swap(buffer, fitting.buffer);
    return true;
}

char* CString::CreateCharString(unsigned n) {
    char* text = Required(n <= INT_MAX ? new (std::nothrow) char[std::size_t{n} + 1] : nullptr);
    *text = '\0';
    return text;
}

char* CString::GetCharString() const {
    const unsigned length = GetLength();
    char* text = CreateCharString(length);
    std::memcpy(text, buffer, length + 1);
    return text;
}

void CString::BufferInit() {
    if (tokenBuffersReady) return;
    tokenBuffersReady = true;
    for (CString** string : {&tokenWork, &tokenRest, &tokenSeparator})
        *string = Required(new (std::nothrow) CString);
}

void CString::deleteTokenBuffers() {
    for (CString** string : {&tokenWork, &tokenRest, &tokenSeparator})
        delete std::exchange(*string, nullptr);
    tokenBuffersReady = false;
}

// ---------------------------------------------------------------- Search

int CString::Find(CString sub) const { return Find(std::move(sub), 1); }

int CString::Find(CString sub, unsigned n) const {
    const char* last = nullptr;
    unsigned found = 0;
    for (const char* p = findFirst(buffer, sub.buffer); p; p = findFirst(p + 1, sub.buffer)) {
        last = p;
        if (++found == n) break;
    }
    return last && (n == 0 || found == n) ? static_cast<int>(last - buffer) : -1;
}

int CString::ReverseFind(CString sub) const { return Find(std::move(sub), 0); }

bool CString::IsSubstring(CString sub) const { return Find(std::move(sub)) >= 0; }

bool CString::StartsWith(CString s) const {
    return !s.IsEmpty() && std::strncmp(buffer, s.buffer, s.GetLength()) == 0;
}

bool CString::EndsWith(CString s) const {
    const unsigned length = GetLength(), wanted = s.GetLength();
    return wanted != 0 && wanted <= length &&
           std::strcmp(buffer + (length - wanted), s.buffer) == 0;
}

unsigned CString::GetNumberOccurances(CString sub) const {
    const unsigned step = sub.GetLength();
    unsigned found = 0;
    for (const char* p = buffer; (p = findFirst(p, sub.buffer)); p += step) ++found;
    return found;
}

// ---------------------------------------------------------------- Trimming and substrings

template <class IsInSet>
const char* CString::trim(IsInSet isInSet, bool trimsLeft, bool trimsRight) {
    if (lockedLength != 0) return "";
    store(0, trimmed(buffer, isInSet, trimsLeft, trimsRight));
    return buffer;
}

const char* CString::TrimLeft(CString set) { return trim(AnyOf{set.buffer}, true, false); }
const char* CString::TrimRight(CString set) { return trim(AnyOf{set.buffer}, false, true); }
const char* CString::Trim(CString set) { return trim(AnyOf{set.buffer}, true, true); }
const char* CString::Trim() { return trim(IsBlank, true, true); }

CString CString::Left(int n) const {
    const std::string_view text = buffer;
    return copyOf(text.substr(0, clamped(n, text.size(), text.size())));
}

CString CString::Mid(int start, unsigned count) const {
    const std::string_view text = buffer;
    const std::size_t all = std::string_view::npos;
    return copyOf(text.substr(clamped(start, text.size(), 0), count == 0 ? all : count));
}

CString CString::Right(unsigned n) const {
    const std::string_view text = buffer;
    return copyOf(text.substr(text.size() - std::min<std::size_t>(n, text.size())));
}

CString CString::Substring(unsigned start, unsigned count) const {
    return Mid(static_cast<int>(start), count);
}

bool CString::RemoveSubstring(CString sub) {
    const char* found = lockedLength == 0 ? findFirst(buffer, sub.buffer) : nullptr;
    if (!found) return false;
    const char* rest = found + sub.GetLength();
    store(lengthOf(buffer, found), rest);
    return true;
}

// ---------------------------------------------------------------- Tokens

// Splits the current token at its first separator. Without a separator, changes nothing.
void CString::divide(const CString& sep, bool keepsSeparator) {
    const char* rest = tokenWork->buffer;
    std::string_view head;
    if (!takeToken(rest, sep, head)) return;
    tokenRest->Assign(rest);  // first, since rest and head point into tokenWork
    tokenWork->Assign({head.data(), keepsSeparator ? lengthOf(head.data(), rest) : head.size()});
}

CString CString::StrTok(CString sep) {
    BufferInit();
    *tokenWork = *this;
    tokenRest->Empty();
    *tokenSeparator = sep;
    return StrTokIt();
}

CString CString::StrTok() {
    BufferInit();
    *tokenWork = std::move(*tokenRest);
    tokenRest->Empty();
    return StrTokIt();
}

CString CString::StrTokIt() {
    BufferInit();
    divide(*tokenSeparator, false);
    return *tokenWork;
}

CString CString::StrBreak(CString sep) {
    BufferInit();
    *tokenWork = *this;
    tokenRest->Empty();
    divide(sep, true);
    return *tokenWork;
}

CString CString::StrBreak() {
    BufferInit();
    return *tokenRest;
}

unsigned CString::GetNumberTokens(CString sep) const {
    CString text = *this;
    text.Trim();
    return sep.IsEmpty() || text.IsEmpty() ? 0 : 1 + text.GetNumberOccurances(std::move(sep));
}

CString CString::GetToken(unsigned n, CString sep) const {
    if (sep.IsEmpty()) return "";
    CString rest = *this;
    rest.Trim();
    if (n != 0) {
        const int before = rest.Find(sep, n);
        if (before < 0) return "";
        rest = rest.Mid(before + static_cast<int>(sep.GetLength()), 0);
    }
    return rest.Left(rest.Find(sep));  // Find gives -1 for the last token, and Left then all of it
}

int CString::FindToken(CString token, CString sep) const {
    if (sep.IsEmpty()) return 0;
    CString text = *this;
    text.Trim();
    if (text.IsEmpty()) return -1;
    const char* rest = text.buffer;
    std::string_view found;
    bool hasNext;
    do {
        hasNext = takeToken(rest, sep, found);
        if (found == token.buffer) return static_cast<int>(found.data() - text.buffer);
    } while (hasNext);
    return -1;
}

void CString::AddToken(CString token, CString sep) {
    if (!IsEmpty()) *this += sep;
    *this += token;
}

void CString::InsertToken(CString token, CString before, CString sep) {
    if (token.IsEmpty()) return;
    const int position = before.IsEmpty() ? 0 : Upper().FindToken(before.Upper(), sep);
    if (position < 0) return AddToken(std::move(token), std::move(sep));

    CString head = Left(position);
    const CString tail = Mid(position, 0);
    if (!head.IsEmpty() && !head.EndsWith(sep)) head += sep;
    head += token;
    if (!tail.IsEmpty()) head.AddToken(tail, sep);
    *this = head;
}

void CString::SortTokens(CString sep) {
    CString sorted;
    const unsigned total = GetNumberTokens(sep);
    for (unsigned i = 0; i < total; ++i) {
        const CString token = GetToken(i, sep);
        if (token.IsEmpty()) continue;
        unsigned place = 0;
        const unsigned placed = sorted.GetNumberTokens(sep);
        while (place < placed && sorted.GetToken(place, sep) <= token) ++place;
        if (place < placed)
            sorted.InsertToken(token, sorted.GetToken(place, sep), sep);
        else
            sorted.AddToken(token, sep);
    }
    if (!sorted.IsEmpty()) *this = sorted;
}

unsigned CString::ParseTokens(CString* out, unsigned max, CString sep) {
    const unsigned total = std::min(GetNumberTokens(sep), max);
    if (total == 0) return 0;
    // The same walk as that of StrTok, but it does not copy the rest of the text for each token.
    BufferInit();
    *tokenWork = *this;
    const char* rest = tokenWork->buffer;
    std::string_view token;
    for (unsigned i = 0; i < total; ++i) {
        takeToken(rest, sep, token);
        out[i].Assign(Trimmed(token));
    }
    tokenRest->Assign(rest);  // first, since rest and token point into tokenWork
    tokenWork->Assign(token);
    *tokenSeparator = std::move(sep);
    return total;
}

// ---------------------------------------------------------------- Case

CString CString::convert(char (*fold)(char)) {
    if (lockedLength != 0) return "";
    for (char* p = buffer; *p; ++p) *p = fold(*p);
    return *this;
}

CString CString::convert(unsigned i, char (*fold)(char)) {
    return SetAt(i, fold(GetAt(i))) ? *this : CString();
}

CString CString::ToUpper() { return convert(raised); }
CString CString::ToUpper(unsigned i) { return convert(i, raised); }
CString CString::ToLower() { return convert(lowered); }
CString CString::ToLower(unsigned i) { return convert(i, lowered); }
CString CString::Upper() const { return CString(*this).ToUpper(); }
CString CString::Lower() const { return CString(*this).ToLower(); }

// ---------------------------------------------------------------- Paths

CString CString::GetPath() const {
    const char* end = directoryEnd(buffer);
    return copyOf({buffer, end ? lengthOf(buffer, end) : 0});
}

CString CString::GetPath(CString path) {
    *this = path.GetPath();
    return *this;
}

CString CString::GetName() const {
    const char* end = directoryEnd(buffer);
    return end ? end + 1 : buffer;
}

bool CString::SplitPath(CString& drive, CString& directory, CString& name,
                        CString& extension) const {
    CString work = *this;  // a copy, since a part may be this string itself
    work.Trim();
    const auto takeThrough = [&work](CString& part, int last) {
        part = work.Left(last + 1);  // empty if the mark was not found (-1)
        work = work.Mid(last + 1, 0);
    };
    takeThrough(drive, work.Find(":"));
    takeThrough(directory, work.ReverseFind("/"));
    const int dot = work.ReverseFind("."), length = static_cast<int>(work.GetLength());
    const int nameLength = dot >= 0 && dot >= length - 4 ? dot : length;
    name = work.Left(nameLength);
    extension = work.Mid(nameLength, 0);
    return true;
}

CString CString::pathPart(int which) const {
    CString parts[4];
    SplitPath(parts[0], parts[1], parts[2], parts[3]);
    return parts[which];
}

CString CString::GetDrive() const { return pathPart(0); }
CString CString::GetDirectory() const { return pathPart(1); }
CString CString::GetFileName() const { return pathPart(2); }
CString CString::GetExtension() const { return pathPart(3); }

const char* CString::MakePath(CString /*drive*/, CString directory, CString name,
                              CString extension) {
    directory.AddPath(std::move(name));
    directory += extension;
    *this = directory;
    return buffer;
}

const char* CString::AddPath(CString part) {
    const bool endsInSlash = GetLastChar() == '/', beginsWithSlash = part[0] == '/';
    if (endsInSlash && beginsWithSlash)
        *this += part.buffer + 1;
    else if (endsInSlash || beginsWithSlash || IsEmpty() || part.IsEmpty())
        *this += part;
    else
        *this += "/" + part;
    return buffer;
}

CString CString::GetAbsolutePath() const { return *this; }

bool CString::CopyString(char** dest, const char* src) { return CopyString(dest, CString(src)); }

bool CString::CopyString(char** dest, CString src) {
    char* text = src.GetCharString();
    delete[] std::exchange(*dest, text);
    return true;
}
