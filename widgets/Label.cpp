#include "widgets/Label.h"

#include "maths/Utilities.h"

#include <GL/gl.h>

#include <algorithm>

namespace tamor
{
Label::Label(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
             const std::string& caption)
    : GLWidget(newName, newParent, newPosition, newTheme)
{
    // Meant: the height follows the number of line ends, not of lines, so that two lines are as
    // high as one; `LabelSize.TwoLinesAreAsHighAsOne` holds it.
    const auto rows = static_cast<float>(std::max(1, countOccurrences(caption, "\n")));
    text = caption;
    dimensions = Vector(measureText(text) + theme->fontSize.x, theme->fontSize.y * 1.5F * rows);
}

bool Label::onMouseButtons(bool /*left*/, bool /*middle*/, bool /*right*/)
{
    return true;
}

bool Label::render()
{
    glPushMatrix();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    translateToCentre();
    setColour(theme->textColour);
    translateToText();
    drawText(text);
    glPopMatrix();
    return true;
}

std::string Label::typeName() const
{
    return "Label";
}

bool Label::deselect(GLWidget* /*chosen*/)
{
    return true;
}
} // namespace tamor
