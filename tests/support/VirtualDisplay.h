/// \file
/// An X server without a screen, for windows that nobody sees.
#pragma once

#include <sys/types.h>

#include <string>

namespace tamor::test
{
/// Runs an Xvfb of 1024 by 768 pixels for as long as it lives.
class VirtualDisplay
{
public:
    /// Starts the server and waits until it answers. Ends the process, in words, if it does not.
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// What DISPLAY must hold to reach it, such as ":99".
    const std::string& name() const { return displayName; }

private:
    pid_t owner;
    pid_t server = -1;
    std::string displayName;
};

/// Points DISPLAY at the display that TAMOR_TEST_DISPLAY names or else at one of this process's
/// own. Later calls do nothing.
void useTestDisplay();
} // namespace tamor::test
