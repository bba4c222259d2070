/// \file
/// The walk along a variable's path, for the tokenizer and the evaluator. Not for hosts.
#pragma once

#include "script/ScriptValue.h"
#include "script/internal/Scanner.h"

namespace tamor
{
class ScriptInterpreter;

/// Follows a path from a value that is reached already, or from nowhere when it starts with a name.
/// \return as `resolveVariable`
ScriptValue* followPath(ScriptInterpreter& interpreter, Scanner path, ScriptValue* result);
} // namespace tamor
