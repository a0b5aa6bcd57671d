#pragma once

#include "util/CString.h"

/// A table of the parameters that a command-line program accepts.
///
/// The program declares its parameters, lets the table parse the argument vector once, and then
/// asks for the values. The table owns its parameters. It keeps the case of names and values.
///
///     CCLParams params;
///     params.Add("/out:", CCLParams::CLParam, true);  // required: /out:FILE
///     params.Add("/v", CCLParams::CLSwitch, false);
///     if (params.Parse(argc, argv, false) != CCLParams::kParsed) return usage();
///     CString out;
///     params.GetValue("/out:", out);
class CCLParams {
public:
    /// The kind of a parameter. The type is fixed, so that any int can be passed as a value.
    enum CLParamModes : int {
        CLNone = 0,       ///< No kind yet. Parse() refuses a parameter of this or an unknown kind.
        CLSwitch = 1,     ///< The argument equals the name. There is no value.
        CLParam = 2,      ///< The argument begins with the name. The value may span arguments.
        CLPathParam = 3,  ///< The same, but the value spans arguments only inside quotes. If the
                          ///< name is empty, it takes any argument for which IsSwitch() is false.
    };

    /// One declared parameter.
    struct CLParamDef {
        CLParamDef* pPrev = nullptr;  ///< The parameter before. In the first one, the last one.
        CLParamDef* pNext = nullptr;  ///< The parameter after. In the last one, null.
        CString sName;
        CString sValue;
        bool bFound = false;
        bool bRequired = false;
        CLParamModes eMode = CLNone;
    };

    /// The results of Parse().
    static constexpr int kParsed = 0;    ///< All arguments matched, and none is missing.
    static constexpr int kMismatch = 1;  ///< An argument matched no parameter, or one is missing.
    static constexpr int kUnknownMode = 2;  ///< An argument met a parameter of no known kind.

    CCLParams() = default;
    ~CCLParams() { DeleteNodes(); }
    CCLParams(const CCLParams&) = delete;
    CCLParams& operator=(const CCLParams&) = delete;

    /// Declares a parameter. Returns false only if memory runs out.
    bool Add(CString name, CLParamModes mode, bool bRequired);

    /// Matches the arguments after argv[0] with the parameters. Each parameter matches once. Stops
    /// at the first argument that no parameter accepts; the values found before can still be read.
    /// Call it once for a table: the found marks are never cleared.
    int Parse(int argc, const char* const* argv, bool bCaseSensitive);

    /// Returns whether the parameter was found, and sets `value` to its value, or to "" if there is
    /// no such parameter. The name must match exactly. Positions start at 1, in the order of
    /// declaration.
    bool GetValue(CString name, CString& value) const;
    bool GetValue(unsigned position, CString& value) const;
    bool GetValue(CString name) const;
    /// After Parse(), the length of the program's file name without its extension, plus, for each
    /// parameter found, 1 and the lengths of its name and value. 0 before Parse().
    int GetNumberOfCommandLineCharacters() const { return m_nCharacters; }

    // --- The steps of Parse() ---

    /// Collects the value of the parameter `name`. argv[index] begins with this name. The value is
    /// the rest of that argument and the arguments up to the next one for which IsSwitch() is true,
    /// joined by single blanks. Moves `index` past them and returns it.
    int GetParam(int& index, int argc, const char* const* argv, CString name, CString& value) const;
    /// The same, but adds arguments only while the value has exactly one double quote. The quotes
    /// stay in the value.
    int GetPathParam(int& index, int argc, const char* const* argv, CString name,
                     CString& value) const;
    /// Whether the argument belongs to a parameter that was not found yet: it equals the name of a
    /// switch, or begins with the name of one that takes a value.
    bool IsSwitch(CString argument, bool bCaseSensitive) const;
    /// Appends an empty parameter, which the table owns. Null if memory runs out.
    CLParamDef* MakeNewNode();
    void DeleteNodes();  ///< Frees all parameters. The table is then empty.

private:
    int match(int& index, int argc, const char* const* argv);
    bool accepts(const CLParamDef& parameter, const CString& argument) const;
    const CLParamDef* find(const CString& name) const;

    CLParamDef* m_pFirst = nullptr;
    bool m_bCaseSensitive = false;  // as given to the last Parse()
    int m_nCharacters = 0;
};
