/// \file
/// A tick that is on or off, with a caption.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <string>

namespace tamor
{
/// An icon with a caption to its right. The application reads the tick with `isActive`.
///
/// | State | Event         | Next                      |
/// |-------|---------------|---------------------------|
/// | off   | press over it | on, `fade` 1, fading in   |
/// | on    | press over it | off, `fade` 1, fading out |
class TAMOR_EXPORT Checkbox : public GLWidget
{
public:
    /// With a caption: room for the icon and the text, as high as the icon or two font heights.
    /// Without: a square of the theme's `iconSize`.
    Checkbox(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
             const std::string& caption);

    /// \return whether the press changed the tick
    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool render() override;
    std::string typeName() const override;
    bool deselect(GLWidget* chosen) override;

protected:
    /// Draws the icon, the mark as far as it is to be seen, and the caption.
    /// \param frame, mark  rectangles in the theme's texture: uMin, vMin, uMax, vMax
    void renderIcons(const Vector& frame, const Vector& mark) const;
};
} // namespace tamor
