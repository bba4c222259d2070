/// \file
/// Recorded input as text: a line an event. `InputRecorder` tells of the format.
#pragma once

#include "kernel/Event.h"

#include <ostream>
#include <string_view>

namespace tamor
{
/// The first line of a recording.
constexpr std::string_view recordingTitle = "tamor input 1";

/// Writes an `EV_KEYBOARD`, `EV_MOUSE` or `EV_UPDATE` as a line. The stream's locale is the classic
/// one.
void writeInput(std::ostream& stream, const Event& event);

/// Reads a line, without its end, into `event`, which holds the event of the line before: a mouse
/// event goes with the keys of the keyboard event that it follows.
/// \return what is wrong with the line, in words; null if nothing is
const char* readInput(std::string_view line, Event& event);
} // namespace tamor
