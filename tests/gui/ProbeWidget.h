/// \file
/// A widget that tells what was asked of it.
#pragma once

#include "tests/gui/GuiTest.h"

#include <string>
#include <vector>

namespace tamor::test
{
/// A widget without looks whose fields a test can read and write.
class ProbeWidget : public Seen<GLWidget>
{
public:
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
                         Vector newPosition = {}, Theme* newTheme = nullptr)
        : Seen(newName, newParent, newPosition, newTheme)
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

/// The base of suites of probes: nothing was asked yet.
template <class Base>
class ProbeTestOf : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        ProbeWidget::log.clear();
    }
};

using ProbeTest = ProbeTestOf<GuiTest>;
using ProbeGLTest = ProbeTestOf<GuiGLTest>;
} // namespace tamor::test
