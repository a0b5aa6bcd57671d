#pragma once

#include <cstdint>

#include "util/CString.h"

/// The base class of a class code in words, such as "bridge" for 0x060400. An unknown base class
/// gives "class " and the code.
CString classInWords(std::uint32_t classCode);
