/// \file
/// A window whose driver takes every OpenGL call and draws nothing.
#pragma once

#include <functional>
#include <vector>

namespace tamor::bench
{
/// Opens the window, of 800 by 600 pixels on DISPLAY, on the first call. Ends the program, in words,
/// if it cannot.
void openNoOpWindow();

/// The first million values of OpenGL's feedback of `draw`: the places and colours of what it would
/// have drawn. The driver has no part in it, so it tells two ways of drawing apart.
std::vector<float> feedbackOf(const std::function<void()>& draw);
} // namespace tamor::bench
