/// \file
/// What the viewer shows.
#pragma once

#include "kernel/Event.h"
#include "tools/check/Check.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

namespace tamor::view
{
class Overlay;

/// A file, or a shape with a name, that can be read, read anew, drawn and worked. The window is
/// open before anything of it is called.
class Subject
{
public:
    virtual ~Subject() = default;

    /// Whether there is a file to read.
    virtual bool isThere() const = 0;

    /// What the checker is to take the file for; nothing for a shape without a file.
    virtual std::optional<check::FileKind> kind() const = 0;

    /// Whether a file with errors is shown all the same.
    virtual bool isShownWithErrors() const { return false; }

    /// Reads the file, or reads it anew and goes on showing the place and the moment that are
    /// shown.
    /// \param changed  names of the files that have changed since the last reading
    /// \return what was read, in words, such as "12 widgets"
    virtual std::string read(const std::set<std::string>& changed) = 0;

    /// Every file that a reading depends on, whether it is there or not.
    virtual std::set<std::filesystem::path> files() const = 0;

    virtual void takeKeys(const KeyboardState& keys) = 0;
    virtual void takePointer(const MouseState& pointer) = 0;
    /// \param notches  how far the wheel was turned away from the user
    virtual void takeWheel(int notches) = 0;
    virtual void update(std::int32_t milliseconds) = 0;
    /// Lets all animation come to rest.
    virtual void settle() = 0;
    /// Draws into the cleared window.
    virtual void draw() = 0;
    /// Adds what is to be seen above the drawing.
    virtual void decorate(Overlay& overlay) = 0;
};

/// \return how many steps the keys of this frame zoom in: "+", or "=" without Shift, and "-"
int zoomOf(const KeyboardState& keys);
} // namespace tamor::view
