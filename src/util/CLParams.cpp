#include "util/CLParams.h"

#include <new>
#include <utility>

namespace {
// The form in which names and arguments are compared. They are stored unchanged.
CString fold(const CString& text, bool bCaseSensitive) {
    return bCaseSensitive ? text : text.Upper();
}

bool isNamed(const CCLParams::CLParamDef& parameter, const CString& argument, bool bCaseSensitive) {
    const CString name = fold(parameter.sName, bCaseSensitive);
    const CString text = fold(argument, bCaseSensitive);
    switch (parameter.eMode) {
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
    CLParamDef* parameter = MakeNewNode();
    if (!parameter) return false;
    parameter->sName = std::move(name);
    parameter->eMode = mode;
    parameter->bRequired = bRequired;
    return true;
}

CCLParams::CLParamDef* CCLParams::MakeNewNode() {
    CLParamDef* parameter = new (std::nothrow) CLParamDef;
    if (!parameter) return nullptr;
    if (m_pFirst) {
        parameter->pPrev = m_pFirst->pPrev;
        parameter->pPrev->pNext = parameter;
    } else {
        m_pFirst = parameter;
    }
    m_pFirst->pPrev = parameter;
    return parameter;
}

void CCLParams::DeleteNodes() {
    while (m_pFirst) delete std::exchange(m_pFirst, m_pFirst->pNext);
}

// ---------------------------------------------------------------- Parsing

int CCLParams::Parse(int argc, const char* const* argv, bool bCaseSensitive) {
    m_bCaseSensitive = bCaseSensitive;
    int result = kParsed, index = 1;
    while (index < argc && result == kParsed) result = match(index, argc, argv);

    const CString program = argc > 0 ? argv[0] : "";
    unsigned characters = program.GetFileName().GetLength();
    for (const CLParamDef* p = m_pFirst; p; p = p->pNext) {
        if (p->bFound) characters += 1 + p->sName.GetLength() + p->sValue.GetLength();
        if (p->bRequired && !p->bFound && result == kParsed) result = kMismatch;
    }
    m_nCharacters = static_cast<int>(characters);
    return result;
}

// Offers the argument at `index` to the parameters in order. The first parameter that accepts it
// moves `index` past all arguments that it takes.
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

bool CCLParams::accepts(const CLParamDef& parameter, const CString& argument) const {
    if (parameter.eMode == CLPathParam && parameter.sName.IsEmpty())
        return !IsSwitch(argument, m_bCaseSensitive);
    return isNamed(parameter, argument, m_bCaseSensitive);
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
    const CLParamDef* parameter = find(name);
    value = parameter ? parameter->sValue : "";
    return parameter && parameter->bFound;
}

bool CCLParams::GetValue(unsigned position, CString& value) const {
    const CLParamDef* parameter = position == 0 ? nullptr : m_pFirst;
    while (parameter && --position != 0) parameter = parameter->pNext;
    value = parameter ? parameter->sValue : "";
    return parameter && parameter->bFound;
}

bool CCLParams::GetValue(CString name) const {
    CString value;
    return GetValue(std::move(name), value);
}
