#pragma once

/// The error reporter: prints a fixed message for a kind of error, with a detail, on standard
/// error, and then ends the process, returns, or asks the user, as its caller wishes.
///
/// It holds no data. Make one on the stack where an error is met, and call ErrorHandler once:
///
///     CErrorHandler().ErrorHandler(CErrorHandler::ecWarn, CErrorHandler::ecFileOpen, path);
class CErrorHandler {
public:
    /// One enumeration for both arguments of ErrorHandler: what to do, and what went wrong.
    enum ErrorCodeDef : int {
        // Reactions. Any other value behaves as ecWarn.
        ecAbort = 0,  ///< End the process with exit status 1.
        ecWarn = 1,   ///< Return to the caller.
        ecAsk = 2,    ///< Ask on standard error, end the process unless the answer is yes.

        // Kinds. Any other value gives a message of one line feed, without the detail.
        ecSystem = 1,
        ecProgram = 2,
        ecCustom = 3,  ///< The detail alone.
        ecMemory = 4,
        ecFileOpen = 5,
        ecFileRead = 6,
        ecFileWrite = 7,
        ecFileClose = 8,
        ecParse = 9,  ///< The detail stands in the middle, and is left out when empty.
        ecTcpIp = 10,
    };

    CErrorHandler() = default;
    virtual ~CErrorHandler() = default;

    /// Prints the message of `kind` with `detail`, which may be null, then does what `reaction`
    /// says; returns only when the program is to go on. A message longer than 511 characters is
    /// cut there. To ecAsk, an answer that begins with y or Y is a yes; the rest of its line is
    /// read and dropped; the end of standard input is a no. Never allocates.
    void ErrorHandler(ErrorCodeDef reaction, ErrorCodeDef kind, const char* detail);
};
