// Sequences of string operations against std::string.
//
// The input is read as operations on three strings: a letter (see kOperations), the digit of the
// string, and what the operation takes: further strings as digits, numbers as one character each
// ("0" is 0, "/" is -1), texts up to the next "|". Unknown letters are passed over.

#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "fuzz.h"
#include "model.h"
#include "util/CString.h"

namespace {

using model::npos;

// Doubling and sorting must not make a short input a long run.
constexpr std::size_t kLongest = 400;
constexpr std::size_t kMostTokens = 24;

// A string, what it must hold, and the state of its walk over tokens.
struct Pair {
    CString real;
    std::string want;
    unsigned capacity = 0;  // while locked
    std::string work, rest, separator;

    bool locked() const { return capacity > 0; }
    void become(const std::string& text) {
        if (!locked()) want = text;
    }
    void endWalk() { work = rest = separator = ""; }
};

// --- The rules of the longer operations ---

int position(std::size_t at) { return at == npos ? -1 : static_cast<int>(at); }

// The n-th occurrence, overlapping ones counted; n = 0: the last.
int occurrence(const std::string& text, const std::string& sub, std::size_t n) {
    if (sub.empty()) return -1;
    if (n == 0) return position(text.rfind(sub));
    std::size_t at = text.find(sub);
    while (at != npos && --n > 0) at = text.find(sub, at + 1);
    return position(at);
}

unsigned countOf(const std::string& text, const std::string& sub) {
    return sub.empty() ? 0 : static_cast<unsigned>(fuzz::split(text, sub).size() - 1);
}

std::string left(const std::string& text, int n) {
    return n < 0 ? text : text.substr(0, static_cast<std::size_t>(n));
}

std::string mid(const std::string& text, int start, unsigned count) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    if (from >= text.size()) return "";
    return text.substr(from, count == 0 ? npos : count);
}

std::string right(const std::string& text, unsigned n) {
    return text.substr(text.size() - std::min<std::size_t>(n, text.size()));
}

std::string without(std::string text, const std::string& sub) {
    const std::size_t at = sub.empty() ? npos : text.find(sub);
    return at == npos ? text : text.erase(at, sub.size());
}

unsigned countTokens(const std::string& text, const std::string& separator) {
    const std::string list = model::trim(text);
    return separator.empty() || list.empty() ? 0 : 1 + countOf(list, separator);
}

std::string token(const std::string& text, unsigned n, const std::string& separator) {
    const std::string list = model::trim(text);
    if (separator.empty()) return "";
    const int at = n == 0 ? 0 : occurrence(list, separator, n);
    if (at < 0) return "";
    const std::size_t from = static_cast<std::size_t>(at) + (n == 0 ? 0 : separator.size());
    const std::size_t end = std::min(list.find(separator, from), list.size());
    return list.substr(from, end - from);
}

int findToken(const std::string& text, const std::string& wanted, const std::string& separator) {
    if (separator.empty()) return 0;
    const std::string list = model::trim(text);
    if (list.empty()) return -1;
    std::size_t at = 0;
    for (const std::string& part : fuzz::split(list, separator)) {
        if (part == wanted) return static_cast<int>(at);
        at += part.size() + separator.size();
    }
    return -1;
}

std::string addToken(const std::string& text, const std::string& added,
                     const std::string& separator) {
    return text.empty() ? added : text + separator + added;
}

std::string insertToken(const std::string& text, const std::string& inserted,
                        const std::string& before, const std::string& separator) {
    if (inserted.empty()) return text;
    const int found =
        before.empty() ? 0 : findToken(model::upper(text), model::upper(before), separator);
    if (found < 0) return addToken(text, inserted, separator);
    std::string head = text.substr(0, static_cast<std::size_t>(found));
    const std::string tail = text.substr(head.size());
    if (!head.empty() && !model::endsWith(head, separator)) head += separator;
    return head + inserted + (tail.empty() ? "" : separator + tail);
}

std::string sortTokens(const std::string& text, const std::string& separator) {
    std::string sorted;
    for (unsigned i = 0; i < countTokens(text, separator); ++i) {
        const std::string next = token(text, i, separator);
        unsigned j = 0;
        while (j < countTokens(sorted, separator) && token(sorted, j, separator) <= next) ++j;
        if (j < countTokens(sorted, separator))
            sorted = insertToken(sorted, next, token(sorted, j, separator), separator);
        else if (!next.empty())
            sorted = addToken(sorted, next, separator);
    }
    return sorted.empty() ? text : sorted;
}

// One step of a walk over tokens.
std::string step(Pair& p) {
    const std::size_t at = p.separator.empty() ? npos : p.work.find(p.separator);
    p.rest = at == npos ? "" : p.work.substr(at + p.separator.size());
    p.work = p.work.substr(0, at);
    return p.work;
}

std::string startWalk(Pair& p, const std::string& separator) {
    p.work = p.want;
    p.separator = separator;
    return step(p);
}

std::string nextToken(Pair& p) {
    p.work = p.rest;
    return step(p);
}

std::string pathOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t end = slash == npos ? path.find(':') : slash;
    return end == npos ? "" : path.substr(0, end);
}

std::string nameOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return path.substr((slash == npos ? path.find(':') : slash) + 1);
}

std::string addPath(const std::string& path, const std::string& part) {
    if (path.empty() || part.empty()) return path + part;
    std::string start = path;
    if (start.back() == '/') start.pop_back();
    return start + (part[0] == '/' ? "" : "/") + part;
}

// --- The operations ---

class Session {
public:
    explicit Session(const std::string& input) : m_input(input) {}
    void run();

    using Operation = void (Session::*)(Pair&);

    void assign(Pair& p) {
        const std::string t = text();
        p.real = t.c_str();
        p.become(t);
    }
    void assignString(Pair& p) {
        Pair& other = pair();
        p.real = other.real;
        p.become(other.want);
    }
    void assignOwnTail(Pair& p) {
        const std::size_t from = inside(p);
        p.real = p.real.GetBuffer() + from;
        p.become(p.want.substr(from));
    }
    void assignChar(Pair& p) {
        const char c = character();
        p.real = c;
        p.become(c ? std::string(1, c) : "");
    }
    void move(Pair& p) {
        Pair& other = pair();
        if (&p == &other) return;
        p.real = std::move(other.real);
        p.become(other.want);
        if (other.locked()) return;  // its text stays, with the one who writes into its buffer
        other.real = "";
        other.want = "";
    }
    void construct(Pair& p) {
        const char c = character();
        const auto n = static_cast<unsigned char>(character());
        const CString copies(c, n);
        fuzz::checkSame(c ? std::string(n, c) : "", copies.c_str(), "copies of a character");
        CString copy(p.real);
        const CString moved(std::move(copy));
        fuzz::checkSame(p.want, moved.c_str(), "a copy, moved");
    }
    void append(Pair& p) {
        const std::string t = text();
        p.real += t.c_str();
        p.become(p.want + t);
    }
    void appendString(Pair& p) {
        Pair& other = pair();
        p.real += other.real;
        p.become(p.want + other.want);
    }
    void appendOwnTail(Pair& p) {
        const std::size_t from = inside(p);
        p.real += p.real.GetBuffer() + from;
        p.become(p.want + p.want.substr(from));
    }
    void appendChar(Pair& p) {
        const char c = character();
        p.real += c;
        if (c) p.become(p.want + c);
    }
    void concatenate(Pair& p) {
        const Pair& a = pair();
        const Pair& b = pair();
        const std::string t = text();
        p.real = a.real + b.real + t.c_str();
        p.become(a.want + b.want + t);
        const CString framed = '<' + (t.c_str() + p.real) + '>';
        fuzz::checkSame("<" + t + p.want + ">", framed.c_str(), "a chain of concatenations");
    }
    void repeat(Pair& p) {
        const char c = character();
        const auto n = static_cast<unsigned char>(character());
        const char* const result = p.real.RepeatChar(c, n);
        p.become(c ? std::string(n, c) : "");
        fuzz::checkSame(p.want, result, "RepeatChar");
    }
    void empty(Pair& p) {
        p.real.Empty();
        p.become("");
    }
    void lock(Pair& p) {
        const auto n = static_cast<unsigned char>(character());
        char* const buffer = p.real.GetBuffer(n);
        if (n > 0 || !p.locked()) p.want = p.want.substr(0, n);
        p.capacity = n;
        fuzz::checkSame(p.want, buffer, "GetBuffer");
        if (!p.locked()) return;
        const std::string t = text().substr(0, n);
        if (t.empty()) return;
        std::memcpy(buffer, t.c_str(), t.size() + 1);
        p.want = t;
    }
    void unlock(Pair& p) {
        fuzz::check(p.real.ReleaseBuffer(), "ReleaseBuffer");
        p.capacity = 0;
        p.endWalk();
    }
    void trim(Pair& p) {
        const std::string set = text();
        const char side = character();
        const char* result = nullptr;
        if (side == 'l') {
            result = p.real.TrimLeft(set.c_str());
            p.become(model::trimLeft(p.want, set));
        } else if (side == 'r') {
            result = p.real.TrimRight(set.c_str());
            p.become(model::trimRight(p.want, set));
        } else {
            result = p.real.Trim(CString(set.c_str()));
            p.become(model::trim(p.want, set));
        }
        if (!p.locked()) fuzz::checkSame(p.want, result, "the result of a trim");
    }
    void trimOwnTail(Pair& p) {
        const std::size_t from = inside(p);
        p.real.Trim(static_cast<const char*>(p.real.GetBuffer() + from));
        p.become(model::trim(p.want, p.want.substr(from)));
    }
    void remove(Pair& p) {
        const std::string sub = text();
        const bool there = !p.locked() && occurrence(p.want, sub, 1) >= 0;
        fuzz::check(p.real.RemoveSubstring(sub.c_str()) == there, "RemoveSubstring");
        p.become(without(p.want, sub));
    }
    void removeOwnTail(Pair& p) {
        const std::size_t from = inside(p);
        p.real -= p.real.GetBuffer() + from;
        p.become(without(p.want, p.want.substr(from)));
    }
    void setAt(Pair& p) {
        const auto i = static_cast<std::size_t>(static_cast<unsigned char>(character()) - '0');
        const char c = character();
        const bool stored = !p.locked() && i < p.want.size();
        fuzz::check(p.real.SetAt(static_cast<unsigned>(i), c) == stored, "SetAt");
        if (!stored) return;
        p.want[i] = c;
        if (!c) p.want.resize(i);
    }
    void fold(Pair& p) {
        const bool up = character() == 'u';
        const CString result = up ? p.real.ToUpper() : p.real.ToLower();
        p.become(up ? model::upper(p.want) : model::lower(p.want));
        fuzz::checkSame(p.locked() ? "" : p.want, result.c_str(), "folding the case");
    }
    void foldOne(Pair& p) {
        const bool up = character() == 'u';
        const auto i = static_cast<unsigned>(number());
        const CString result = up ? p.real.ToUpper(i) : p.real.ToLower(i);
        const bool changes = !p.locked() && i < p.want.size();
        if (changes) {
            const std::string one(1, p.want[i]);
            p.want.replace(i, 1, up ? model::upper(one) : model::lower(one));
        }
        fuzz::checkSame(changes ? p.want : "", result.c_str(), "folding one character");
    }
    void walk(Pair& p) {
        const std::string separator = text();
        fuzz::checkSame(startWalk(p, separator), p.real.StrTok(separator.c_str()).c_str(),
                        "the first token");
    }
    void walkOn(Pair& p) {
        fuzz::checkSame(nextToken(p), p.real.StrTok().c_str(), "the next token");
    }
    void breakAt(Pair& p) {
        const std::string separator = text();
        const std::size_t at = separator.empty() ? npos : p.want.find(separator);
        p.work = p.want.substr(0, at == npos ? npos : at + separator.size());
        p.rest = p.want.substr(p.work.size());
        fuzz::checkSame(p.work, p.real.StrBreak(separator.c_str()).c_str(), "StrBreak");
    }
    void breakOn(Pair& p) {
        fuzz::checkSame(p.rest, p.real.StrBreak().c_str(), "the rest of StrBreak");
    }
    void parse(Pair& p) {
        const auto most = static_cast<unsigned>(character()) % 6U;
        const std::string separator = text();
        std::array<CString, 6> tokens;
        for (CString& t : tokens) t = "before";
        const unsigned total = p.real.ParseTokens(tokens.data(), most, separator.c_str());
        fuzz::check(total == std::min(most, countTokens(p.want, separator)), "ParseTokens");
        for (unsigned i = 0; i < total; ++i)
            fuzz::checkSame(model::trim(i == 0 ? startWalk(p, separator) : nextToken(p)),
                            tokens[i].c_str(), "a parsed token");
        for (unsigned i = total; i < tokens.size(); ++i)
            fuzz::checkSame("before", tokens[i].c_str(), "what is not parsed into");
    }
    void add(Pair& p) {
        const std::string added = text();
        const std::string separator = text();
        p.real.AddToken(added.c_str(), separator.c_str());
        p.become(addToken(p.want, added, separator));
    }
    void insert(Pair& p) {
        const std::string inserted = text();
        const std::string before = text();
        const std::string separator = text();
        p.real.InsertToken(inserted.c_str(), before.c_str(), separator.c_str());
        p.become(insertToken(p.want, inserted, before, separator));
    }
    void sort(Pair& p) {
        const std::string separator = text();
        if (countTokens(p.want, separator) > kMostTokens) return;
        p.real.SortTokens(separator.c_str());
        p.become(sortTokens(p.want, separator));
    }
    void join(Pair& p) {
        const std::string part = text();
        p.real.AddPath(part.c_str());
        p.become(addPath(p.want, part));
    }
    void makePath(Pair& p) {
        const std::string directory = text();
        const std::string name = text();
        p.real.MakePath("C:", directory.c_str(), name.c_str(), ".x");
        p.become(addPath(directory, name) + ".x");
    }
    void takePath(Pair& p) {
        const std::string path = text();
        p.real.GetPath(path.c_str());
        p.become(pathOf(path));
    }
    void setNumber(Pair& p) {
        const std::string digits = text();
        const double value = std::strtod(digits.c_str(), nullptr);
        char wanted[64];
        std::snprintf(wanted, sizeof wanted, "%g", value);
        p.real.ToString(value);
        p.become(wanted);
        const int whole = model::toInt(digits);
        fuzz::checkSame(std::to_string(whole), CString(whole).c_str(), "an int as text");
    }
    void ask(Pair& p);
    void compare(Pair& p);
    void askForParts(Pair& p);

private:
    char character() {
        if (m_input.empty()) return '\0';
        const char c = m_input[0];
        m_input.remove_prefix(1);
        return c;
    }
    int number() { return character() - '0'; }
    std::string text() {
        const std::size_t end = std::min(m_input.find('|'), m_input.size());
        const std::string taken(m_input.substr(0, end));
        m_input.remove_prefix(std::min(end + 1, m_input.size()));
        return fuzz::withoutNULs(taken);
    }
    Pair& pair() { return m_pairs[static_cast<unsigned char>(character()) % m_pairs.size()]; }
    std::size_t inside(const Pair& p) {
        return static_cast<unsigned char>(character()) % (p.want.size() + 1);
    }
    void checkAll();

    std::string_view m_input;
    std::array<Pair, 3> m_pairs;
};

// Search, cutting and counting, which change nothing.
void Session::ask(Pair& p) {
    const int n = number();
    const auto count = static_cast<unsigned>(number());
    const std::string sub = text();
    const char* const s = sub.c_str();
    const auto times = static_cast<unsigned>(n);
    fuzz::check(p.real.Find(s) == occurrence(p.want, sub, 1), "Find");
    fuzz::check(p.real.Find(s, count) == occurrence(p.want, sub, count), "Find, counting");
    fuzz::check(p.real.ReverseFind(s) == occurrence(p.want, sub, 0), "ReverseFind");
    fuzz::check(p.real.IsSubstring(s) == (occurrence(p.want, sub, 1) >= 0), "IsSubstring");
    fuzz::check(p.real.StartsWith(s) == model::startsWith(p.want, sub), "StartsWith");
    fuzz::check(p.real.EndsWith(s) == model::endsWith(p.want, sub), "EndsWith");
    fuzz::check(p.real.GetNumberOccurances(s) == countOf(p.want, sub), "GetNumberOccurances");
    fuzz::checkSame(left(p.want, n), p.real.Left(n).c_str(), "Left");
    fuzz::checkSame(mid(p.want, n, count), p.real.Mid(n, count).c_str(), "Mid");
    fuzz::checkSame(mid(p.want, n, count), p.real.Substring(times, count).c_str(), "Substring");
    fuzz::checkSame(right(p.want, count), p.real.Right(count).c_str(), "Right");
    fuzz::check(p.real.GetNumberTokens(s) == countTokens(p.want, sub), "GetNumberTokens");
    fuzz::checkSame(token(p.want, times, sub), p.real.GetToken(times, s).c_str(), "GetToken");
    const std::string wanted = token(p.want, count % 4, sub);
    const int at = findToken(p.want, wanted, sub);
    fuzz::check(p.real.FindToken(wanted.c_str(), s) == at, "FindToken");
    fuzz::check(p.real.IsToken(wanted.c_str(), s) == (at >= 0), "IsToken");
    fuzz::check(p.real.GetAt(times) == (times < p.want.size() ? p.want[times] : '\0'), "GetAt");
}

int sign(int order) { return (order > 0) - (order < 0); }

void Session::compare(Pair& p) {
    const std::string other = text();
    const char* const o = other.c_str();
    const char* const null = nullptr;
    const int order = sign(p.want.compare(other));
    const int orderNoCase = sign(model::lower(p.want).compare(model::lower(other)));
    fuzz::check((p.real == o) == (order == 0) && (o != p.real) == (order != 0), "equality");
    fuzz::check((p.real < o) == (order < 0) && (o < p.real) == (order > 0), "less");
    fuzz::check((p.real > o) == (order > 0) && (p.real >= CString(o)) == (order >= 0), "greater");
    fuzz::check((p.real <= o) == (order <= 0) && (o <= p.real) == (order >= 0), "at most");
    fuzz::check(sign(p.real.Compare(o)) == order, "Compare");
    fuzz::check(sign(p.real.CompareNoCase(o)) == orderNoCase, "CompareNoCase");
    fuzz::check(p.real.Equals(o) == (order == 0), "Equals");
    fuzz::check(p.real.EqualsNoCase(o) == (orderNoCase == 0), "EqualsNoCase");
    fuzz::check(p.real != null && null < p.real && null <= p.real && p.real > null &&
                    !(p.real <= null) && !(null == p.real),
                "a null text is before every string");
}

void Session::askForParts(Pair& p) {
    const model::PathParts parts(p.want);
    fuzz::checkSame(parts.drive, p.real.GetDrive().c_str(), "GetDrive");
    fuzz::checkSame(parts.directory, p.real.GetDirectory().c_str(), "GetDirectory");
    fuzz::checkSame(parts.name, p.real.GetFileName().c_str(), "GetFileName");
    fuzz::checkSame(parts.extension, p.real.GetExtension().c_str(), "GetExtension");
    fuzz::checkSame(pathOf(p.want), p.real.GetPath().c_str(), "GetPath");
    fuzz::checkSame(nameOf(p.want), p.real.GetName().c_str(), "GetName");
    fuzz::checkSame(model::upper(p.want), p.real.Upper().c_str(), "Upper");
    fuzz::checkSame(model::lower(p.want), p.real.Lower().c_str(), "Lower");
    fuzz::check(p.real.ToInt() == (p.locked() ? 0 : model::toInt(p.want)), "ToInt");
}

struct Letter {
    char letter;
    Session::Operation operation;
};
constexpr Letter kOperations[] = {
    {'=', &Session::assign},         // text
    {':', &Session::assignString},   // string
    {'~', &Session::assignOwnTail},  // where it begins
    {'\'', &Session::assignChar},    // character
    {'v', &Session::move},           // string
    {'c', &Session::construct},      // character, count
    {'+', &Session::append},         // text
    {'&', &Session::appendString},   // string
    {'s', &Session::appendOwnTail},  // where it begins
    {'p', &Session::appendChar},     // character
    {'#', &Session::concatenate},    // string, string, text
    {'*', &Session::repeat},         // character, count
    {'0', &Session::empty},          // nothing more
    {'l', &Session::lock},           // capacity, text to write
    {'u', &Session::unlock},         // nothing more
    {'t', &Session::trim},           // set, "l", "r" or else both
    {'T', &Session::trimOwnTail},    // where the set begins
    {'x', &Session::remove},         // text
    {'X', &Session::removeOwnTail},  // where it begins
    {'@', &Session::setAt},          // number, character
    {'f', &Session::fold},           // "u" or else lower
    {'F', &Session::foldOne},        // the same, number
    {'w', &Session::walk},           // separator
    {'n', &Session::walkOn},         // nothing more
    {'b', &Session::breakAt},        // separator
    {'B', &Session::breakOn},        // nothing more
    {'P', &Session::parse},          // most, separator
    {'A', &Session::add},            // token, separator
    {'I', &Session::insert},         // token, before, separator
    {'S', &Session::sort},           // separator
    {'/', &Session::join},           // part
    {'M', &Session::makePath},       // directory, name
    {'G', &Session::takePath},       // path
    {'N', &Session::setNumber},      // digits
    {'?', &Session::ask},            // number, number, text
    {'<', &Session::compare},        // text
    {'.', &Session::askForParts},    // nothing more
};

void Session::checkAll() {
    for (Pair& p : m_pairs) {
        fuzz::checkSame(p.want, p.real.GetBuffer(), "the text");
        fuzz::check(p.real.GetLength() == p.want.size(), "GetLength");
        fuzz::check(p.real.IsEmpty() == p.want.empty(), "IsEmpty");
        fuzz::check(p.real.GetLastChar() == (p.want.empty() ? '\0' : p.want.back()), "GetLastChar");
        if (p.want.size() > kLongest) {
            unlock(p);
            empty(p);
        }
    }
}

void Session::run() {
    while (!m_input.empty()) {
        const char letter = character();
        for (const Letter& known : kOperations)
            if (known.letter == letter) (this->*known.operation)(pair());
        checkAll();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    Session(input).run();
    return 0;
}
