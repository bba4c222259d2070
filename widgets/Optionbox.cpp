#include "widgets/Optionbox.h"

namespace tamor
{
bool Optionbox::onMouseButtons(bool left, bool middle, bool right)
{
    const bool isChoice = hover && left && !prevLeft && !active;
    if (isChoice) {
        active = true;
        fade = 1.0F;
    }
    rememberButtons(left, middle, right);
    return isChoice;
}

bool Optionbox::render()
{
    renderIcons(optionFrame, optionMark);
    return true;
}

bool Optionbox::isExclusive() const
{
    return true;
}

std::string Optionbox::typeName() const
{
    return "Optionbox";
}

bool Optionbox::deselect(GLWidget* /*chosen*/)
{
    if (active)
        fade = 1.0F;
    active = false;
    return true;
}
} // namespace tamor
