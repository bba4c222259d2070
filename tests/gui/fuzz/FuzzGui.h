/// \file
/// What the fuzz targets of the GUI share: a GUI without OpenGL, textures and fonts, in a folder of
/// its own, that can be thrown away.
#pragma once

#include <string>

namespace tamor::test
{
/// The texture that was asked for last, which nobody loads: every texture is the first one.
std::string lastTexture();

/// The font that was asked for last, which is never there.
std::string lastFont();

/// Works from the first call on in a folder that holds the themes of the GUI's parts, a theme "other.theme" and a
/// configuration "gui.conf".
void enterGuiFolder();

/// Puts the GUI's state back to that of a new process, and deletes the themes and all widgets that it
/// still knows: those at the top level, those with names, and whoever is below or above one of them.
void deleteGui();

/// Takes what is printed while it lives, so that nobody sees it.
class Unprinted
{
public:
    Unprinted();
    ~Unprinted();
    Unprinted(const Unprinted&) = delete;
    Unprinted& operator=(const Unprinted&) = delete;
};
} // namespace tamor::test
