/// \file
/// What the viewer draws above its subject: windows of text, outlines and a grid, made of the
/// engine's widgets and its font.
#pragma once

#include "gui/Theme.h"
#include "tools/view/GuiSpace.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tamor::view
{
/// What a text or an outline is drawn in.
enum class Ink : std::size_t
{
    PLAIN,
    QUIET,
    WARNING,
    ERROR,
    OUTLINE, ///< of any widget
    CHOSEN,  ///< of the widget under the pointer
    count,
};

/// A line of a window: words, and where there is a label, in a column behind it.
struct TextLine
{
    std::string text;
    Ink ink = Ink::PLAIN;
    std::string label = {};
};

enum class Corner
{
    TOP_LEFT,
    TOP_RIGHT,
    BOTTOM_LEFT,
    BOTTOM_RIGHT,
};

/// Made anew for every frame: `clear`, what there is to see, `draw`. Lengths are in GUI units, from
/// the window's middle.
///
/// Its widgets are in a GUI of their own, so no layout's names, themes or fonts are touched.
class Overlay
{
public:
    Overlay();

    /// Takes everything away. The window must be open.
    void clear();

    /// Lines at every tenth of a unit and broader ones, with their numbers, at every half.
    void addGrid();
    void addOutline(const Vector& rectangle, Ink ink);
    /// A window in a corner of the window. Long lines are broken between words.
    void addWindow(const std::string& title, const std::vector<TextLine>& lines, Corner corner);

    /// Draws over what is there, and leaves OpenGL's state and matrices as they were.
    void draw();

private:
    Theme* theme(Ink ink) { return &themes[static_cast<std::size_t>(ink)]; }
    void setTextSize();
    void keep(GLWidget* widget);
    void addLabel(const std::string& text, Ink ink, GLWidget* parent, const Vector& position);

    GuiSpace space;
    std::array<Theme, static_cast<std::size_t>(Ink::count)> themes;
    std::vector<std::unique_ptr<GLWidget>> widgets;
    bool hasFont = false;
};
} // namespace tamor::view
