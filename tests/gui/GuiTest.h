/// \file
/// A clean GUI for each test, with a font and a theme of round numbers, and the input that tests
/// make.
#pragma once

#include "tests/gui/CleanGui.h"
#include "tests/gui/Seen.h"
#include "tests/support/TestWindow.h"
#include "textures/Font.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tamor::test
{
/// A look of numbers that floats hold exactly, no two of them alike where it could matter.
inline Theme roundTheme()
{
    Theme theme;
    theme.textColour = {0.5F, 0.25F, 1.0F};
    theme.edgeColour = {1.0F, 0.5F, 0.25F};
    theme.bodyColour = {0.75F, 0.5F, 0.25F};
    theme.bodyAlpha = 0.5F;
    theme.listAlpha = 0.75F;
    theme.lineWidth = 2.0F;
    theme.margin = 0.0625F;
    theme.chamfer = 0.125F;
    theme.fontSize = {0.125F, 0.25F};
    theme.dimBrightness = 0.5F;
    theme.litBrightness = 1.0F;
    theme.pressOffset = {0.0625F, -0.125F};
    theme.iconSize = 0.5F;
    theme.glowEnabled = true;
    theme.texture = 7;
    return theme;
}

/// The look of the parts of boxes and tab windows: the round theme's sizes of text, so that the
/// parts are as large as with it, and everything else different.
inline Theme partTheme()
{
    Theme theme = roundTheme();
    theme.textColour = {0.125F, 0.5F, 0.75F};
    theme.edgeColour = {0.25F, 1.0F, 0.5F};
    theme.bodyColour = {0.25F, 0.75F, 1.0F};
    theme.bodyAlpha = 0.25F;
    theme.lineWidth = 3.0F;
    theme.margin = 0.5F;
    theme.chamfer = 0.0625F;
    theme.dimBrightness = 0.25F;
    theme.litBrightness = 0.75F;
    theme.texture = 8;
    return theme;
}

/// The base of the GUI's suites: a GUI with `theme` as the theme "default", a view of 800 by 600,
/// icons side by side, and a font in which every character is half a unit wide, so 1/16 with the
/// theme's font size. `Base` gives a window or none.
template <class Base>
class GuiTestOf : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        clearGui();
        GLWidget::viewport = {0, 0, 800, 600};
        GLWidget::glowRate = 0.25F;
        GLWidget::optionFrame = {0.0F, 0.0F, 0.25F, 0.5F};
        GLWidget::optionMark = {0.25F, 0.0F, 0.5F, 0.5F};
        GLWidget::checkFrame = {0.5F, 0.0F, 0.75F, 0.5F};
        GLWidget::checkMark = {0.75F, 0.0F, 1.0F, 0.5F};
        GLWidget::sliderKnob = {0.0F, 0.5F, 0.25F, 1.0F};
        GLWidget::font.advance.fill(0.5F);
        GLWidget::themes["default"] = &theme;
        // The parts of the box and of the tab window need no files then.
        GLWidget::themes["combo_button.theme"] = &buttonTheme;
        GLWidget::themes["tabwin_button.theme"] = &buttonTheme;
    }

    void TearDown() override
    {
        built.clear();
        clearGui();
        Base::TearDown();
    }

    /// Builds a widget with `theme`, which lives as long as the test.
    template <class Widget, class... Arguments>
    Seen<Widget>& make(const std::string& name, GLWidget* parent, Vector position,
                       const Arguments&... arguments)
    {
        auto widget = std::make_unique<Seen<Widget>>(name, parent, position, &theme, arguments...);
        Seen<Widget>& result = *widget;
        built.push_back(std::move(widget));
        // Building asks OpenGL, and without a window nobody answers.
        GLWidget::viewport = {0, 0, 800, 600};
        return result;
    }

    Theme theme = roundTheme();
    Theme buttonTheme = partTheme();

private:
    std::vector<std::unique_ptr<GLWidget>> built;
};

/// For suites that draw nothing.
using GuiTest = GuiTestOf<testing::Test>;
/// For suites that draw.
using GuiGLTest = GuiTestOf<WindowTest>;

/// A pointer event as the application makes it: a move, and then the buttons.
inline void point(GLWidget& widget, float x, float y, bool left)
{
    widget.onPointer(x, y);
    widget.onMouseButtons(left, false, false);
}

/// A `pressed` array with these keys down.
inline std::array<std::uint8_t, 512> keysDown(const std::vector<int>& keys)
{
    std::array<std::uint8_t, 512> pressed{};
    for (const int key : keys)
        pressed[static_cast<std::size_t>(key)] = 1;
    return pressed;
}
} // namespace tamor::test
