/// \file
/// A group of widgets, with or without an outline.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <string>

namespace tamor
{
/// Groups children and may draw an outline around them.
///
/// Its size is that of its content, once `fitChildren` has run. It never lights up: the outline is
/// always at the theme's `dimBrightness`.
class TAMOR_EXPORT Frame : public GLWidget
{
public:
    /// \param isBordered  draw the outline, and keep 3 times the theme's `margin` around the
    ///                    children; without it they stand exactly at `position` plus their own
    Frame(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
          bool isBordered);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool onPointer(float x, float y) override;
    bool render() override;
    std::string typeName() const override;
    Vector getClientRect() const override;
    bool deselect(GLWidget* chosen) override;

    bool bordered; ///< the constructor's `isBordered`

private:
    /// How far inside the frame its children begin.
    float inset() const;
};
} // namespace tamor
