/// \file
/// Text: a font file turned into display lists, drawn and measured.
#pragma once

#include "TamorExport.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamor
{
/// The 128 characters of seven bits, each a display list with a texture of its own.
///
/// A font unit is 1/32 of a pixel of a glyph rendered at 32 points and 96 dots per inch. Text is a
/// format as for `printf`, in the locale that the host has set, and the compiler checks it against
/// its arguments. It may be given without any whatever it holds: then each conversion finds a zero.
/// A character of 128 or above has no list and no width.
///
/// The lists and textures live until the process ends; a second `load` leaks the first ones.
class TAMOR_EXPORT Font
{
public:
    /// The most characters that `textWidth` measures.
    static constexpr std::int32_t longestMeasured = 511;
    /// How far a line stands below the one before it, in units of `scaleY`.
    static constexpr float lineStep = 1.3F;

    /// Scale 1 by 1, and no lists yet.
    Font() = default;

    /// Sets the multipliers of all that is drawn and measured. Returns true.
    bool setScale(float x, float y);

    /// Renders the characters of the font file at `path`. The window must be open.
    /// \return false, where the lists made so far stay, after printing one of these lines:
    ///         Error loading freetype library
    ///         The font file format is not recgonised
    ///         Error loading the font
    ///         Error setting the font size
    ///         errors!
    bool load(const std::string& path);

    // The operations with arguments are templates so that those without come first for a lone text.

    /// The width of the widest line in font units times `scaleX`; 0 for no text.
    ///
    /// Text is cut to 511 characters. A line with a shorter one behind it is measured as it stands;
    /// the shorter one, unless it is the last, with the tail of the longer one behind it.
    float textWidth(const char* format) const;
    /// The same of a format with its arguments, as `printf` has them.
    template <int = 0>
    [[gnu::format(printf, 2, 3)]] float textWidth(const char* format, ...) const;

    /// Draws at the current modelview position, the first line on the x axis and each further one
    /// 1.3 times `scaleY` lower in eye coordinates. The text is cut to 255 characters.
    ///
    /// The depth test, lighting, texturing and blending are left as they were; the blend function
    /// and the list base stay changed.
    /// \return true
    bool print(const char* format) const;
    /// The same of a format with its arguments, as `printf` has them.
    template <int = 0>
    [[gnu::format(printf, 2, 3)]] bool print(const char* format, ...) const;

    float scaleX = 1.0F; ///< by `setScale`
    float scaleY = 1.0F; ///< by `setScale`
    /// The first of 128 consecutive display lists.
    std::uint32_t listBase = 0;
    /// How far each character moves the pen, in font units.
    std::array<float, 128> advance{};

private:
    static constexpr std::size_t widthBufferSize = longestMeasured + 1;
    static constexpr std::size_t printBufferSize = 256;

    float measureLines(std::string_view text) const;
    float measureLine(std::string_view line) const;
    void beginPrint() const;
    bool printLines(std::string_view text) const;
};
} // namespace tamor
