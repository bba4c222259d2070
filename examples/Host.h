/// \file
/// What the examples that open a window have in common, so that each is about its own facility.
#pragma once

#include "camera/FPSCamera.h"
#include "platform/GLRender.h"
#include "platform/SDLInput.h"

#include <string>
#include <utility>
#include <vector>

/// Takes "--screenshot FILE" off the end of a command line. Returns the file's absolute path, "" if
/// none is asked for.
std::string takeScreenshotOption(std::vector<std::string>& words);

/// What `EV_RENDER` answers when all is drawn: true, or false once the screenshot that was asked
/// for is written.
bool goesOnAfterFrame(const std::string& screenshot);

/// Whether an event is not Escape.
bool isNotEscape(const tamor::Event& event);

/// Flies by W, S, A, D, space and left Control, and looks round while the left button is dragged.
void fly(tamor::FPSCamera& camera, const tamor::Event& event);

/// Runs a catcher behind the input and the window, who register before it, and so are served first.
/// Returns the exit status of the program.
template <class Catcher, class... Arguments>
int runHost(Arguments&&... arguments)
{
    using namespace tamor;
    const ObjectRef<Kernel> kernel = new Kernel;
    const ObjectRef<EventCatcher> input = new SDLInput(kernel, false);
    const ObjectRef<EventCatcher> window = new GLRender(kernel);
    const ObjectRef<EventCatcher> catcher =
        new Catcher(kernel, std::forward<Arguments>(arguments)...);
    const bool hasRun = kernel->run();
    collectAll();
    return hasRun ? 0 : 1;
}
