/// \file
/// The functions that scripts may call here, besides the language's own.
#pragma once

#include "script/ScriptInterpreter.h"

namespace tamor::scripts
{
/// Adds sqrt(x), length(x), which counts an array's elements or a string's characters, and
/// item(array, i), which gets at an element whose index is computed.
void addHostFunctions(ScriptInterpreter& interpreter);
} // namespace tamor::scripts
