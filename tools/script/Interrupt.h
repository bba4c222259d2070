/// \file
/// Ctrl-C, which ends a script or a line and not the program.
#pragma once

namespace tamor::scripts
{
/// Has the interrupt signal be noted, and running scripts end at their next test.
void catchInterrupts();

/// \return whether there was an interrupt since this was last asked
bool takeInterrupt();
} // namespace tamor::scripts
