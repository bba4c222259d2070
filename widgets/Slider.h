/// \file
/// A value between 0 and 1, dragged along a line.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <string>

namespace tamor
{
/// A line with a knob. The application reads its `value` with `getValue`: 0.5 at first, and by
/// dragging never exactly 0 or 1.
///
/// The slider is vertical if `extent.x` is 0, otherwise horizontal if `extent.y` is 0. With neither
/// it is drawn on the diagonal and does not respond to dragging.
///
/// | State    | Event                                     | Next                         |
/// |----------|-------------------------------------------|------------------------------|
/// | idle     | press over the area, left not down before | dragging                     |
/// | dragging | pointer inside the area                   | `value` follows the motion   |
/// | dragging | pointer outside the area                  | dragging, `value` stays      |
/// | dragging | buttons without left                      | idle, and no hover until the |
/// |          |                                           | next pointer event           |
class TAMOR_EXPORT Slider : public GLWidget
{
public:
    /// \param newExtent  length of the line along x and y, in GUI units
    Slider(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
           Vector newExtent);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool onPointer(float x, float y) override;
    bool render() override;
    std::string typeName() const override;
    /// The line with room for the knob: half of it to both sides, and all of it beyond the end.
    Vector getRect() const override;
    bool deselect(GLWidget* chosen) override;
    /// Whether the pointer is strictly within half a knob of the line's rectangle.
    bool hitTest() const override;

    bool dragging = false; ///< `value` follows the pointer
    /// `mouse` as of the previous `onPointer`. -5 or below on either axis: there was none.
    Vector lastMouse;
    /// From the line's beginning to its end; with an x of 0 the slider stands upright.
    Vector extent;

private:
    bool isVertical() const;
    /// Changes the value by the share that `motion` is of `length`, unless that takes it to an end.
    void drag(float motion, float length);
};
} // namespace tamor
