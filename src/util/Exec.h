#pragma once

#include "util/CString.h"

/// Runs an external command, and remembers why the last attempt failed.
///
/// Run() uses the command interpreter and waits for the command. Execute() replaces the process by
/// the program. Neither prints anything: DisplayLastError() describes a failure.
///
///     CExec exec("tar cf backup.tar /etc");
///     if (!exec.Run()) exec.DisplayLastError();
class CExec {
public:
    CExec() = default;
    explicit CExec(CString command);

    void Initialize();  ///< Resets the object to the state of a new one, without a command.

    /// Runs the command in the interpreter and waits until it ends. Returns whether the interpreter
    /// could be started, even if the command itself failed. If the command is empty, returns false
    /// and keeps the last error.
    bool Run();
    bool Run(CString command);  ///< Stores the command, then runs it.

    /// Replaces the process by the program of the command. Returns only on failure, with false. The
    /// command is split at spaces, without quoting, and each word is trimmed of CString::kBlanks.
    /// The first word names the program, which is searched on PATH if the word has no "/". Argument
    /// 0 is the GetName() of that word. If the command is empty, or memory for the argument
    /// vector runs out, returns false and keeps the last error.
    bool Execute();
    bool Execute(CString command);  ///< Stores the command, then executes it.

    /// The errno of the last failure, or kNoInterpreter. 0 if there was no failure.
    int GetLastError() const { return m_nLastError; }
    /// Reports the last failure on standard error. Returns the last error.
    int DisplayLastError() const;

    static constexpr int kNoInterpreter = 999;  ///< There is no command interpreter.

private:
    enum Mode { kNone = 0, kRun = 1, kExecute = 2 };  // the last operation

    int m_nLastError = 0;
    Mode m_nMode = kNone;
    CString m_sCommand;
};
