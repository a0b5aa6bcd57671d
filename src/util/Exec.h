#pragma once

#include "util/CString.h"

/// Runs an external command, and remembers why the last attempt failed.
///
/// Run() goes through the command interpreter and waits; Execute() replaces the process by the
/// program. Neither prints anything: DisplayLastError() puts a failure into words.
///
///     CExec exec("tar cf backup.tar /etc");
///     if (!exec.Run()) exec.DisplayLastError();
class CExec {
public:
    CExec() = default;
    explicit CExec(CString command);

    void Initialize();  ///< No command, no error, nothing run: as new.

    /// Runs the command in the interpreter and waits for its end. Whether the interpreter could be
    /// started: a command that ran and failed has run. An empty command is false, and leaves the
    /// last error alone.
    bool Run();
    bool Run(CString command);  ///< Stores the command first.

    /// Replaces the process by the command's program, so it returns only on failure, with false.
    /// The command is split at spaces, without quoting, and each word trimmed of CString::kBlanks;
    /// the first word is looked for as typed, through PATH when it holds no "/", and its GetName()
    /// becomes argument 0. An empty command, and no memory for the arguments, is false and leaves
    /// the last error alone.
    bool Execute();
    bool Execute(CString command);  ///< Stores the command first.

    /// The errno of the last failure, or kNoInterpreter; 0 when there was none.
    int GetLastError() const { return m_nLastError; }
    /// Reports the last failure on standard error, changes nothing, and returns the last error.
    int DisplayLastError() const;

    static constexpr int kNoInterpreter = 999;  ///< There is no command interpreter.

private:
    enum Mode { kNone = 0, kRun = 1, kExecute = 2 };  // the last operation tried

    int m_nLastError = 0;
    Mode m_nMode = kNone;
    CString m_sCommand;
};
