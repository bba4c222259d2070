/// \file
/// Values and token lists as short texts, for the tests of the script language to compare.
#pragma once

#include "script/ScriptToken.h"

#include <string>
#include <vector>

namespace tamor::test
{
/// A value as text that tells types apart: "null", "int 3", "float 0.5", "string abc",
/// "[int 1, null]".
std::string described(const ScriptValue& value);

/// A token list as text, with a space between tokens. Operators, braces, ";" and the keywords stand
/// as they are written; a variable is its path, a literal its described value in angle brackets, a
/// TOK_ARGEND is "#", a call or a header is its word with its list in parentheses: `f( a # )`.
std::string described(const std::vector<ScriptToken>& list);

/// The functions of an interpreter, a line each: name, parameters and body.
template <typename Functions>
std::string describedFunctions(const Functions& functions)
{
    std::string text;
    for (const auto& [name, function] : functions)
        text += "func " + name + "( " + described(function.parameters) + " ) " +
                described(function.body) + "\n";
    return text;
}
} // namespace tamor::test
