#pragma once

#include <cstdio>

#include "util/CString.h"

/// A text file that is read and written line by line, and the file utilities of the system.
///
/// The object owns its stream, and closes it in its destructor. Failures are results; nothing is
/// printed. Modes are those of fopen, and whatever fopen opens can be used: pipes and devices too,
/// with fopen's waiting for the other end of a pipe. A folder reads as an empty file. Files opened
/// to write text are line buffered, so a line counts as written when the system has taken it.
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

    /// Opens the file of the object's name; an empty mode means "r". An open file is closed first,
    /// but with an empty name nothing is done. Whether the file is open.
    bool Open(CString mode);
    bool Open() { return Open(""); }
    /// Takes `name` as the object's name and opens it. A temporary file goes under its own name.
    bool OpenFile(CString name, CString mode);
    bool OpenFile(CString name) { return OpenFile(name, ""); }
    /// Opens a new file in `dir`, for reading and writing, that is deleted when it is closed. An
    /// empty `dir` is the current folder. No other process can have a file of that name. On
    /// failure, nothing is open and nothing is left.
    bool OpenTempFile(CString dir);
    /// Whether the file was closed without an error; false also when none was open.
    bool CloseFile();
    bool Close() { return CloseFile(); }

    // --- Reading ---

    /// Reads the next line with its line feed, without carriage returns and NULs; false when
    /// nothing is left, or when a read error ended the file early: `line` is then empty. A locked
    /// `line` keeps its text, of which the result then tells: ask IsEOF() for the end.
    bool ReadString(CString& line);
    /// Reads up to `size` bytes, drops carriage returns and NULs, and adds no NUL. How many are
    /// left: 0 only at the end of the file, after a read error, or for a `size` of 0.
    unsigned ReadBlock(char* block, unsigned size);
    /// Whether a read has met the end of the file, or no file is open. After the last line has been
    /// read in full this is still false.
    bool IsEOF() const { return !m_bOpen || m_bEOF; }
    bool Rewind();  ///< Back to the first line; false when no file is open.

    // --- Writing. Each gives false when no file is open or the system refuses the text. ---

    bool WriteString(CString text);  ///< Adds no line end.
    bool WriteStringNL() { return WriteString("\n"); }
    bool WriteStringNL(CString text);

    // --- Files by name ---

    bool Exists() const { return Exists(m_sFileName); }
    /// Whether the file can be opened for reading. Never waits, not even for a pipe's writer.
    static bool Exists(CString name);
    bool DeleteFile();  ///< Closes the object's file if open, then removes it.
    static bool DeleteFile(CString name);
    /// Copies byte for byte, up to the end of the source or the first read error; the target is
    /// created or replaced. False when one of them cannot be opened. Errors on the way are not
    /// noticed. A file copied onto itself stays as it is.
    static bool CopyFile(CString source, CString target);
    /// Replaces all permissions by "the owner may read" (0400) or "the owner may write" (0200).
    static bool SetReadOnly(CString path, bool bReadOnly);
    /// Both only check `dir`: `list` is emptied and stays empty. False for an empty `dir`.
    static bool GetSubdirectories(CString dir, CString& list);
    static bool GetFiles(CString dir, CString& list);

    // --- Versions and comments ---

    /// Appends to `version` the "FileVersion" text of an executable's version resource. Whether a
    /// complete one was found; what was read of a cut one is appended all the same.
    bool GetFileVersion(CString& version) const { return GetFileVersion(m_sFileName, version); }
    static bool GetFileVersion(CString path, CString& version);
    /// 1, -1 or 0 as `first` is the higher, the lower or the same version in its first four fields,
    /// e.g. "5.0.2195.1620 (build 7)". A missing field, or one that is no number, counts as 0.
    static int CompareFileVersion(CString first, CString second);
    /// Whether the line begins, after blanks, with ";", "#" or "//". (In a CIniFile only ";" does.)
    static bool IsComment(CString line);

private:
    bool m_bOpen = false;
    bool m_bEOF = true;            // the last read met the end of the file
    bool m_bTemporary = false;     // the open file is deleted when it is closed
    std::FILE* m_pFile = nullptr;  // meaningful only while open
    CString m_sFileName;
};
