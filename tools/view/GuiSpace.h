/// \file
/// The state of a whole GUI, so that a process can have more than one.
#pragma once

#include "gui/GLWidget.h"
#include "textures/Font.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tamor::view
{
/// What `GLWidget` keeps for the class as a whole: widgets, themes, font, icons. A new one is the
/// GUI of a process that has read nothing.
///
/// There is one such state that the engine sees. `exchange` puts another in its place, and a second
/// `exchange` puts the first one back. That is how a layout is read anew (the engine never takes a
/// widget or a theme back, and what a layout has already is kept), and how the viewer draws widgets
/// of its own that no layout can name.
struct GuiSpace
{
    /// Makes this the state that the engine sees, and holds here what it saw before.
    void exchange();

    std::map<std::string, GLWidget*> widgets;
    std::map<std::string, Theme*> themes;
    Font font;
    std::vector<GLWidget*> topLevel;
    std::int32_t messageResult = 0;
    std::array<std::int32_t, 4> viewport{};
    float glowRate = 0.0F;
    std::array<Vector, 5> icons;
};

/// Has the engine see a space for as long as it lives.
class InSpace
{
public:
    explicit InSpace(GuiSpace& newSpace) : space(newSpace) { space.exchange(); }
    ~InSpace() { space.exchange(); }
    InSpace(const InSpace&) = delete;
    InSpace& operator=(const InSpace&) = delete;

private:
    GuiSpace& space;
};
} // namespace tamor::view
