#include "widgets/Checkbox.h"

#include "maths/GLState.h"

#include <GL/gl.h>

#include <algorithm>

namespace tamor
{
Checkbox::Checkbox(const std::string& newName, GLWidget* newParent, Vector newPosition,
                   Theme* newTheme, const std::string& caption)
    : GLWidget(newName, newParent, newPosition, newTheme)
{
    const float side = theme->iconSize;
    text = caption;
    dimensions = Vector(side, side);
    if (text.empty())
        return;
    dimensions = Vector(measureText(text + " ") + side + theme->fontSize.x,
                        std::max(side, 2.0F * theme->fontSize.y));
}

bool Checkbox::onMouseButtons(bool left, bool middle, bool right)
{
    const bool isPress = hover && left && !prevLeft;
    if (isPress) {
        active = !active;
        fade = 1.0F;
    }
    rememberButtons(left, middle, right);
    return isPress;
}

bool Checkbox::render()
{
    renderIcons(checkFrame, checkMark);
    return true;
}

void Checkbox::renderIcons(const Vector& frame, const Vector& mark) const
{
    const float side = theme->iconSize;

    glPushMatrix();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    bindTexture(theme->texture);
    setColour(theme->bodyColour, brightness());
    drawIcon(frame, position.x, position.y, side);
    if (active || fade > animationEnd) {
        // A tick fades in and out as `fade` runs down from 1 to 0.
        const float strength =
            active ? (1.0F - fade) * theme->litBrightness : theme->litBrightness * fade;
        setColour(theme->bodyColour, strength, strength);
        drawIcon(mark, position.x, position.y, side);
    }
    setColour(theme->textColour);
    glTranslatef(position.x + side, position.y + side / 4.0F, 0.0F);
    // One buffer for all boxes, so that drawing a frame allocates nothing.
    static std::string caption;
    caption = ' ';
    caption += text;
    drawText(caption);
    glPopMatrix();
}

std::string Checkbox::typeName() const
{
    return "Checkbox";
}

bool Checkbox::deselect(GLWidget* /*chosen*/)
{
    return true;
}
} // namespace tamor
