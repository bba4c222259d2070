/// \file
/// Taking SDL's events from their queue, and putting back what was not meant for the taker.
#pragma once

#include <SDL.h>

#include <vector>

namespace tamor
{
/// Puts `events` back into SDL's queue, in order, unless the last event that was polled, whether it
/// is among them or not, was an expose.
///
/// Meant: an expose that comes last drops all the collected events, which keeps a pending one from
/// being put back for ever; `GLRenderQueueGLTest.AnExposeBehindAFocusEventDropsBoth` holds it.
void putBackEvents(std::vector<SDL_Event>& events, Uint8 lastPolledType);
} // namespace tamor
