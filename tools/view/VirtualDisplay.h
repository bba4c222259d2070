/// \file
/// A display for windows that nobody sees.
#pragma once

#include <sys/types.h>

#include <string>

namespace tamor::view
{
/// Whether the environment names a display that a window could be opened on.
bool hasDisplay();

/// An Xvfb of the process's own. It ends with this object, and with the process however that ends.
class VirtualDisplay
{
public:
    VirtualDisplay() = default;
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// Starts the server with one screen, and points DISPLAY at it once it answers.
    /// \return empty, or why there is no display
    std::string start(int width, int height);

private:
    pid_t server = -1;
};
} // namespace tamor::view
