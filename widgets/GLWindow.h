/// \file
/// The main container: a plate with a title strip, by which it can be dragged.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <cstdint>
#include <string>

namespace tamor
{
/// A plate with a title, holding its children inside a margin of 3 times the theme's `margin`.
///
/// Its size is that of its content and its title, once `fitChildren` has run. The title strip is
/// the top two font heights. `hover` means that the pointer is over the strip of a draggable
/// window, or that the window is being dragged.
///
/// | State    | Event                                         | Next        |
/// |----------|-----------------------------------------------|-------------|
/// | still    | buttons with left, `hover` and `draggable`,   | dragging    |
/// |          | and no child hovered                          |             |
/// | dragging | pointer                                       | moves along |
/// | dragging | buttons without left, and no child hovered    | still       |
class TAMOR_EXPORT GLWindow : public GLWidget
{
public:
    /// \param isDraggable  whether the title strip takes the window along
    GLWindow(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
             const std::string& title, bool isDraggable);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool onPointer(float x, float y) override;
    bool render() override;
    std::string typeName() const override;
    /// Adds as any widget does, and widens for the title and two font widths.
    bool addChild(GLWidget* child) override;
    /// The area that a child `GLWindow` may be dragged in.
    Vector getClientRect() const override;
    /// Fits as any widget does, then widens for the title and makes room for the strip.
    bool fitChildren() override;
    bool deselect(GLWidget* chosen) override;
    bool hitTest() const override;

    /// OpenGL texture of the body: always 0, so that the body is never textured.
    std::uint32_t backdrop = 0;
    /// `mouse` as of the previous `onPointer`.
    Vector lastMouse;
    bool dragging = false; ///< the window follows the pointer
    bool draggable;        ///< by its strip, and only then

protected:
    /// Draws body and edge around the origin, and leaves polygons filled and blending on.
    void renderPlate() const;
    /// Draws the line across the window that divides its strip from its content, in OpenGL's colour.
    /// \param y  from the middle of the window
    void renderRule(float y) const;
    /// Draws the children inside the margin.
    void renderContent() const;

private:
    /// Moves by `delta`, unless that takes the window out of its parent's client rectangle.
    void drag(Vector delta);
    void widenForTitle();
};
} // namespace tamor
