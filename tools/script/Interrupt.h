/// \file
/// Ctrl-C, which ends a script or a line and not the program.
#pragma once

namespace tamor::scripts
{
/// Has the interrupt signal be noted, and running scripts end at their next test.
void catchInterrupts();

/// Forgets an interrupt. To be called before a line is read, so that one that comes between the
/// line and its run ends the run.
/// \return whether there was one
bool takeInterrupt();
} // namespace tamor::scripts
