/// \file
/// The way from script text to token lists.
#pragma once

#include "TamorExport.h"
#include "script/ScriptPositions.h"
#include "script/ScriptToken.h"

#include <string>
#include <vector>

namespace tamor
{
class ScriptInterpreter;

/// Scans the whole text and appends its tokens to `out`, or to the body of the function that the
/// text, or an earlier one, has begun and not ended.
///
/// Nothing is reported: what is no part of the language disappears, and unbalanced text gives a
/// list that is run as it stands.
///
/// | Text | Tokens |
/// |---|---|
/// | `x = 1;` | variable `x`; operator "="; number 1; `TOK_SEMICOLON` |
/// | `f(a, 2)` | `TOK_CALL` named `f`, `args` variable `a`, `TOK_ARGEND`, number 2, `TOK_ARGEND` |
/// | `f()` | `TOK_CALL` named `f`, `args` one `TOK_ARGEND` |
/// | `if (a)` | `TOK_IF`, `args` variable `a`, `TOK_ARGEND`; then `TOK_SEMICOLON` |
/// | "{" or "}" | `TOK_OPEN_BRACE` or `TOK_CLOSE_BRACE`; then `TOK_SEMICOLON` |
/// | `func f(a)` | nothing in the list: what follows joins the body of `f` until its "}" |
///
/// Throws `std::out_of_range` where the text ends inside a string or an index.
/// \return true
TAMOR_EXPORT bool parseText(ScriptInterpreter& interpreter, std::vector<ScriptToken>& out,
                            std::string text);

/// As above, and tells where each token begins. Tokens that were in a list before have no position
/// there unless an earlier text gave them one.
TAMOR_EXPORT bool parseText(ScriptInterpreter& interpreter, std::vector<ScriptToken>& out,
                            std::string text, ScriptPositions& positions);
} // namespace tamor
