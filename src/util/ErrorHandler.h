#pragma once

/// The error reporter. It prints a fixed message for a kind of error, with a detail text, on
/// standard error. Then it ends the process, returns, or asks the user, as the caller chooses.
///
/// It holds no data. Create one where the error occurs, and call ErrorHandler() once:
///
///     CErrorHandler().ErrorHandler(CErrorHandler::ecWarn, CErrorHandler::ecFileOpen, "notes.txt");
class CErrorHandler {
public:
    /// One enumeration for both arguments of ErrorHandler(): the reaction and the kind of error.
    /// Its type is fixed, so that any int can be passed as a value.
    enum ErrorCodeDef : int {
        // Reactions. Any other value acts as ecWarn.
        ecAbort = 0,  ///< End the process with exit status 1.
        ecWarn = 1,   ///< Return to the caller.
        ecAsk = 2,    ///< Ask on standard error. End the process unless the answer is yes.

        // Kinds. Any other value gives a message of one line feed, without the detail.
        ecSystem = 1,
        ecProgram = 2,
        ecCustom = 3,  ///< The detail alone.
        ecMemory = 4,
        ecFileOpen = 5,
        ecFileRead = 6,
        ecFileWrite = 7,
        ecFileClose = 8,
        ecParse = 9,  ///< The detail is in the middle of the message. It may be empty.
        ecTcpIp = 10,
    };

    CErrorHandler() = default;
    virtual ~CErrorHandler() = default;

    /// Prints the message of `kind` with `detail`, which may be null, and then does what `reaction`
    /// says. Returns only if the program is to go on. Cuts a message after 511 characters. Needs no
    /// memory to compose it. With ecAsk, reads the first line of standard input that is not blank.
    /// The line means yes if its first character after white space is y or Y. The end of standard
    /// input means no.
    void ErrorHandler(ErrorCodeDef reaction, ErrorCodeDef kind, const char* detail);
};
