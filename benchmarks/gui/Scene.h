/// \file
/// A GUI of any size, on a driver that takes calls and draws nothing.
#pragma once

#include <string>

namespace tamor::bench
{
/// Makes a directory with a theme and a configuration, works in it from then on, and lets the
/// standard error stream go nowhere.
void workInOwnDirectory();

/// Opens the window of `openNoOpWindow`, works in a directory of its own and loads the font.
void openScene();

/// The layout of `count` widgets, a multiple of 20. Each program links a Layout.cpp of its own:
/// that of benchmarks/gui/ has windows with labels, buttons, sliders, check boxes and, in a frame,
/// options, that of benchmarks/widgets/ has every class. No parent has more than 17 children.
std::string layoutOf(int count);

/// Forgets all widgets and loads the layout. What was there is not freed: widgets never are.
void loadScene(const std::string& layout);

/// What the demonstration does in a frame with mouse activity.
void drawFrame();

/// Whether a frame draws anything.
bool isSceneDrawn();
} // namespace tamor::bench
