#pragma once

#include <vector>

#include "util/CString.h"
#include "util/IniFile.h"

/// A line of a document, divided as lookups read it.
struct Line {
    unsigned number = 0;  ///< Its position in the file, from 1.
    CIniFile::LineKindDef kind = CIniFile::lkBlank;
    CString name;                   ///< Of the section or the key.
    CString value;                  ///< Of an entry.
    const Line* section = nullptr;  ///< The header above; null for a header and above the first.
    /// The first header of this name, or the first entry of this key in its section. Of several,
    /// lookups find only this one. Null for a line without a name of its own.
    const Line* first = nullptr;

    bool isHeader() const { return kind == CIniFile::lkHeader; }
    bool isEntry() const { return kind == CIniFile::lkEntry; }
    /// Whether an earlier header or entry of its name keeps lookups from finding it.
    bool isRepeated() const { return first && first != this; }
};

/// A part of the lines of a document, for a range-based loop.
struct Lines {
    const Line* first;
    const Line* last;  ///< The line after the part.
    const Line* begin() const { return first; }
    const Line* end() const { return last; }
};

/// An INI file with an index of its names, in which a lookup takes logarithmic time. It gives what
/// CIniFile gives, and the numbers of the lines as well. It owns its lines.
class Document {
public:
    explicit Document(const CString& path);  ///< Loads the file, as CIniFile does.
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// All lines that are not blank.
    Lines getLines() const { return {lines.data(), lines.data() + lines.size()}; }
    /// How many lines the file has, blank ones included.
    unsigned getLineCount() const { return lineCount; }
    /// The lines of a section, after its header.
    Lines getLines(const Line& header) const;
    /// The header of the section that lookups search; null if there is no such section. The name
    /// is not "".
    const Line* findSection(const CString& name) const;
    /// The entry that lookups find in the section, which may be null; null if there is none.
    const Line* findEntry(const Line* header, const CString& key) const;

private:
    void divide(const CIniFile& file);
    void buildIndex();
    struct Name;
    static Name nameOf(const Line& line);
    const Line* find(const Name& wanted) const;

    unsigned lineCount = 0;
    std::vector<Line> lines;
    std::vector<Line*> index;  // the headers and entries, by section, name and number
};
