/// \file
/// What the viewer tells of the widget under the pointer.
#pragma once

#include "gui/GLWidget.h"
#include "kernel/Event.h"
#include "tools/view/WidgetTree.h"

#include <map>
#include <string>
#include <vector>

namespace tamor::view
{
class Overlay;

/// F1 opens and closes it: the widget under the pointer is outlined and told of, and a click prints
/// the line of the layout that made it. F2 outlines all widgets, F3 draws a grid.
class Inspector
{
public:
    /// \param newFile  the layout as it is to be named in front of a line
    explicit Inspector(std::string newFile) : file(std::move(newFile)) {}

    /// \param newLines  the line of each widget
    void setLines(std::map<const GLWidget*, int> newLines) { lines = std::move(newLines); }

    bool isOpen() const { return opened; }

    void takeKeys(const KeyboardState& keys);
    void takePointer(const MouseState& pointer);
    void decorate(Overlay& overlay) const;

private:
    std::string lineOf(const GLWidget& widget) const;
    void describe(Overlay& overlay, const PlacedWidget& placed, const Vector& pointerPlace) const;

    std::string file;
    std::map<const GLWidget*, int> lines;
    bool opened = false;
    bool outlinesAll = false;
    bool hasGrid = false;
    bool wasLeft = false;
    float pointerX = -1.0F; ///< in pixels; outside of the window before the pointer was seen
    float pointerY = -1.0F;
};
} // namespace tamor::view
