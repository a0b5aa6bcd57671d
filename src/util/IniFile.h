#pragma once

#include <cstddef>
#include <new>
#include <string_view>
#include <utility>

#include "util/CString.h"

class CMyFileIO;

/// An INI file in memory, as a list of lines, which the document owns.
///
/// The constructor reads the file, once. Lookups walk through the lines in memory, from the first
/// one. A file that cannot be read gives an empty document, in which every lookup returns its
/// fallback: a missing file is not an error. A pipe or a device gives an empty document too, since
/// reading it may never end. Edits stay in memory until Flush() or the destructor writes them back.
/// A document that was only read never touches its file again. Even a lookup changes the object, so
/// two callers must not use it at the same time.
///
///     CIniFile ini("settings.ini");
///     CString name = ini.ReadString("Server", "Name", "unnamed");
///     int port = ini.ReadInteger("Server", "Port", 80);
///     ini.WriteString("Server", "Name", "alpha", false, false);
///     if (ini.Flush()) complain();  // true: the edits are still unsaved
///
/// The syntax:
/// - Carriage returns and NULs are ignored. Lines, names and values are trimmed of
///   CString::kBlanks. The section and the key that a caller asks for are not trimmed.
/// - A line that begins with ";" is a comment. There are no other comments.
/// - A line that begins with "[" is a section header. The name ends at the first "]". If there is
///   none, it ends with the line. The section ends at the next header.
/// - Any other line with an "=" is an entry: the key is before the first "=", the value after it. A
///   value may hold ";", "=" and quotes, which have no meaning.
/// - Names match without regard to the case of ASCII letters.
/// - The empty section name means the lines above the first header.
/// - If two sections have the same name, only the first is searched. If two entries of a section
///   have the same key, only the first is found.
class CIniFile {
public:
    /// One line of the document, trimmed, without its line feed.
    struct IniLineDef {
        IniLineDef* pPrev = nullptr;  ///< The line before. In the first line, the last line.
        IniLineDef* pNext = nullptr;  ///< The line after. In the last line, null.
        CString sLine;

        /// Records come from the pool. If memory runs out, the nothrow form returns null and the
        /// plain form ends the process with the fatal report.
        static void* operator new(std::size_t size);
        static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
        static void operator delete(void* record, std::size_t size) noexcept;
    };

    /// What a lookup sees in a line.
    enum LineKindDef {
        lkBlank,   ///< Nothing: the line is empty or a comment.
        lkHeader,  ///< The header of a section.
        lkEntry,   ///< A key and its value.
        lkBare,    ///< Text without "=", which no lookup finds.
    };

    explicit CIniFile(CString path);  ///< Loads the file.
    ~CIniFile();                      ///< Writes unsaved edits back, then frees the lines.
    CIniFile(const CIniFile&) = delete;
    CIniFile& operator=(const CIniFile&) = delete;

    // --- Lookup ---

    /// The trimmed value of the first matching entry. `fallback`, unchanged, if there is none.
    CString ReadString(CString section, CString key, CString fallback);
    CString ReadString(CString section, CString key) {
        return ReadString(std::move(section), std::move(key), "");
    }
    /// The value, converted by CString::ToInt(): 0 if it is not a number. `fallback` if there is no
    /// such entry.
    int ReadInteger(CString section, CString key, int fallback);
    int ReadInteger(CString section, CString key) {
        return ReadInteger(std::move(section), std::move(key), 0);
    }
    /// Returns whether the entry was found. If so, `line` is its whole line. Otherwise `line` is
    /// the last line that was visited; in an empty document it stays unchanged.
    bool FindItem(CString section, CString key, CString& line);
    bool HasSection(CString section) const;  ///< The unnamed section always exists.
    /// Searches the section for numbered entries: Name.0, Name.1 and so on, without leading zeros.
    /// Only those count whose name `isCounted` accepts. Returns the smallest number that is not
    /// below `from` (0 or more), or -1.
    int FindNumber(CString section, bool (*isCounted)(std::string_view name), int from) const;
    /// Divides a trimmed line as lookups read it. `name` becomes the name of the section or the
    /// key, `value` the value of an entry. What the line does not have becomes "".
    static LineKindDef DivideLine(CString line, CString& name, CString& value);
    bool Exists() const;  ///< Whether the file can be opened for reading at this moment.

    // --- Editing. Returns whether the edit was made. `bFlush` then writes the document. ---

    /// Sets an entry. If the section has the key, changes the first such entry. Otherwise adds the
    /// entry at the end of the section, before its trailing blank lines. If there are none before
    /// the next header, adds one. Adds a missing section after the last line that is not blank,
    /// with a blank line between. `bAllowDuplicate` matters only if the key is empty.
    bool WriteString(CString section, CString key, CString value, bool bAllowDuplicate,
                     bool bFlush);
    /// Adds a line without a key to the section, or above the first header. If `bAllowDuplicate` is
    /// false and the section has the same line, returns false. Beware: a text with blanks at its
    /// ends is never the same as a line, since lines are trimmed.
    bool WriteString(CString section, CString value, bool bAllowDuplicate, bool bFlush);
    bool WriteString(CString value, bool bAllowDuplicate, bool bFlush);
    /// Sets an entry to a decimal number. Does not write the document.
    bool WriteInteger(CString section, CString key, int value, bool bAllowDuplicate);
    bool WriteInteger(CString section, CString key, int value);
    /// The edit behind all of the above. With an empty key and value, it only adds a missing
    /// section. Beware: edits treat comments like other lines, so the key ";K" finds the line
    /// ";K = 1". Returns false if memory for a line runs out; lines added before that stay.
    bool WriteIt(CString section, CString key, CString value, bool bAllowDuplicate, bool bFlush);

    // --- Writing back ---

    /// Saves the edits, if there are any. Returns true if edits are STILL UNSAVED, false if not.
    bool Flush() { return WriteIniFile(); }
    bool WriteIniFile();  ///< The same as Flush().
    /// Writes all lines to `path`, each with a line feed. Returns whether it wrote them all. The
    /// edits still count as unsaved, even if `path` is the document's own file. Beware: it
    /// overwrites the file in place, so a failure leaves a shortened file.
    bool WriteIniFile(CString path);

    // --- The list of lines. None of these counts as an edit: Flush() does not write them. ---

    /// The first line; null if the document has no lines. Follow pNext to the others. The document
    /// owns the lines and relies on their links. A text that is changed through these pointers must
    /// stay trimmed, and does not count as an edit.
    IniLineDef* GetFirstLine() const { return m_pFirstLine; }
    /// Appends the lines of a file, as the constructor does. Returns false if the file cannot be
    /// opened or memory for its lines runs out. A read error counts as the end of the file. A pipe
    /// or device is not opened: it counts as an empty file.
    bool ReadIniFile(CString path);
    /// Appends a line, trimmed. If memory for its record runs out, prints a warning on standard
    /// error and returns false. Also returns false if the pPrev of the first line is null. If
    /// memory for its text runs out, that is fatal, as for any string.
    bool AddLine(CString text);
    /// Inserts a line, trimmed, before the line `before` of this document. If `before` is null or
    /// the document is empty, calls AddLine(). Returns false if memory for the record runs out, or
    /// if `before` is not the first line and its pPrev is null.
    bool InsertLine(IniLineDef* before, CString text);
    /// A new line, trimmed, that is in no document. The caller owns it. Null if memory for the
    /// record runs out.
    IniLineDef* MakeNewLine(CString text);
    /// The first of the blank lines directly before `line`. `line` itself if there are none.
    IniLineDef* RewindBlanks(IniLineDef* line);
    void DeleteLines();  ///< Frees all lines. The document is then empty.

private:
    bool readLines(CMyFileIO& file);
    bool append(std::string_view text);
    bool insert(IniLineDef* before, std::string_view text);
    bool setEntry(IniLineDef* first, std::string_view key, std::string_view text);
    bool addBareLine(IniLineDef* first, std::string_view text, bool bAllowDuplicate);
    bool addSection(const CString& section, std::string_view text);
    bool addToSection(IniLineDef* nextHeader, std::string_view text);
    IniLineDef* blanksAtEnd();

    bool m_bModified = false;            // there are edits that were not written back
    CString m_sFileName;                 // the file to load from and to write back to
    CString m_sValue;                    // during a lookup the line found, then its value
    IniLineDef* m_pFirstLine = nullptr;  // null if the document has no lines
};
