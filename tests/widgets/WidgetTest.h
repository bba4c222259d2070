/// \file
/// A clean GUI with a font and a theme of round numbers, for tests of the widget classes.
#pragma once

#include "gui/GLWidget.h"
#include "gui/Theme.h"
#include "tests/support/GLRecorder.h"
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
/// A widget whose fields a test can read and write.
template <class Widget>
class Seen : public Widget
{
public:
    using Widget::Widget;

    using Widget::active;
    using Widget::children;
    using Widget::clicked;
    using Widget::depth;
    using Widget::dimensions;
    using Widget::fade;
    using Widget::glow;
    using Widget::hover;
    using Widget::lines;
    using Widget::mouse;
    using Widget::name;
    using Widget::parent;
    using Widget::position;
    using Widget::prevLeft;
    using Widget::prevMiddle;
    using Widget::prevRight;
    using Widget::selection;
    using Widget::text;
    using Widget::theme;
    using Widget::value;
};

/// The fields of widgets that a test did not build itself.
class Fields : public GLWidget
{
public:
    static std::vector<GLWidget*>& childrenOf(GLWidget& widget)
    {
        return widget.*(&Fields::children);
    }
    static const std::string& nameOf(GLWidget& widget) { return widget.*(&Fields::name); }
    static const std::string& textOf(GLWidget& widget) { return widget.*(&Fields::text); }
    static const Vector& positionOf(GLWidget& widget) { return widget.*(&Fields::position); }
    static GLWidget* parentOf(GLWidget& widget) { return widget.*(&Fields::parent); }
    static Theme* themeOf(GLWidget& widget) { return widget.*(&Fields::theme); }

    /// The names of the children, front to back.
    static std::vector<std::string> namesOfChildren(GLWidget& widget)
    {
        std::vector<std::string> names;
        for (GLWidget* child : childrenOf(widget))
            names.push_back(nameOf(*child));
        return names;
    }
};

/// What a test says of input: a pointer event is a move and then the buttons, as the application
/// makes it.
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

/// Puts the state of the GUI back to a test's start: a view of 800 by 600, icons side by side, and
/// a font in which every character is half a unit wide, so 1/16 with the theme's font size.
inline void resetGui(Theme& theme)
{
    GLWidget::widgets.clear();
    GLWidget::themes.clear();
    GLWidget::topLevel.clear();
    GLWidget::messageResult = 0;
    GLWidget::viewport = {0, 0, 800, 600};
    GLWidget::glowRate = 0.25F;
    GLWidget::optionFrame = {0.0F, 0.0F, 0.25F, 0.5F};
    GLWidget::optionMark = {0.25F, 0.0F, 0.5F, 0.5F};
    GLWidget::checkFrame = {0.5F, 0.0F, 0.75F, 0.5F};
    GLWidget::checkMark = {0.75F, 0.0F, 1.0F, 0.5F};
    GLWidget::sliderKnob = {0.0F, 0.5F, 0.25F, 1.0F};
    GLWidget::font = Font();
    GLWidget::font.advance.fill(0.5F);

    theme = Theme();
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
    GLWidget::themes["default"] = &theme;
    // The parts of the box and of the tab window need no files then.
    GLWidget::themes["combo_button.theme"] = &theme;
    GLWidget::themes["tabwin_button.theme"] = &theme;
}

/// The base of suites of widgets: `Base` gives a window or none.
template <class Base>
class WidgetTestOf : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        resetGui(theme);
    }

    void TearDown() override
    {
        built.clear();
        GLWidget::widgets.clear();
        GLWidget::themes.clear();
        GLWidget::topLevel.clear();
        Base::TearDown();
    }

    /// Builds a widget with `theme`, which lives as long as the test.
    template <class Widget, class... Arguments>
    Seen<Widget>& make(const std::string& name, GLWidget* parent, const Vector& position,
                       const Arguments&... arguments)
    {
        auto widget = std::make_unique<Seen<Widget>>(name, parent, position, &theme, arguments...);
        Seen<Widget>& result = *widget;
        built.push_back(std::move(widget));
        // Building asks OpenGL, and without a window nobody answers.
        GLWidget::viewport = {0, 0, 800, 600};
        return result;
    }

    Theme theme;

private:
    std::vector<std::unique_ptr<GLWidget>> built;
};

/// For suites that draw nothing.
using WidgetTest = WidgetTestOf<testing::Test>;
/// For suites that draw.
using WidgetGLTest = WidgetTestOf<WindowTest>;

/// The calls that `widget.render()` makes, a line each, with two foldings: a primitive is one line
/// of its vertices, each "x,y" and the texture coordinates in brackets if it has some of its own;
/// and what `Font::print` makes of one piece of text is one line such as
///     print "two/lines"
std::string callsOfRender(GLWidget& widget);
} // namespace tamor::test
