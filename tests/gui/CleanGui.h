/// \file
/// The GUI's state, put back to that of a new process.
#pragma once

#include "gui/GLWidget.h"
#include "textures/Font.h"

namespace tamor::test
{
/// Empties all registries and sets everything else back. Widgets and themes stay in memory, as they
/// always do.
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
}
} // namespace tamor::test
