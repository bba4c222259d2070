#include "widgets/Slider.h"

#include "maths/GLState.h"

#include <GL/gl.h>

namespace tamor
{
namespace
{
/// At or below this on either axis, `lastMouse` means that there was no pointer before.
constexpr float nowhere = -5.0F;
} // namespace

Slider::Slider(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
               Vector newExtent)
    : GLWidget(newName, newParent, newPosition, newTheme),
      lastMouse(nowhere, nowhere),
      extent(newExtent)
{
    dimensions = extent;
    value = 0.5F;
}

bool Slider::onMouseButtons(bool left, bool middle, bool right)
{
    passButtonsToChildren(left, middle, right);
    if (isChildHovered())
        return false;

    if (hover && !prevLeft)
        dragging = left;
    else {
        dragging = dragging && left;
        hover = dragging;
    }
    rememberButtons(left, middle, right);
    return true;
}

bool Slider::onPointer(float x, float y)
{
    mouse = Vector(x, y);
    if (dragging && hitTest() && lastMouse.x > nowhere && lastMouse.y > nowhere) {
        if (isVertical())
            drag(mouse.y - lastMouse.y, extent.y);
        else if (extent.y == 0.0F)
            drag(mouse.x - lastMouse.x, extent.x);
    }
    lastMouse = mouse;

    passPointerToChildren(x, y);
    if (isChildHovered())
        return true;
    hover = hitTest() || dragging;
    return true;
}

bool Slider::render()
{
    const float half = theme->iconSize / 2.0F;
    const float quarter = theme->iconSize / 4.0F;

    glPushMatrix();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    setColour(theme->bodyColour, brightness(), 0.5F);
    glLineWidth(theme->lineWidth);
    glTranslatef(0.0F, quarter, 0.0F);

    glBegin(GL_LINES);
    if (isVertical()) {
        glVertex2f(position.x, position.y);
        glVertex2f(position.x + extent.x, position.y + extent.y + quarter);
    } else {
        glVertex2f(position.x + half, position.y - quarter);
        glVertex2f(position.x + extent.x + half, position.y + extent.y - quarter);
    }
    glEnd();

    bindTexture(theme->texture);
    glEnable(GL_TEXTURE_2D);
    const float knobX = value * extent.x + position.x;
    const float knobY = value * extent.y + position.y;
    if (isVertical()) {
        glTranslatef(knobX, knobY, 0.0F);
        glRotatef(90.0F, 0.0F, 0.0F, 1.0F);
    } else
        glTranslatef(knobX + half, knobY - quarter, 0.0F);
    drawIcon(sliderKnob, -half, -half, theme->iconSize);
    glPopMatrix();
    return true;
}

std::string Slider::typeName() const
{
    return "Slider";
}

Vector Slider::getRect() const
{
    const float side = theme->iconSize;
    const float half = side / 2.0F;
    const float right = position.x + dimensions.x;
    const float top = position.y + dimensions.y;
    if (isVertical())
        return {position.x - half, position.y, right + half, top + side};
    return {position.x, position.y - half, right + side, top + half};
}

bool Slider::deselect(GLWidget* /*chosen*/)
{
    return true;
}

bool Slider::hitTest() const
{
    const float half = theme->iconSize / 2.0F;
    return mouse.x > position.x - half && mouse.x < position.x + dimensions.x + half &&
           mouse.y > position.y - half && mouse.y < position.y + dimensions.y + half;
}

bool Slider::isVertical() const
{
    return extent.x == 0.0F;
}

void Slider::drag(float motion, float length)
{
    // The aspect cancels out but for its rounding.
    const float aspect = 2.0F * static_cast<float>(viewport[2]) / static_cast<float>(viewport[3]);
    const float scale = aspect / (aspect * length);
    const float candidate = motion * scale + value;
    // Meant: a motion that would reach an end is refused, not clamped, so that the value is never 0
    // or 1 and the knob can fall behind the pointer; `SliderDrag.RefusesToReachAnEnd` holds
    // it. A slider without a length has no finite scale, and nothing passes.
    if (candidate > 0.0F && candidate < 1.0F)
        value = candidate;
}
} // namespace tamor
