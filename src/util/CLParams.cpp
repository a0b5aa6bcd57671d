#include "util/CLParams.h"

#include <new>
#include <utility>

namespace {
// The form in which names and arguments are compared. They are stored unchanged.
CString fold(const CString& text, bool bCaseSensitive) {
    return bCaseSensitive ? text : text.Upper();
}

bool isNamed(const CCLParams::CLParamDef& entry, const CString& argument, bool bCaseSensitive) {
    const CString name = fold(entry.sName, bCaseSensitive);
    const CString text = fold(argument, bCaseSensitive);
    switch (entry.eMode) {
        case CCLParams::CLSwitch:
            return text == name;
        case CCLParams::CLParam:
        case CCLParams::CLPathParam:
            return text.StartsWith(name);  // false if the name is empty
        case CCLParams::CLNone:
            break;
    }
    return false;
}

bool isKnown(CCLParams::CLParamModes mode) {
    return mode >= CCLParams::CLSwitch && mode <= CCLParams::CLPathParam;
}

// The argument without the name at its start.
CString restOf(int index, int argc, const char* const* argv, const CString& name) {
    const CString argument = index >= 0 && index < argc ? argv[index] : "";
    return argument.Substring(name.GetLength(), 0);
}

// An argument that is one blank adds only the blank between arguments.
void appendArgument(CString& value, const CString& argument) {
    value += " ";
    if (argument != " ") value += argument;
}
}  // namespace

// ---------------------------------------------------------------- Declaring

bool CCLParams::Add(CString name, CLParamModes mode, bool bRequired) {
    CLParamDef* entry = MakeNewNode();
    if (!entry) return false;
    entry->sName = std::move(name);
    entry->eMode = mode;
    entry->bRequired = bRequired;
    return true;
}

CCLParams::CLParamDef* CCLParams::MakeNewNode() {
    CLParamDef* entry = new (std::nothrow) CLParamDef;
    if (!entry) return nullptr;
    if (m_pFirst) {
        entry->pPrev = m_pFirst->pPrev;
        entry->pPrev->pNext = entry;
    } else {
        m_pFirst = entry;
    }
    m_pFirst->pPrev = entry;
    return entry;
}

void CCLParams::DeleteNodes() {
    while (m_pFirst) delete std::exchange(m_pFirst, m_pFirst->pNext);
}

// ---------------------------------------------------------------- Parsing

int CCLParams::Parse(int argc, const char* const* argv, bool bCaseSensitive) {
    m_bCaseSensitive = bCaseSensitive;
    int result = kParsed;
    for (int index = 1; index < argc && result == kParsed;) result = match(index, argc, argv);

    const CString program = argc > 0 ? argv[0] : "";
    unsigned characters = program.GetFileName().GetLength();
    for (const CLParamDef* p = m_pFirst; p; p = p->pNext) {
        if (p->bFound) characters += 1 + p->sName.GetLength() + p->sValue.GetLength();
        if (p->bRequired && !p->bFound && result == kParsed) result = kMismatch;
    }
    m_nCharacters = static_cast<int>(characters);
    return result;
}

// Offers the argument at `index` to the entries in order. The first entry that accepts it moves
// `index` past all arguments that it takes.
int CCLParams::match(int& index, int argc, const char* const* argv) {
    const CString argument = argv[index];
    for (CLParamDef* p = m_pFirst; p; p = p->pNext) {
        if (p->bFound) continue;
        if (!isKnown(p->eMode)) return kUnknownMode;
        if (!accepts(*p, argument)) continue;
        p->bFound = true;
        if (p->eMode == CLParam)
            GetParam(index, argc, argv, p->sName, p->sValue);
        else if (p->eMode == CLPathParam)
            GetPathParam(index, argc, argv, p->sName, p->sValue);
        else
            ++index;
        return kParsed;
    }
    return kMismatch;
}

bool CCLParams::accepts(const CLParamDef& entry, const CString& argument) const {
    if (entry.eMode == CLPathParam && entry.sName.IsEmpty())
        return !IsSwitch(argument, m_bCaseSensitive);
    return isNamed(entry, argument, m_bCaseSensitive);
}

bool CCLParams::IsSwitch(CString argument, bool bCaseSensitive) const {
    for (const CLParamDef* p = m_pFirst; p; p = p->pNext)
        if (!p->bFound && isNamed(*p, argument, bCaseSensitive)) return true;
    return false;
}

int CCLParams::GetParam(int& index, int argc, const char* const* argv, CString name,
                        CString& value) const {
    value = restOf(index++, argc, argv, name);
    for (; index < argc && !IsSwitch(argv[index], m_bCaseSensitive); ++index)
        appendArgument(value, argv[index]);
    return index;
}

int CCLParams::GetPathParam(int& index, int argc, const char* const* argv, CString name,
                            CString& value) const {
    value = restOf(index++, argc, argv, name);
    const auto isQuoteOpen = [&value] { return value.GetNumberOccurances("\"") == 1; };
    for (; index < argc && isQuoteOpen() && !IsSwitch(argv[index], m_bCaseSensitive); ++index)
        appendArgument(value, argv[index]);
    return index;
}

// ---------------------------------------------------------------- Asking

const CCLParams::CLParamDef* CCLParams::find(const CString& name) const {
    const CLParamDef* p = m_pFirst;
    while (p && p->sName != name) p = p->pNext;
    return p;
}

bool CCLParams::GetValue(CString name, CString& value) const {
    const CLParamDef* entry = find(name);
    value = entry ? entry->sValue : "";
    return entry && entry->bFound;
}

bool CCLParams::GetValue(unsigned position, CString& value) const {
    const CLParamDef* entry = position == 0 ? nullptr : m_pFirst;
    while (entry && --position != 0) entry = entry->pNext;
    value = entry ? entry->sValue : "";
    return entry && entry->bFound;
}

bool CCLParams::GetValue(CString name) const {
    CString value;
    return GetValue(std::move(name), value);
}
