#include "tools/view/GuiSpace.h"

#include <utility>

namespace tamor::view
{
void GuiSpace::exchange()
{
    std::swap(widgets, GLWidget::widgets);
    std::swap(themes, GLWidget::themes);
    std::swap(font, GLWidget::font);
    std::swap(topLevel, GLWidget::topLevel);
    std::swap(messageResult, GLWidget::messageResult);
    std::swap(viewport, GLWidget::viewport);
    std::swap(glowRate, GLWidget::glowRate);
    std::swap(icons[0], GLWidget::optionFrame);
    std::swap(icons[1], GLWidget::optionMark);
    std::swap(icons[2], GLWidget::checkFrame);
    std::swap(icons[3], GLWidget::checkMark);
    std::swap(icons[4], GLWidget::sliderKnob);
}
} // namespace tamor::view
