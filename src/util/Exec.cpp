#include "util/Exec.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "util/ErrorHandler.h"

namespace {
struct ErrorWords {
    int error;
    const char* words;
};
constexpr ErrorWords kErrorWords[] = {
    {ENOENT, "Path or file name not found."},
    {E2BIG, "Arg list too long."},
    {ENOEXEC, "Exec format error."},
    {ENOMEM, "Not enough memory."},
    {EINVAL, "Invalid argument."},
    {CExec::kNoInterpreter, "Command interpreter not found.\n\nCOMSPEC = "},
};

// Empty for an error that the table does not have.
CString wordsFor(int error) {
    CString words;
    for (const ErrorWords& row : kErrorWords)
        if (row.error == error) words = row.words;
    if (error == CExec::kNoInterpreter) words += std::getenv("COMSPEC");
    return words;
}

// Fills the argument vector, which has room for all words and a null pointer, with copies of the
// words of the line. Removes the directory from the first word, and returns the word with it.
CString splitCommand(CString line, char** arguments) {
    CString program;
    char* rest = nullptr;
    for (char* next = strtok_r(line.GetBuffer(), " ", &rest); next;
         next = strtok_r(nullptr, " ", &rest)) {
        CString word = next;
        word.Trim();
        if (word.IsEmpty()) continue;
        if (program.IsEmpty()) {
            program = word;
            word = word.GetName();
        }
        *arguments++ = word.GetCharString();
    }
    return program;
}
}  // namespace

CExec::CExec(CString command) : m_sCommand(std::move(command)) {}

void CExec::Initialize() {
    m_sCommand.Empty();
    m_nLastError = 0;
    m_nMode = kNone;
}

bool CExec::Run() {
    m_nMode = kRun;
    if (m_sCommand.IsEmpty()) return false;
    if (std::system(nullptr) == 0) {
        m_nLastError = kNoInterpreter;
        return false;
    }
    if (std::system(m_sCommand.c_str()) == -1) {
        m_nLastError = errno;
        return false;
    }
    return true;
}

bool CExec::Run(CString command) {
    m_sCommand = std::move(command);
    return Run();
}

bool CExec::Execute() {
    m_nMode = kExecute;
    if (m_sCommand.IsEmpty()) return false;
    // Room for a word from each token, and for the null.
    char** arguments = new (std::nothrow) char*[m_sCommand.GetNumberTokens(" ") + 1]();
    if (!arguments) return false;
    const CString program = splitCommand(m_sCommand, arguments);
    execvp(program.c_str(), arguments);
    m_nLastError = errno;  // the program was not started
    for (unsigned i = 0; arguments[i]; ++i) delete[] arguments[i];
    delete[] arguments;
    return false;
}

bool CExec::Execute(CString command) {
    m_sCommand = std::move(command);
    return Execute();
}

int CExec::DisplayLastError() const {
    static constexpr const char* kOpenings[] = {"", "System call failed.  Unable to run ",
                                                "Exec call failed.  Unable to run "};
    const CString message =
        kOpenings[m_nMode] + m_sCommand + "\n\n" + wordsFor(m_nLastError) + "\n";
    CErrorHandler().ErrorHandler(CErrorHandler::ecWarn, CErrorHandler::ecSystem, message.c_str());
    return m_nLastError;
}
