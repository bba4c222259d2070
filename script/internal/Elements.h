/// \file
/// The elements of arrays, as scripts reach them. Not for hosts.
#pragma once

#include "script/ScriptInterpreter.h"

namespace tamor::script
{
/// As `ScriptValue::arrayElement`, which makes an array of any value.
/// \return null, after printing one line, where memory does not hold the array, and where the limits
///         of a run do not
ScriptValue* findElement(ScriptInterpreter& interpreter, ScriptValue& array, unsigned index);
} // namespace tamor::script
