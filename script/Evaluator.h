/// \file
/// How token lists are executed: expressions by reduction, statements one after the other.
#pragma once

#include "TamorExport.h"
#include "script/ScriptToken.h"

#include <cstdint>
#include <vector>

namespace tamor
{
class ScriptInterpreter;

/// Computes the value of an expression: groups in parentheses first, then each operator of
/// `scriptOperators` in the order of the rows, each from the right to the left.
///
/// A list that is no expression, such as `1 2`, is evaluated again and again until the stack ends.
/// Where one operator stands beside another the value is `TYPE_NULL`, and a missing ")" is taken to
/// stand at the list's end.
/// \param list  is left in an undefined state
TAMOR_EXPORT ScriptValue evaluateTokens(ScriptInterpreter& interpreter,
                                        std::vector<ScriptToken>& list);

/// Applies the operator in row `kind` of `scriptOperators`. "=", "++" and "--" write to an operand.
/// \return `TYPE_NULL` for a kind that is no operator with operands
TAMOR_EXPORT ScriptValue applyOperator(ScriptInterpreter& interpreter, ScriptValue& left, int kind,
                                       ScriptValue& right);

/// Runs the statements of a list. Tokens behind the last `TOK_SEMICOLON` are not run.
/// \return the literal of the `return` that was reached, or else the last value that was true
TAMOR_EXPORT ScriptValue runTokens(ScriptInterpreter& interpreter, std::vector<ScriptToken>& list);
} // namespace tamor
