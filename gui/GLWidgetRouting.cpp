// The road of input, time and drawing through the tree of widgets. No widget swallows anything:
// what overlaps reacts together.

#include "gui/GLWidget.h"

#include <GL/gl.h>

#include <cstddef>

namespace tamor
{
namespace
{
// Children in front of this depth are drawn first, those behind it last. An open list has -1.
constexpr float lastPassDepth = -0.5F;

void renderChild(GLWidget& child)
{
    glPushMatrix();
    child.render();
    glPopMatrix();
}

// Calls `action` with each top-level widget, front to back. It may open further ones, such as a
// message box: these are reached too, so that the press that opens a box is none on its buttons.
template <class Action>
void forEachTopLevel(Action action)
{
    for (std::size_t i = 0; i < GLWidget::topLevel.size(); ++i)
        action(*GLWidget::topLevel[i]);
}
} // namespace

bool GLWidget::onMouseMove(float pixelX, float pixelY)
{
    const auto width = static_cast<float>(viewport[2]);
    const auto height = static_cast<float>(viewport[3]);
    const float x = ((2.0F * pixelX / width) - 1.0F) * width / height;
    const float y = (pixelY * -2.0F / height) + 1.0F; // pixels count from the top

    mouse = {x, y};
    onPointer(x, y);
    return true;
}

bool GLWidget::onKeys(const std::uint8_t* pressed)
{
    for (GLWidget* child : children)
        child->onKeys(pressed);
    return true;
}

bool GLWidget::onPointer(float x, float y)
{
    mouse = {x, y};
    hover = hitTest();
    passPointerToChildren(x, y);
    return true;
}

bool GLWidget::mouseMoved(Vector pixels)
{
    forEachTopLevel([&](GLWidget& widget) { widget.onMouseMove(pixels.x, pixels.y); });
    return true;
}

bool GLWidget::mouseButtons(bool left, bool middle, bool right)
{
    forEachTopLevel([=](GLWidget& widget) { widget.onMouseButtons(left, middle, right); });
    return true;
}

bool GLWidget::keysChanged(const std::uint8_t* pressed)
{
    forEachTopLevel([=](GLWidget& widget) { widget.onKeys(pressed); });
    return true;
}

bool GLWidget::updateAll(std::int32_t milliseconds)
{
    forEachTopLevel([=](GLWidget& widget) { widget.update(milliseconds); });
    pollMessageBox();
    return true;
}

bool GLWidget::renderAll()
{
    const auto aspect = static_cast<double>(viewport[2]) / static_cast<double>(viewport[3]);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(-aspect, aspect, -1.0, 1.0, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);

    glPushAttrib(GL_ENABLE_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_COLOR_MATERIAL);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);

    drawing = true;
    forEachTopLevel([](GLWidget& widget) { widget.render(); });
    glPopAttrib();

    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    drawing = false;
    return true;
}

bool GLWidget::release()
{
    return true;
}

void GLWidget::passButtonsToChildren(bool left, bool middle, bool right)
{
    GLWidget* chosen = nullptr;
    for (GLWidget* child : children)
        if (child->onMouseButtons(left, middle, right) && child->isExclusive())
            chosen = child;

    if (chosen == nullptr)
        return;
    for (GLWidget* child : children)
        if (child != chosen)
            child->deselect(chosen);
}

void GLWidget::passPointerToChildren(float x, float y)
{
    for (GLWidget* child : children)
        child->onPointer(x, y);
}

bool GLWidget::isChildHovered() const
{
    for (const GLWidget* child : children)
        if (child->isHovered())
            return true;
    return false;
}

void GLWidget::renderChildren() const
{
    // Meant: strict on both sides, so that a depth of exactly -0.5 is drawn in neither pass.
    // `GLWidgetRenderChildrenGLTest.DrawsAChildAtTheLimitInNeitherPass` holds it.
    for (GLWidget* child : children)
        if (child->getDepth() > lastPassDepth)
            renderChild(*child);
    for (GLWidget* child : children)
        if (child->getDepth() < lastPassDepth)
            renderChild(*child);
}
} // namespace tamor
