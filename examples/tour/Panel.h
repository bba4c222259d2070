/// \file
/// The panel: what of the layout's widgets the tour reads and writes.
#pragma once

#include "examples/tour/Settings.h"
#include "kernel/Event.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tour
{
/// The GUI of the tour. It reads a widget only when somebody has changed it, so that scripts may
/// change a setting, too.
class Panel
{
public:
    /// What was pressed in a frame.
    struct Presses
    {
        bool another = false; ///< landscape
        bool reset = false;   ///< and the message box was answered with Yes
        bool trip = false;
        bool run = false;
        bool stop = false;
        bool leave = false;
    };

    /// Builds the widgets of "panel.gui"; called again, builds them anew as they were at first.
    /// \return false, after a line on the error stream, if that file is missing, for which the
    ///         engine would wait for ever; then there is no panel
    bool load(const std::vector<std::string>& scripts);

    /// Whether the pointer, in pixels, is over the panel.
    bool isUnder(const tamor::MouseState& mouse) const;

    /// Gives the GUI pointer and buttons. A press beside the text box takes its keyboard away, which
    /// the box itself would keep.
    void takePointer(const tamor::MouseState& mouse);

    /// Gives the GUI the keys.
    /// \return whether the text box has the keyboard, so that nobody else is to read it; also until
    ///         the Escape that has taken it away goes up
    bool takeKeys(const tamor::KeyboardState& keys);

    /// Lets time pass, and takes over what was changed.
    Presses update(std::int32_t milliseconds, Settings& settings);

    /// Which script is chosen, or -1 in a frame in which none was.
    int takeChosenScript();

    std::string scriptText() const;
    void showScript(const std::string& text);

    /// Shows the settings' numbers, and below them what happened last.
    void show(const Settings& settings, std::size_t thingCount);
    void tell(const std::string& words);

    void draw() const;

    // What pictures do in place of a user.

    /// Shows a page, from 0.
    void turnTo(int page);
    void tick(const std::string& box);
    void choose(const std::string& list, std::uint32_t row);

    bool isHidden = false;

private:
    void showFrameTime(std::int32_t milliseconds);
    bool hasMoved(const char* slider, float& value);

    bool isLoaded = false;
    bool asksForReset = false;
    bool endsTyping = false;                 ///< an Escape that is still down
    std::map<std::string, float> seenValues; ///< of sliders, ticks and lists, when last read
    bool showsFrameTimes = false;
    std::int32_t frames = 0;
    std::int32_t frameTime = 0; ///< milliseconds of these
};
} // namespace tour
