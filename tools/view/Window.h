/// \file
/// The viewer's window and the wheel of its mouse.
#pragma once

#include "platform/GLRender.h"

#include <string>

namespace tamor::view
{
/// The engine's window with a size and a title of the viewer's own.
class Window : public GLRender
{
public:
    Window(const ObjectRef<Kernel>& kernel, int newWidth, int newHeight, std::string newTitle);

    bool handleEvent(Event event) override;

private:
    int width;
    int height;
    std::string title;
};

/// The wheel, which the engine's input passes on to nobody. Register it in front of that, which
/// takes all events of the mouse from SDL's queue.
class Wheel : public EventCatcher
{
public:
    explicit Wheel(const ObjectRef<Kernel>& kernel);

    bool handleEvent(Event event) override;

    /// \return how many notches the wheel was turned away from the user since this was last asked
    int take();

private:
    int notches = 0;
};
} // namespace tamor::view
