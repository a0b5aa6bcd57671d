#pragma once

#include <cstdio>

#include "util/CString.h"

/// A text file that is read and written line by line, and the file utilities of the system.
///
/// The object owns its stream and closes it in its destructor. Failures are results; the class
/// prints nothing. The modes are those of fopen, and everything that fopen opens can be used,
/// including pipes and devices. Opening a pipe only for reading, or only for writing, waits for its
/// other end. A folder reads as an empty file. Text is written line by line: a line counts as
/// written when the system has accepted it.
///
///     CMyFileIO file;
///     CString line;
///     if (file.OpenFile("notes.txt"))
///         while (file.ReadString(line)) show(line);  // each line with its line feed
class CMyFileIO {
public:
    CMyFileIO() = default;             ///< No name; nothing is opened.
    explicit CMyFileIO(CString name);  ///< Nothing is opened yet.
    virtual ~CMyFileIO() { CloseFile(); }
    CMyFileIO(const CMyFileIO&) = delete;
    CMyFileIO& operator=(const CMyFileIO&) = delete;

    // --- Opening and closing ---

    /// Opens the file of the object's name and returns whether it is open. An empty mode means "r".
    /// Closes an open file first. If the name is empty, does nothing and returns false.
    bool Open(CString mode);
    bool Open() { return Open(""); }
    /// Sets the object's name to `name` and opens that file. If a temporary file is open, closes
    /// and deletes it first; but if `name` is empty, it stays open and keeps its name.
    bool OpenFile(CString name, CString mode);
    bool OpenFile(CString name) { return OpenFile(name, ""); }
    /// Creates and opens a file for reading and writing that is deleted when it is closed. Its name
    /// is new in the folder `dir`; an empty `dir` means the current folder. If this fails, no file
    /// is open and none is left behind.
    bool OpenTempFile(CString dir);
    /// Returns whether a file was closed without an error. False if none was open.
    bool CloseFile();
    bool Close() { return CloseFile(); }

    // --- Reading ---

    /// Reads the next line, with its line feed but without carriage returns and NULs. Returns
    /// false, with an empty `line`, at the end of the file; a read error counts as the end. Beware:
    /// a locked `line` keeps its text, and the result is true unless that is empty. Use IsEOF()
    /// then.
    bool ReadString(CString& line);
    /// Reads up to `size` bytes and removes carriage returns and NULs. Does not add a NUL. Returns
    /// the length of the text that `block` then begins with. 0 means the end of the file, a read
    /// error, a `size` of 0, or that no file is open.
    unsigned ReadBlock(char* block, unsigned size);
    /// Whether a read has reached the end of the file, or no file is open. Still false when the
    /// last line was read with its line feed: only the next read reaches the end.
    bool IsEOF() const { return !m_bOpen || m_bEOF; }
    bool Rewind();  ///< Goes back to the start of the file. False if no file is open.

    // --- Writing. False if no file is open or the system refuses the text. ---

    bool WriteString(CString text);  ///< Adds no line feed.
    bool WriteStringNL() { return WriteString("\n"); }
    bool WriteStringNL(CString text);

    // --- Files by name ---

    bool Exists() const { return Exists(m_sFileName); }
    /// Whether the file can be opened for reading. Never waits, not even for the writer of a pipe.
    /// A file that another process holds by a lease counts: opening it waits, and then succeeds.
    static bool Exists(CString name);
    /// Whether reading the file may wait or never end: for a pipe, a terminal or another device.
    static bool IsEndless(const CString& name);
    /// Closes the object's file if it is open, then removes it. Returns whether this call removed
    /// it: false for an open temporary file, which closing has removed already.
    bool DeleteFile();
    static bool DeleteFile(CString name);
    /// Copies byte for byte up to the end of the source, and creates or overwrites the target.
    /// Returns false if one of the files cannot be opened. Does not notice errors while writing; a
    /// read error counts as the end. If both names are the same file, leaves it unchanged.
    static bool CopyFile(CString source, CString target);
    /// Sets the permissions to 0400 (only the owner may read) or 0200 (only the owner may write).
    static bool SetReadOnly(CString path, bool bReadOnly);
    /// These two list nothing: they empty `list` and return whether `dir` is a non-empty text.
    static bool GetSubdirectories(CString dir, CString& list);
    static bool GetFiles(CString dir, CString& list);

    // --- Files in memory ---

    /// A file that is held in memory, for reading.
    struct MemoryFileDef {
        const char* pPath;
        const char* pText;  ///< Ends at its first NUL, or after `nLength` bytes.
        std::size_t nLength;
    };
    /// From this call on, these files, and no others, exist for reading. `pFiles` must be sorted by
    /// path, in the order of strcmp. The caller keeps the array and the texts as long as files are
    /// opened or open. A null `pFiles` brings back the files of the system. Files that are opened
    /// for writing, too, are always those of the system.
    static void SetMemoryFiles(const MemoryFileDef* pFiles, std::size_t nCount);
    /// Removes the characters that no reader of text gets: carriage returns and NULs. Returns the
    /// length of the rest, with which `text` then begins. Does not add a NUL.
    static std::size_t RemoveDropped(char* text, std::size_t length);

    // --- Versions and comments ---

    /// Appends the "FileVersion" text in the version resource of an executable to `version`.
    /// Returns whether a complete text was found. Beware: appends an incomplete text too.
    bool GetFileVersion(CString& version) const { return GetFileVersion(m_sFileName, version); }
    static bool GetFileVersion(CString path, CString& version);
    /// Compares the first four fields of versions such as "5.0.2195.1620 (build 7)". Returns 1 if
    /// `first` is higher, -1 if it is lower, 0 if both are equal. A field that is missing or not a
    /// number counts as 0.
    static int CompareFileVersion(CString first, CString second);
    /// Whether the line begins with ";", "#" or "//" after blanks. Beware: CIniFile knows only ";".
    static bool IsComment(CString line);

private:
    bool m_bOpen = false;
    bool m_bEOF = true;            // a read has reached the end of the file; true in a new object
    bool m_bTemporary = false;     // the open file is deleted when it is closed
    std::FILE* m_pFile = nullptr;  // meaningful only while open
    CString m_sFileName;
};
