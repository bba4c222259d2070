/// \file
/// How script text is cut into tokens: the tests on its front, the scanners that take from its
/// front, and the way from a variable's path to the variable.
#pragma once

#include "TamorExport.h"
#include "script/ScriptValue.h"

#include <string>

namespace tamor
{
class ScriptInterpreter;

/// True when `text` begins with `prefix`, which any text does with an empty one.
TAMOR_EXPORT bool startsWith(const std::string& text, const std::string& prefix);

/// True for a space, a tab or a newline at the front; a carriage return is no space.
TAMOR_EXPORT bool isSpaceChar(const std::string& text);

/// True for a digit, a "." or a "-" at the front.
TAMOR_EXPORT bool isNumberChar(const std::string& text);

/// True for a letter, a "-", a "_" or a ":" at the front. A digit is no part of a name.
TAMOR_EXPORT bool isNameChar(const std::string& text);

/// True for a double quote at the front.
TAMOR_EXPORT bool isQuoteChar(const std::string& text);

/// True when every character is space; true for an empty text.
TAMOR_EXPORT bool isAllSpace(const std::string& text);

/// Removes the run of space characters at the front.
TAMOR_EXPORT void skipSpace(std::string& text);

/// Removes the run of number characters at the front, and returns it.
TAMOR_EXPORT std::string readNumberText(std::string& text);

/// Removes the run of name characters at the front, and returns it.
TAMOR_EXPORT std::string readName(std::string& text);

/// Removes a variable's path from the front, and returns it: a name with any number of literal
/// indices, such as `grid[3][4]`. The path of `a[i]` is `a[i`.
///
/// Throws `std::out_of_range` where the text ends inside an index.
TAMOR_EXPORT std::string readVariablePath(std::string& text);

/// Removes the quoted string at the front, and returns its content. An apostrophe is dropped, and
/// the character behind it is taken as it stands, a double quote or an apostrophe too.
///
/// Throws `std::out_of_range` where the text ends inside the string.
TAMOR_EXPORT std::string readStringLiteral(std::string& text);

/// Finds the value that a path names. Names and elements that are new are created, also by a path
/// that is only read. An index that is no integer counts as 0.
/// \return a place in the interpreter's table, good for its lifetime without indices and else until
///         the array grows; null where the path does not start with a name or goes on behind it
///         with anything but an index or a name
TAMOR_EXPORT ScriptValue* resolveVariable(ScriptInterpreter& interpreter, const std::string& path);
} // namespace tamor
