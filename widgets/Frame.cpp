#include "widgets/Frame.h"

#include <GL/gl.h>

namespace tamor
{
Frame::Frame(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
             bool isBordered)
    : GLWidget(newName, newParent, newPosition, newTheme), bordered(isBordered)
{}

bool Frame::onMouseButtons(bool left, bool middle, bool right)
{
    passButtonsToChildren(left, middle, right);
    return true;
}

bool Frame::onPointer(float x, float y)
{
    mouse = Vector(x, y);
    passPointerToChildren(x - position.x - inset(), y - position.y - inset());
    return true;
}

bool Frame::render()
{
    glPushMatrix();
    translateToCentre();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glLineWidth(theme->lineWidth);
    if (bordered) {
        setColour(theme->edgeColour, theme->dimBrightness, theme->bodyAlpha);
        glEnable(GL_BLEND);
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        drawPlate(theme->chamfer * dimensions.y, theme->chamfer);
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    }
    // Meant: once more than it takes; `FrameDrawingGLTest.MakesTheseCallsWithABorder` holds it.
    glDisable(GL_TEXTURE_2D);
    glPopMatrix();

    glPushMatrix();
    glTranslatef(position.x + inset(), position.y + inset(), 0.0F);
    renderChildren();
    glPopMatrix();
    return true;
}

std::string Frame::typeName() const
{
    return "Frame";
}

Vector Frame::getClientRect() const
{
    return clientRectBelowTitle();
}

bool Frame::deselect(GLWidget* chosen)
{
    deselectChildren(chosen);
    return true;
}

float Frame::inset() const
{
    return bordered ? innerMargin() : 0.0F;
}
} // namespace tamor
