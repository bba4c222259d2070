/// \file
/// A window whose driver takes every OpenGL call and draws nothing.
#pragma once

namespace tamor::bench
{
/// Opens the window on the first call, and ends the program in words if there is no display.
void openNoOpWindow();
} // namespace tamor::bench
