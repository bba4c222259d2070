/// \file
/// The end of a run that has come to a limit. Not for hosts.
#pragma once

#include "script/ScriptInterpreter.h"

namespace tamor::script
{
/// Notes that a limit is reached, unless one is already, and says so on the error stream:
///     The script ends at its limit of <number> steps
/// or "bytes", or "calls within calls".
void reachLimit(ScriptInterpreter& interpreter, ScriptLimit limit, std::uint64_t number);
} // namespace tamor::script
