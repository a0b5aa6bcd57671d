#pragma once

#include "util/CString.h"

/// The text in a form that is safe to print on a terminal. Control characters, line feeds included,
/// and bytes that are not UTF-8, such as overlong forms, become "\xNN".
CString printable(const CString& text);

/// How many characters a printable text has. Most of them take one column of a terminal.
int countCharacters(const CString& printableText);
