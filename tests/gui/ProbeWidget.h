/// \file
/// A widget that tells what was asked of it, and a clean GUI for each test.
#pragma once

#include "gui/GLWidget.h"
#include "tests/support/TestWindow.h"
#include "textures/Font.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamor::test
{
/// A widget without looks whose fields a test can read and write.
class ProbeWidget : public GLWidget
{
public:
    using GLWidget::active;
    using GLWidget::children;
    using GLWidget::clicked;
    using GLWidget::depth;
    using GLWidget::dimensions;
    using GLWidget::elapsed;
    using GLWidget::fade;
    using GLWidget::glow;
    using GLWidget::hover;
    using GLWidget::lines;
    using GLWidget::mouse;
    using GLWidget::name;
    using GLWidget::parent;
    using GLWidget::position;
    using GLWidget::prevLeft;
    using GLWidget::prevMiddle;
    using GLWidget::prevRight;
    using GLWidget::selection;
    using GLWidget::text;
    using GLWidget::theme;
    using GLWidget::value;

    using GLWidget::brightness;
    using GLWidget::drawIcon;
    using GLWidget::drawPlate;
    using GLWidget::drawText;
    using GLWidget::isChildHovered;
    using GLWidget::measureText;
    using GLWidget::passButtonsToChildren;
    using GLWidget::renderChildren;
    using GLWidget::setColour;
    using GLWidget::translateToCentre;
    using GLWidget::translateToText;

    explicit ProbeWidget(const std::string& newName, GLWidget* newParent = nullptr,
                         const Vector& newPosition = {}, Theme* newTheme = nullptr)
        : GLWidget(newName, newParent, newPosition, newTheme)
    {}

    bool onMouseButtons(bool left, bool middle, bool right) override
    {
        prevLeft = left;
        prevMiddle = middle;
        prevRight = right;
        log.push_back(name + " buttons");
        return answer;
    }

    bool onKeys(const std::uint8_t* pressed) override
    {
        log.push_back(name + " keys");
        keys = pressed;
        return GLWidget::onKeys(pressed);
    }

    bool onPointer(float x, float y) override
    {
        log.push_back(name + " pointer");
        return GLWidget::onPointer(x, y);
    }

    bool update(std::int32_t milliseconds) override
    {
        log.push_back(name + " update");
        return GLWidget::update(milliseconds);
    }

    bool render() override
    {
        log.push_back(name + (drawing ? " render" : " render outside renderAll"));
        return true;
    }

    bool fitChildren() override
    {
        log.push_back(name + " fit");
        return GLWidget::fitChildren();
    }

    bool deselect(GLWidget* chosen) override
    {
        log.push_back(name + " deselect");
        chosenOther = chosen;
        active = false;
        return true;
    }

    bool isExclusive() const override { return exclusive; }

    bool exclusive = false;
    bool answer = false; ///< of `onMouseButtons`
    const std::uint8_t* keys = nullptr;
    GLWidget* chosenOther = nullptr; ///< the argument of the last `deselect`

    /// What all probes were asked, oldest first.
    static inline std::vector<std::string> log;
};

/// The fields of a widget of any class.
inline std::vector<GLWidget*>& childrenOf(GLWidget& widget)
{
    return widget.*&ProbeWidget::children;
}
inline GLWidget* parentOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::parent;
}
inline Vector positionOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::position;
}
inline Vector dimensionsOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::dimensions;
}
inline std::string textOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::text;
}
inline std::vector<std::string> linesOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::lines;
}
inline Theme* themeOf(const GLWidget& widget)
{
    return widget.*&ProbeWidget::theme;
}

/// Puts the state of the GUI back to that of a new process.
inline void clearGui()
{
    GLWidget::widgets.clear();
    GLWidget::themes.clear();
    GLWidget::topLevel.clear();
    GLWidget::font = Font();
    GLWidget::messageResult = 0;
    GLWidget::viewport = {};
    GLWidget::glowRate = 0.0F;
    GLWidget::optionFrame = {};
    GLWidget::optionMark = {};
    GLWidget::checkFrame = {};
    GLWidget::checkMark = {};
    GLWidget::sliderKnob = {};
    ProbeWidget::log.clear();
}

/// Fills `theme` with the built-in values, but for the texture.
inline void fillTheme(Theme& theme)
{
    theme.textColour = {1.0F, 1.0F, 1.0F};
    theme.edgeColour = {1.0F, 0.71F, 0.16F};
    theme.bodyColour = {0.8F, 0.8F, 0.8F};
    theme.spareColour = {0.3F, 0.3F, 0.3F};
    theme.bodyAlpha = 1.0F;
    theme.listAlpha = 0.8F;
    theme.lineWidth = 2.0F;
    theme.margin = 0.005F;
    theme.chamfer = 0.1F;
    theme.spareSize = 0.003F;
    theme.fontSize = {0.04F, 0.05F};
    theme.dimBrightness = 0.7F;
    theme.litBrightness = 1.0F;
    theme.pressOffset = {0.005F, -0.005F};
    theme.iconSize = 0.1F;
    theme.glowEnabled = true;
}

/// The base of suites that build widgets and draw nothing: `theme` is the theme "default".
class GuiTest : public testing::Test
{
protected:
    void SetUp() override
    {
        clearGui();
        fillTheme(theme);
        GLWidget::themes["default"] = &theme;
    }

    void TearDown() override { clearGui(); }

    Theme theme;
};

/// The same with a window.
class GuiGLTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        clearGui();
        fillTheme(theme);
        GLWidget::themes["default"] = &theme;
    }

    void TearDown() override
    {
        clearGui();
        WindowTest::TearDown();
    }

    Theme theme;
};
} // namespace tamor::test
