#pragma once

#include "util/CString.h"

/// The text in a form that is safe to print on a terminal. Control characters, line feeds included,
/// and bytes that are not UTF-8 become "\xNN".
CString printable(const CString& text);

/// How many columns a printable text takes.
int countColumns(const CString& printableText);
