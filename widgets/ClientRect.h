/// \file
/// The area of a container in which a child window may be dragged. For the containers' sources.
#pragma once

#include "gui/Theme.h"
#include "maths/Vector.h"

namespace tamor
{
/// The rectangle at `position` of size `dimensions`, less a hundredth of its width on every side,
/// and at the top less a line and one and a half font heights for the title.
inline Vector clientRect(const Vector& position, const Vector& dimensions, const Theme& theme)
{
    // Meant: the share is of the width upward too, and `lineWidth`, a number of pixels, is taken
    // off a length in GUI units, which puts the top far below the bottom with the built-in theme,
    // so that a child window cannot be dragged at all; `GLWindowDrag.IsBoundedByTheParent`
    // holds it.
    const float share = 0.01F * dimensions.x;
    return {position.x + share, position.y + share, position.x + 0.99F * dimensions.x,
            position.y + dimensions.y - share - theme.lineWidth - 1.5F * theme.fontSize.y};
}
} // namespace tamor
