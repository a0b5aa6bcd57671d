#pragma once

#include "util/CString.h"

// The columns of a table.

constexpr const char* kNone = "-";

/// The text, or what a table has in place of an empty one.
inline CString orNone(const CString& text) { return text.IsEmpty() ? kNone : text; }

/// Makes a column wide enough for the printable text. A text that is very long shifts only its own
/// row.
void widen(int& width, const CString& text);

/// Prints the text and the blanks up to the next column.
void printColumn(const CString& text, int width);
