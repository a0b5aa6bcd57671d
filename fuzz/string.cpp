// Any texts as strings, with "|" between them in the input. Each takes a turn, with the next one as
// the text that is searched for, trimmed off or joined to it, or that divides it.

#include "fuzz.h"

constexpr unsigned kLongest = 48;  // a turn tries each position
int lengthOf(const CString& text) { return static_cast<int>(text.GetLength()); }

void partsMakeTheWhole(const CString& text, const CString& other) {
    for (unsigned i = 0; i <= text.GetLength(); ++i) {
        // GetBuffer(i) keeps the first i characters.
        const CString head = CString(text).GetBuffer(i), tail = text.Substring(i, 0);
        SAME(head + tail, text);
        SAME(text.Left(lengthOf(head)) + text.Right(tail.GetLength()), text);
        SAME(text.Mid(lengthOf(head), 2), tail.Left(2));
        CHECK(text[i] == *tail.c_str());
        CString s = text;
        s += s.c_str() + i;  // an operand may lie in the string
        SAME(s, text + tail);
        s = s.c_str() + i;
        SAME(s, tail + tail);
    }
    SAME(text.Mid(-1, 2), text.Left(2));
    CHECK(std::string(text.c_str()) + other.c_str() == (text + other).c_str());
}

void aCharacterChangesInItsPlace(const CString& text) {
    for (unsigned i = 0; i <= text.GetLength(); ++i) {
        const CString head = CString(text).GetBuffer(i), tail = text.Substring(i, 0);
        const CString one = tail.Left(1), rest = tail.Mid(1, 0);
        CString set = text, upper = text, lower = text;
        CHECK(set.SetAt(i, 'x') == !one.IsEmpty());
        SAME(set, one.IsEmpty() ? text : head + 'x' + rest);
        SAME(upper.ToUpper(i), one.IsEmpty() ? "" : head + one.Upper() + rest);
        SAME(lower.ToLower(i), one.IsEmpty() ? "" : head + one.Lower() + rest);
    }
}

void aLockedStringKeepsStill(const CString& text, const CString& other) {
    CString s = text;
    s.StrTok(other);
    const char* const buffer = s.GetBuffer(text.GetLength() + 1);
    s = other;
    s = text + other;
    s += other;
    s -= text;
    s.Empty();
    s.RepeatChar('x', 2);
    s.Converter(other.GetCharString(), 1);
    s.SetAt(0, 'x');
    SAME(s.Trim(text), "");
    SAME(s.TrimLeft(text), "");
    SAME(s.ToUpper(), "");
    CHECK(s.GetBuffer() == buffer);
    CHECK(s.ToInt() == 0);
    SAME(CString(std::move(s)), text);
    std::memset(s.GetBuffer(), 'x', text.GetLength() + 1);  // all that was promised, but no NUL
    s.ReleaseBuffer();
    SAME(s.StrTok(), "");
    SAME(s, CString('x', text.GetLength() + 1));
}

void searchesAgree(const CString& text, const CString& sub) {
    unsigned found = 0, apart = 0;
    for (int at = 0; at < lengthOf(text); ++at)
        if (text.Mid(at, 0).StartsWith(sub)) CHECK(text.Find(sub, ++found) == at);
    const int first = text.Find(sub), last = text.ReverseFind(sub);
    CHECK(first == text.Find(sub, 1));
    CHECK(last == (found ? text.Find(sub, found) : -1));
    CHECK(text.IsSubstring(sub) == (found != 0));
    CHECK(text.Find(sub, found + 1) < 0);
    CHECK(text.EndsWith(sub) == (found && last == lengthOf(text) - lengthOf(sub)));
    CString rest = text;
    CHECK(rest.RemoveSubstring(sub) == (first >= 0));
    if (found) SAME(rest.Left(first) + sub + rest.Mid(first, 0), text);
    for (rest = text; rest.IsSubstring(sub); ++apart)
        rest = rest.Mid(rest.Find(sub) + lengthOf(sub), 0);
    CHECK(text.GetNumberOccurances(sub) == apart);
}

void trimsTakeOnlyTheEnds(const CString& text, const CString& set) {
    CString left = text, right = text, both = text;
    CString head = text.Left(lengthOf(text) - lengthOf(left.TrimLeft(set)));
    CString tail = text.Mid(lengthOf(right.TrimRight(set)), 0);
    if (*both.Trim(set)) SAME(head + both + tail, text);
    for (CString* removed : {&head, &tail}) SAME(removed->Trim(set), "");
    for (const CString& end : {both.Left(1), both.Right(1)}) CHECK(!set.IsSubstring(end));
}

void tokensAreTheSameInEachWay(const CString& list, const CString& sep) {
    CString parsed[kLongest + 2], joined, walked = list, broken = list;
    const unsigned total = walked.ParseTokens(parsed, kLongest + 2, sep);
    CHECK(total == list.GetNumberTokens(sep));
    for (unsigned i = 0; i < total; ++i) {
        CString token = i == 0 ? walked.StrTok(sep) : walked.StrTok();
        walked = "changed";  // the walk goes on over the old text
        SAME(token, list.GetToken(i, sep));
        const int found = list.FindToken(token, sep);
        CHECK(found >= 0);
        CHECK(found <= lengthOf(joined));
        CHECK(token.IsEmpty() || list.Mid(found, 0).StartsWith(token));
        joined += token + sep;
        SAME(parsed[i], token.Trim());
    }
    SAME(joined, list + sep);
    SAME(list.GetToken(total, sep), "");
    for (int i = 0; i < 2; ++i) SAME(walked.StrTok(), "");
    const CString start = broken.StrBreak(sep);
    SAME(start + broken.StrBreak(), list);
    SAME(CString(broken).StrBreak(), "");  // a copy does not have the walk
    CString untouched = list;
    CHECK(untouched.ParseTokens(parsed, 1, sep) == 1);
    for (unsigned i = 1; i < 4; ++i) SAME(untouched.StrTok(), list.GetToken(i, sep));
}

// For a list in capitals. Tries no separator with letters, since InsertToken() finds no small ones,
// and no blanks, since they are trimmed off. \x01 is the token that is inserted.
void tokensAreInsertedAndSorted(const CString& list, const CString& sep) {
    if (std::strpbrk((list + sep).c_str(), " \t\n\x01") || sep.Upper() != sep.Lower()) return;
    CString sorted = list;
    sorted.SortTokens(sep);
    for (unsigned i = 0; i < list.GetNumberTokens(sep); ++i) {
        CString token = list.GetToken(i, sep), inserted = list;
        if (token.IsEmpty()) continue;
        inserted.InsertToken("\x01", token.Lower(), sep);
        CHECK(inserted.FindToken("\x01", sep) == list.FindToken(token, sep));
        inserted -= "\x01" + sep;
        SAME(inserted, list);
        CHECK(sorted.IsToken(token, sep));
    }
    for (unsigned i = 1; i < sorted.GetNumberTokens(sep); ++i)
        CHECK(sorted.GetToken(i - 1, sep) <= sorted.GetToken(i, sep));
}

template <class Left, class Right>
void operatorsAgreeWith(int order, const Left& a, const Right& b) {
    CHECK((a == b) == (order == 0));
    CHECK((a != b) == (order != 0));
    CHECK((a < b) == (order < 0));
    CHECK((a <= b) == (order <= 0));
    CHECK((a > b) == (order > 0));
    CHECK((a >= b) == (order >= 0));
}

void stringsAreOrderedByBytesAfterNull(const CString& a, const CString& b) {
    const int order = std::strcmp(a.c_str(), b.c_str());
    const char *const left = a.c_str(), *const none = nullptr;
    operatorsAgreeWith(order, a, b);
    operatorsAgreeWith(order, left, b);
    operatorsAgreeWith(-1, none, a);
    operatorsAgreeWith(1, a, none);
    CHECK((a.Compare(b) < 0) == (order < 0));
    CHECK(a.Equals(b) == (order == 0));
    CHECK(a.EqualsNoCase(b) == (a.Lower() == b.Lower()));
}

void pathsAreSplitAndJoined(const CString& path, const CString& part) {
    CString drive, directory, name, extension, made, whole = path, head = path, tail = part;
    path.SplitPath(drive, directory, name, extension);
    made.MakePath(drive, directory, name, extension);
    SAME(drive + made, whole.Trim());
    CHECK(drive.Find(":") == lengthOf(drive) - 1);
    CHECK(!(name + extension).IsSubstring("/"));
    CHECK(extension.IsEmpty() ? !name.Right(4).IsSubstring(".") : extension.ReverseFind(".") == 0);
    SAME(CString(part).GetPath(path), path.GetPath());
    SAME(path.GetAbsolutePath(), path);
    if (path.IsSubstring("/")) SAME(path.GetPath() + "/" + path.GetName(), path);
    if (!*head.TrimRight("/") || !*tail.TrimLeft("/")) return;
    SAME((head + "/").AddPath("/" + tail), head + "/" + tail);
    SAME(CString(head).AddPath(tail), head + "/" + tail);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const Strings texts = strings(parts({data, data + size}, "|", 2));
    for (std::size_t i = 1; i < texts.size() && i < 8; ++i) {
        const CString text = texts[i - 1].Left(kLongest), other = texts[i].Left(kLongest);
        partsMakeTheWhole(text, other);
        aCharacterChangesInItsPlace(text);
        aLockedStringKeepsStill(text, other);
        searchesAgree(text, other);
        searchesAgree(text + text + text + other, text + text);  // hits that overlap
        trimsTakeOnlyTheEnds(text, other);
        stringsAreOrderedByBytesAfterNull(text, other);
        pathsAreSplitAndJoined(text, other);
        const CString list = CString(text).Trim();
        // A separator that can overlap itself divides a text in more than one way.
        if (list.IsEmpty() || other.IsEmpty() || other.Find(other.Left(1), 2) >= 0) continue;
        tokensAreTheSameInEachWay(list, other);
        tokensAreInsertedAndSorted(list.Upper(), other);
    }
    return 0;
}
