#include "widgets/Button.h"

#include "maths/GLState.h"

#include <GL/gl.h>

namespace tamor
{
Button::Button(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
               const std::string& caption)
    : GLWidget(newName, newParent, newPosition, newTheme)
{
    text = caption;
    dimensions = Vector(measureText(text) + theme->fontSize.x, theme->fontSize.y * 1.5F);
}

Button::Button(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
               Vector size)
    : GLWidget(newName, newParent, newPosition, newTheme), image(theme->texture)
{
    dimensions = size;
}

bool Button::onMouseButtons(bool left, bool middle, bool right)
{
    if (hover && !prevLeft) {
        // Meant: with left up this takes back a click that nobody has read; the application reads
        // once a frame, before that. `ButtonState.APointerEventWithLeftUpTakesAnUnreadClickBack`
        // holds it.
        active = left;
        clicked = left;
    } else {
        // A held button counts as hovered wherever the pointer is, a released one as left.
        active = active && left;
        hover = active;
    }
    rememberButtons(left, middle, right);
    return false;
}

bool Button::render()
{
    const bool isImage = text.empty();
    const float cutShare = 3.0F * theme->chamfer;
    const float cut = cutShare * dimensions.y;

    glLineWidth(theme->lineWidth);
    glPushMatrix();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    if (active)
        glTranslatef(theme->pressOffset.x, theme->pressOffset.y, 0.0F);
    if (isImage) {
        glEnable(GL_TEXTURE_2D);
        bindTexture(image);
    }
    translateToCentre();
    glPushMatrix();

    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->bodyColour, brightness());
    // Meant: once more than it takes; `ButtonDrawingGLTest.MakesTheseCallsWithAnImage` holds it.
    if (isImage)
        glEnable(GL_TEXTURE_2D);
    drawPlate(cut, cutShare);

    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setColour(theme->edgeColour, brightness());
    glDisable(GL_TEXTURE_2D);
    drawPlate(cut, cutShare);

    glPopMatrix();
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->textColour);
    translateToText();
    drawText(text);
    glPopMatrix();
    return true;
}

std::string Button::typeName() const
{
    return "Button";
}

bool Button::deselect(GLWidget* /*chosen*/)
{
    return true;
}
} // namespace tamor
