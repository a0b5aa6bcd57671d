#pragma once

#include <cstddef>
#include <new>
#include <string_view>
#include <utility>

#include "util/CString.h"

class CMyFileIO;

/// An INI file held in memory as the list of its lines, which it owns.
///
/// The file is read once, on construction; every lookup is answered from memory by a walk from the
/// first line. A file that cannot be read gives an empty document, in which each lookup returns its
/// fallback: absence is an answer here, not an error. So does a pipe or a device, since a document
/// has to have an end. Edits stay in memory until Flush() or the destructor writes them back; a
/// document that was only read never touches its file again. Even a lookup changes the object: not
/// for use by two callers at once.
///
///     CIniFile ini("settings.ini");
///     CString name = ini.ReadString("Server", "Name", "unnamed");
///     int port = ini.ReadInteger("Server", "Port", 80);
///     ini.WriteString("Server", "Name", "alpha", false, false);
///     if (ini.Flush()) complain();  // true: the edits are still unsaved
///
/// The syntax. Carriage returns and NULs are dropped, and each line is trimmed of CString::kBlanks.
/// A line that begins with ";" is a comment; no other mark is, and none ends a value. "[" begins a
/// section header: the name stands before the first "]" or the end of the line. Any other line with
/// an "=" is an entry: the key stands before the first "=", the value after it, both trimmed,
/// quotes kept. Names match without regard to the case of ASCII letters, against the requested name
/// as it is. An empty section name means the part above the first header. Of two sections of one
/// name, only the first is searched; of two entries of one key in it, the first counts.
class CIniFile {
public:
    /// One line of the document, trimmed, without its line end.
    struct IniLineDef {
        IniLineDef* pPrev = nullptr;  ///< In the first line: the last line of the document.
        IniLineDef* pNext = nullptr;  ///< In the last line: null.
        CString sLine;

        /// Records come from the pool. When memory runs out, the nothrow form gives null, the
        /// plain one ends the process with the fatal report. The last one is placement.
        static void* operator new(std::size_t size);
        static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
        static void* operator new(std::size_t, void* place) noexcept { return place; }
        static void operator delete(void* record, std::size_t size) noexcept;
    };

    explicit CIniFile(CString path);  ///< Loads the file; a missing one gives an empty document.
    ~CIniFile();                      ///< Writes unsaved edits back, then frees the lines.
    CIniFile(const CIniFile&) = delete;
    CIniFile& operator=(const CIniFile&) = delete;

    // --- Lookup ---

    /// The trimmed value of the first matching entry, else `fallback` exactly as given.
    CString ReadString(CString section, CString key, CString fallback);
    CString ReadString(CString section, CString key) {
        return ReadString(std::move(section), std::move(key), "");
    }
    /// The value as CString::ToInt reads it: 0 when it is no number. `fallback` when absent.
    int ReadInteger(CString section, CString key, int fallback);
    int ReadInteger(CString section, CString key) {
        return ReadInteger(std::move(section), std::move(key), 0);
    }
    /// Whether the entry was found: `line` is then the whole of its line. Otherwise `line` is the
    /// last line visited, or untouched in an empty document.
    bool FindItem(CString section, CString key, CString& line);
    /// The smallest N from `from` on (0 or more) such that some key of the section ends in "." and
    /// N in decimal, as in the numbered entries Name.0, Name.1 and so on; -1 when there is none.
    int FindNumber(CString section, int from) const;
    bool Exists() const;  ///< Whether the file can be opened for reading at this moment.

    // --- Editing. True when the edit was made; with `bFlush` the document is then written. ---

    /// Sets the entry: changes the line of the first one of this key, or adds one at the end of its
    /// section, before the blank lines there; a new section goes to the end of the document, after
    /// a blank line. `bAllowDuplicate` matters only without a key, that is with an empty one.
    bool WriteString(CString section, CString key, CString value, bool bAllowDuplicate,
                     bool bFlush);
    /// Adds a bare line to the section, or to the part above the first header. Refused when the
    /// section holds the very same line, unless `bAllowDuplicate`.
    bool WriteString(CString section, CString value, bool bAllowDuplicate, bool bFlush);
    bool WriteString(CString value, bool bAllowDuplicate, bool bFlush);
    /// Sets the entry to the number in decimal; writes nothing back yet.
    bool WriteInteger(CString section, CString key, int value, bool bAllowDuplicate);
    bool WriteInteger(CString section, CString key, int value);
    /// The edit behind all of these. A comment counts as a line like any other here. An empty key
    /// and value make sure that the section is there. False also when memory for a line runs out:
    /// lines added before that stay.
    bool WriteIt(CString section, CString key, CString value, bool bAllowDuplicate, bool bFlush);

    // --- Writing back ---

    /// Saves the edits, if any. True means that edits are STILL UNSAVED; false is the good news.
    bool Flush() { return WriteIniFile(); }
    bool WriteIniFile();  ///< The same as Flush().
    /// Writes every line with a line feed to `path`, in place: a failure leaves a shortened file.
    /// Whether all of it was written.
    bool WriteIniFile(CString path);

    // --- The list of lines ---

    /// The first line of the document, which keeps it; null when the document is empty. pNext leads
    /// to the others. A text changed through these records is not seen as an edit by Flush().
    IniLineDef* GetFirstLine() const { return m_pFirstLine; }
    /// Appends the lines of a file, as the constructor does. Whether it could be opened, and memory
    /// held for its lines. A read error counts as the end of the file. A pipe or device is not
    /// opened: it counts as an empty file.
    bool ReadIniFile(CString path);
    /// Appends one line, trimmed. When memory for its record runs out, says so on standard error
    /// and returns false; for its text, as for any string, that is the fatal report.
    bool AddLine(CString text);
    /// Inserts one line, trimmed, before another of this document; appends with AddLine when
    /// `before` is null or the document is empty. False when memory for its record runs out, or
    /// when `before`, unless it is the first line, has no line before it.
    bool InsertLine(IniLineDef* before, CString text);
    /// A new line outside the list, trimmed, owned by the caller; null when memory for its record
    /// runs out.
    IniLineDef* MakeNewLine(CString text);
    /// The first of the blank lines directly before `line`, or `line` itself when there are none.
    IniLineDef* RewindBlanks(IniLineDef* line);
    void DeleteLines();  ///< Frees every line: the document is empty then.

private:
    bool readLines(CMyFileIO& file);
    bool append(std::string_view text);
    bool insert(IniLineDef* before, std::string_view text);
    bool setEntry(IniLineDef* first, std::string_view key, std::string_view text);
    bool addBareLine(IniLineDef* first, std::string_view text, bool bAllowDuplicate);
    bool addSection(const CString& section, std::string_view text);
    bool addToSection(IniLineDef* nextHeader, std::string_view text);
    IniLineDef* blanksAtEnd();

    bool m_bModified = false;            // edits are not written back yet
    CString m_sFileName;                 // where the document was loaded from and goes back to
    CString m_sValue;                    // the last lookup's line, then its value
    IniLineDef* m_pFirstLine = nullptr;  // null when the document holds no line
};
