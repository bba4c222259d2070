/// \file
/// What a user does, written down.
#pragma once

#include "TamorExport.h"
#include "kernel/Kernel.h"

#include <fstream>
#include <string>

namespace tamor
{
/// Writes each input event and each frame's time to a file, from which `InputPlayer` plays the run
/// again.
///
/// It stands behind the input and the window and before the catchers that use what the user does:
/// so it writes what they receive, in that order, and nothing of a frame that never came to them.
///
/// The file is text, a line an event. Numbers are whole and in decimal, with one space before each.
///
/// | Line | Event | What follows the word |
/// |---|---|---|
/// | `tamor input 1` | none | the first line |
/// | `keyboard` | `EV_KEYBOARD` | the modifiers; "held" and the indices of the held keys; "pressed" and those of the pressed ones; no word where there are none |
/// | `mouse` | `EV_MOUSE` | x, y, z, dx, dy, dz; left, middle, right: 1 while held |
/// | `update` | `EV_UPDATE` | `delta`; the events before it, up to the `update` before, are this frame's |
///
/// Each line is in the file when the event comes to the next catcher: a recording of a program that
/// crashes ends with what it crashed on.
class TAMOR_EXPORT InputRecorder : public EventCatcher
{
public:
    /// Registers itself for the classes resources, update, mouse and keyboard.
    InputRecorder(const ObjectRef<Kernel>& kernel, std::string newPath);

    /// `EV_LOAD_RESOURCES`: creates the file, or empties the one that is there. The input events and
    /// `EV_UPDATE`: adds a line. `EV_RELEASE_RESOURCES`: closes the file.
    /// \return false, which ends the run, if the file cannot be written, after printing
    ///     Error writing input file '<path>'
    bool handleEvent(Event event) override;

private:
    std::string path;
    std::ofstream file;
};
} // namespace tamor
