#include "widgets/GLWindow.h"

#include <GL/gl.h>

#include <algorithm>

namespace tamor
{
GLWindow::GLWindow(const std::string& newName, GLWidget* newParent, Vector newPosition,
                   Theme* newTheme, const std::string& title, bool isDraggable)
    : GLWidget(newName, newParent, newPosition, newTheme), draggable(isDraggable)
{
    text = title;
}

bool GLWindow::onMouseButtons(bool left, bool middle, bool right)
{
    passButtonsToChildren(left, middle, right);
    // A press on a child never starts a drag of its parent.
    if (isChildHovered())
        return false;
    // Meant: no edge is looked for, so that a button already down when the pointer comes onto the
    // strip starts a drag; `GLWindowDrag.StartsWithAButtonThatWasDownBefore` holds it.
    dragging = left && hover && draggable;
    return true;
}

bool GLWindow::onPointer(float x, float y)
{
    mouse = Vector(x, y);
    if (dragging)
        drag(Vector(mouse.x - lastMouse.x, mouse.y - lastMouse.y));
    lastMouse = mouse;

    passPointerToChildren(x - position.x - innerMargin(), y - position.y - innerMargin());
    // Meant: over a child `hover` keeps what it was, true as well as false;
    // `GLWindowHover.StaysTrueWhileAChildIsHovered` holds it.
    if (isChildHovered())
        return true;
    hover = hitTest() || dragging;
    return true;
}

bool GLWindow::render()
{
    glPushMatrix();
    translateToCentre();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    backdrop = 0;
    // Meant: the chamfer, not `lineWidth`, so that the edge is the thinnest line that the driver
    // offers; `GLWindowDrawingGLTest.MakesTheseCalls` holds it.
    glLineWidth(theme->chamfer);
    renderPlate();

    const Vector& size = dimensions;
    const Vector& fontSize = theme->fontSize;
    const float rule = std::min(size.y / 2.0F - 1.5F * fontSize.y,
                                -size.y / 2.0F + (1.0F - theme->chamfer) * size.y);
    glDisable(GL_TEXTURE_2D);
    setColour(theme->edgeColour, brightness(), theme->bodyAlpha);
    renderRule(rule);

    setColour(theme->textColour);
    glTranslatef(-size.x / 2.0F + theme->chamfer * size.y,
                 size.y / 2.0F - 1.5F * fontSize.y + fontSize.y / 3.0F, 0.0F);
    drawText(text);
    glPopMatrix();

    renderContent();
    return true;
}

void GLWindow::renderPlate() const
{
    const float cut = theme->chamfer * dimensions.y;

    // Meant: blending is first enabled for the edge, so that the body is drawn with whatever the
    // widget before left; `GLWindowDrawingGLTest.MakesTheseCalls` holds it.
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->bodyColour, brightness(), theme->bodyAlpha);
    drawPlate(cut, theme->chamfer);

    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setColour(theme->edgeColour, brightness(), theme->bodyAlpha);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    drawPlate(cut, theme->chamfer);

    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

void GLWindow::renderRule(float y) const
{
    glBegin(GL_LINES);
    glVertex2f(-dimensions.x / 2.0F, y);
    glVertex2f(dimensions.x / 2.0F, y);
    glEnd();
}

void GLWindow::renderContent() const
{
    glPushMatrix();
    glTranslatef(position.x + innerMargin(), position.y + innerMargin(), 0.0F);
    renderChildren();
    glPopMatrix();
}

std::string GLWindow::typeName() const
{
    return "GLWindow";
}

bool GLWindow::addChild(GLWidget* child)
{
    GLWidget::addChild(child);
    widenForTitle();
    return true;
}

Vector GLWindow::getClientRect() const
{
    return clientRectBelowTitle();
}

bool GLWindow::fitChildren()
{
    GLWidget::fitChildren();
    widenForTitle();
    for (const GLWidget* child : children) {
        const float top = child->getRect().w;
        dimensions.y = std::max(dimensions.y, innerMargins() + top + 2.0F * theme->fontSize.y);
    }
    return true;
}

bool GLWindow::deselect(GLWidget* chosen)
{
    deselectChildren(chosen);
    return true;
}

bool GLWindow::hitTest() const
{
    const float top = position.y + dimensions.y;
    const bool isOverStrip = mouse.x > position.x && mouse.x < position.x + dimensions.x &&
                             mouse.y > top - 2.0F * theme->fontSize.y && mouse.y < top;
    return isOverStrip && draggable;
}

void GLWindow::drag(Vector delta)
{
    const Vector from = position;
    position += delta;
    if (parent == nullptr)
        return;

    // Meant: the rectangle is in the parent's inner coordinates and its bounds are in the outer
    // ones; they are compared as they stand. `GLWindowDrag.IsBoundedByTheParent` holds it.
    const Vector rect = getRect();
    const Vector bounds = parent->getClientRect();
    const bool isInside =
        rect.x > bounds.x && rect.y > bounds.y && rect.z < bounds.z && rect.w < bounds.w;
    if (!isInside)
        position = from;
}

void GLWindow::widenForTitle()
{
    dimensions.x = std::max(dimensions.x, measureText(text) + 2.0F * theme->fontSize.x);
}
} // namespace tamor
