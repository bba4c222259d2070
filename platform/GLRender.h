/// \file
/// The window, and the presentation of frames.
///
/// The folder platform/ holds the two catchers that own SDL's window and SDL's events, and the
/// header that stands for GLee. It draws nothing.
#pragma once

#include "TamorExport.h"
#include "kernel/Kernel.h"

#include <cstdint>
#include <string>

namespace tamor
{
/// Opens the window with its OpenGL context, presents each frame, and ends the loop when the user
/// closes the window.
///
/// It swaps the buffers on `EV_RENDER`, before the catchers behind it draw: what they draw is seen
/// one frame later.
class TAMOR_EXPORT GLRender : public EventCatcher
{
public:
    /// Registers itself for the classes window, update and render. The kernel is not kept.
    explicit GLRender(const ObjectRef<Kernel>& kernel);

    /// `EV_OPEN_WINDOW`: opens the window. \return false if that failed, after printing one of:
    ///     SDL_Init() failed. SDL Error: <SDL's words>
    ///     SDL_GetVideoInfo() failed. SDL Error: <SDL's words>
    ///     SDL_SetVideoMode() Failed. SDL_Error: <SDL's words>
    ///     error initialising GLee
    /// `EV_UPDATE`: \return false if the user asked to close the window.
    /// `EV_RENDER`: presents what was drawn. `EV_QUIT`: closes SDL's video subsystem.
    bool handleEvent(Event event) override;

private:
    static bool openWindow(const std::string& title, std::int32_t width, std::int32_t height,
                           std::int32_t depth, bool fullscreen);
    static bool checkForQuit();
};
} // namespace tamor
