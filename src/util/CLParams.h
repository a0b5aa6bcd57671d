#pragma once

#include "util/CString.h"

/// A table of the parameters that a command-line program accepts.
///
/// The program declares each parameter, lets the table parse the argument vector once, and asks for
/// what was given. The table owns its entries; names and values keep their case as declared and as
/// typed.
///
///     CCLParams params;
///     params.Add("/out:", CCLParams::CLParam, true);  // required: /out:FILE
///     params.Add("/v", CCLParams::CLSwitch, false);
///     if (params.Parse(argc, argv, false) != CCLParams::kParsed) return usage();
///     CString out;
///     params.GetValue("/out:", out);
class CCLParams {
public:
    enum CLParamModes : int {
        CLNone = 0,       ///< No kind yet: Parse refuses such an entry.
        CLSwitch = 1,     ///< The argument equals the name; there is no value.
        CLParam = 2,      ///< The argument begins with the name; the value may span arguments.
        CLPathParam = 3,  ///< The same, with a value that spans arguments only inside quotes. With
                          ///< an empty name it takes an argument that is no switch.
    };

    /// One declared parameter.
    struct CLParamDef {
        CLParamDef* pPrev = nullptr;  ///< In the first entry: the last entry of the table.
        CLParamDef* pNext = nullptr;  ///< In the last entry: null.
        CString sName;
        CString sValue;
        bool bFound = false;
        bool bRequired = false;
        CLParamModes eMode = CLNone;
    };

    /// The results of Parse.
    static constexpr int kParsed = 0;       ///< Every argument matched, nothing is missing.
    static constexpr int kMismatch = 1;     ///< An argument matched no entry, or one is missing.
    static constexpr int kUnknownMode = 2;  ///< An argument met an entry of no known kind.

    CCLParams() = default;
    ~CCLParams() { DeleteNodes(); }
    CCLParams(const CCLParams&) = delete;
    CCLParams& operator=(const CCLParams&) = delete;

    /// Declares a parameter, after those declared before. False only when memory runs out.
    bool Add(CString name, CLParamModes mode, bool bRequired);

    /// Matches the arguments after argv[0] against the entries, each of which matches once; stops
    /// at the first one that nothing accepts. What was found up to there stays readable. Expects a
    /// freshly declared table: found marks are never taken back.
    int Parse(int argc, const char* const* argv, bool bCaseSensitive);

    /// Whether the entry was found; `value` is its value, or "" when there is no such entry. The
    /// name must match exactly, the position counts from 1 in the order of declaration.
    bool GetValue(CString name, CString& value) const;
    bool GetValue(unsigned position, CString& value) const;
    bool GetValue(CString name) const;
    /// After Parse: the length of the program's file name, and 1 plus the lengths of name and value
    /// for every entry found. 0 before.
    int GetNumberOfCommandLineCharacters() const { return m_nCharacters; }

    // --- The steps of Parse ---

    /// Collects the value of the parameter `name` from argv[index] on: the rest of that argument,
    /// then the arguments up to the next switch, joined by single blanks. Moves `index` past them
    /// and returns it.
    int GetParam(int& index, int argc, const char* const* argv, CString name, CString& value) const;
    /// The same, but arguments are added only while the value holds one double quote, which stays.
    int GetPathParam(int& index, int argc, const char* const* argv, CString name,
                     CString& value) const;
    /// Whether the argument equals a switch, or begins with the name of another parameter, that
    /// was not found yet.
    bool IsSwitch(CString argument, bool bCaseSensitive) const;
    CLParamDef* MakeNewNode();  ///< Appends an empty entry, which the table owns; null: no memory.
    void DeleteNodes();         ///< Frees every entry: the table is empty then.

private:
    int match(int& index, int argc, const char* const* argv);
    bool accepts(const CLParamDef& entry, const CString& argument) const;
    const CLParamDef* find(const CString& name) const;

    CLParamDef* m_pFirst = nullptr;
    bool m_bCaseSensitive = false;  // as the last Parse was told
    int m_nCharacters = 0;
};
