/// \file
/// A recorded run, played again.
#pragma once

#include "TamorExport.h"
#include "kernel/Kernel.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
/// Takes the place of `SDLInput` and of the clock: plays what an `InputRecorder` wrote, frame by
/// frame, so that the other catchers receive the same events in the same order, with the same
/// `delta`s.
///
/// The catchers register with the kernel that the player is given, as ever. They are the ones of
/// the recorded run, without `SDLInput` and the recorder. The player runs that kernel from a second
/// one, in which it is the only catcher: it hands on each event of the run, with the recorded
/// `delta` in place of the real one, and sends the recorded input before each update. What the user
/// does is taken from SDL and forgotten, but for closing the window.
///
/// The run ends where the recorded one did: by what the catchers answer to the same events, or at
/// the end of the file. A frame takes as long as it takes to draw.
class TAMOR_EXPORT InputPlayer : public EventCatcher
{
public:
    /// Registers itself with no kernel but its own; the file is read by `run`.
    InputPlayer(const ObjectRef<Kernel>& newKernel, std::string newPath);

    /// Runs the whole life cycle, instead of `kernel->run()`. The file is read and tested as a whole
    /// before anything else is loaded.
    /// \return what `Kernel::run` does. False, too, if the file cannot be played, after printing one
    ///         of these and the kernel's line about resources:
    ///         Error reading input file '<path>'
    ///         Error reading input file '<path>', line <number>: <what is wrong there>
    bool run();

    /// What `run` does with the events of its own kernel.
    bool handleEvent(Event event) override;

private:
    bool readFile();
    bool playFrame(Event& event);

    ObjectRef<Kernel> kernel;
    ObjectRef<Kernel> loop; ///< sends the events of the run to this object alone
    std::string path;
    std::vector<std::string> lines; ///< of the file, behind the title; all can be read
    std::size_t nextLine = 0;
    std::int32_t delta = 0; ///< of the frame that is played
};
} // namespace tamor
