/// \file
/// The text of a value as a string's sum has it. Not for hosts.
#pragma once

#include "script/ScriptValue.h"

#include <string>

namespace tamor::script
{
/// Appends a string, a number or the "NULL" of a `TYPE_NULL`; an array has no such text. No locale
/// of the host's is asked.
void appendText(std::string& text, const ScriptValue& value);
} // namespace tamor::script
