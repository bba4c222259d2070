/// \file
/// Where the widgets of a GUI are in the window.
#pragma once

#include "gui/GLWidget.h"

#include <string>
#include <vector>

namespace tamor::view
{
/// A widget that is drawn, and its rectangle in the window.
struct PlacedWidget
{
    GLWidget* widget = nullptr;
    Vector rectangle; ///< x1, y1, x2, y2 in GUI units, from the window's middle
};

/// All widgets that are drawn, in the order of drawing: a later one lies above an earlier one. What
/// stands on a tab that is not shown is not among them.
std::vector<PlacedWidget> placedWidgets();

/// All widgets of the tree, on whatever tab, each once, parents first.
std::vector<GLWidget*> allWidgets();

/// \return the topmost of `widgets` with the point (x, y) strictly inside it, or null
const PlacedWidget* widgetAt(const std::vector<PlacedWidget>& widgets, float x, float y);

/// A pixel of the window, counted from its top left, in GUI units.
Vector toUnits(float pixelX, float pixelY, const std::array<std::int32_t, 4>& viewport);

/// A rectangle in pixels from the window's top left: x, y, width, height, rounded.
std::array<int, 4> toPixels(const Vector& rectangle, const std::array<std::int32_t, 4>& viewport);
} // namespace tamor::view
