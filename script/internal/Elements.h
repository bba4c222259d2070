/// \file
/// The elements of arrays, as scripts reach them. Not for hosts.
#pragma once

#include "script/ScriptValue.h"

namespace tamor::script
{
/// As `ScriptValue::arrayElement`, which makes an array of any value.
/// \return null, after printing one line, where memory does not hold the array
ScriptValue* findElement(ScriptValue& array, unsigned index);
} // namespace tamor::script
