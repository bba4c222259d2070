/// \file
/// How widgets look: colours, sizes, brightness and one texture, read from a small text file.
#pragma once

#include "TamorExport.h"
#include "maths/Vector.h"

#include <cstdint>
#include <string>

namespace tamor
{
/// Everything that a widget's look depends on. Each widget points to one theme, and any number of
/// widgets may share it.
///
/// A plain record. Lengths are in GUI units (the window is 2 units high), colours are red, green,
/// blue and alpha from 0 to 1. In a new theme every field that is not a `Vector` is 0 or empty; it
/// takes `setDefaults` or `read` to give it a look.
class TAMOR_EXPORT Theme
{
public:
    /// Sets every field but `textureFile` to its built-in value, which stands behind each field
    /// below, and loads the texture "gui.tga".
    void setDefaults();

    /// Reads the theme file at `file`, echoing what it reads to the standard error stream.
    ///
    /// A theme file has no words, only places. Behind the fields of a line anything may follow as a
    /// remark. The lines, with the fields that they fill:
    ///
    ///      1  textColour, 3 numbers        9  chamfer
    ///      2  edgeColour, 3 numbers       10  spareSize
    ///      3  bodyColour, 3 numbers       11  fontSize, 2 numbers
    ///      4  spareColour, 3 numbers      12  dimBrightness, litBrightness
    ///      5  bodyAlpha                   13  pressOffset, 3 numbers
    ///      6  listAlpha                   14  iconSize
    ///      7  lineWidth                   15  textureFile, or NULL for no texture
    ///      8  margin                      16  glowEnabled, 0 or 1
    ///
    /// A field that cannot be read keeps what it held, and so does every field behind it; nothing
    /// but the echo tells. A file that is not there is read in the same way: nothing of it.
    void read(const std::string& file);

    Vector textColour;          ///< (1, 1, 1, 1): all text
    Vector edgeColour;          ///< (1, 0.71, 0.16, 1): outlines, rules, the highlighted row
    Vector bodyColour;          ///< (0.8, 0.8, 0.8, 1): fills, icons, slider lines and knobs
    Vector spareColour;         ///< (0.3, 0.3, 0.3, 1): nothing draws with it
    float bodyAlpha = 0.0F;     ///< 1: alpha of the plates of containers and boxes
    float listAlpha = 0.0F;     ///< 0.8: alpha of an open list
    float lineWidth = 0.0F;     ///< 2: in pixels
    float margin = 0.0F;        ///< 0.005: a parent keeps 3 of it free on each side of its content
    float chamfer = 0.0F;       ///< 0.1: the cut of a plate's corners, as a share of its height
    float spareSize = 0.0F;     ///< 0.003: nothing uses it
    Vector fontSize;            ///< (0.04, 0.05): the font's scale; `y` is a text's height
    float dimBrightness = 0.0F; ///< 0.7: brightness of a widget that does not glow
    float litBrightness = 0.0F; ///< 1: brightness of a widget that glows fully
    Vector pressOffset;         ///< (0.005, -0.005): how far a button moves while it is held
    float iconSize = 0.0F;      ///< 0.1: side of check and option icons and of slider knobs
    char textureFile[512] = {}; ///< path of the texture as the file gives it, "NULL" for none
    bool glowEnabled = false;   ///< true; false lets the widgets glow fully all the time
    std::uint32_t texture = 0;  ///< "gui.tga": its OpenGL name, 0 for none
};
} // namespace tamor
