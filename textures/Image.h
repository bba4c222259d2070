/// \file
/// The image buffer that all image code shares, and its upload as an OpenGL texture.
///
/// The folder textures/ holds images, their readers (TGA, PNG), the procedures that make and change
/// them, the registry that gives one texture a file, and the font. It leaves drawing with textures
/// to others.
#pragma once

#include "TamorExport.h"
#include "maths/Vector.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamor
{
/// The identity of a texture request: the same file with other flags is another texture.
struct TextureKey
{
    /// Bits of `flags`, as `uploadTexture` reads them. The bit of value 8 has no effect.
    enum Flags : std::uint32_t
    {
        LINEAR_ONE_CHANNEL = 1, ///< no mipmaps, and only the red channel as luminance
        CLAMP_S = 2,            ///< the border's pixels go on beyond the width, without a repeat
        CLAMP_T = 4,            ///< the same beyond the height
        FLOAT_PIXELS = 16,      ///< upload the floats as they are
        FONT_GLYPH = 32,        ///< no effect; the font sets it
    };

    /// The file name as the caller wrote it; compared byte for byte.
    std::string path;
    std::uint32_t flags = 0; ///< of `Flags`

    /// Whether path and flags are the same.
    bool operator==(const TextureKey&) const = default;
};

/// Pixels of four floats each: red, green, blue, alpha, nominally 0 to 1.
///
/// A plain record. A copy shares the pixel array, and nothing frees the array when an image goes
/// out of scope: only the operations that give an image a new size free it, to replace it.
class TAMOR_EXPORT Image
{
public:
    /// 2 by 2 pixels, all 0.
    Image();

    /// Frees the pixels and takes an array of the new size, which is left as the memory was.
    /// \param newWidth   in pixels; if it or `newHeight` is not above 0 the array is empty
    /// \param newHeight  in pixels
    void allocate(std::int32_t newWidth, std::int32_t newHeight);

    /// Takes pixels of one byte a channel: red, green, blue and, if `hasAlpha`, alpha, each divided
    /// by 255; otherwise alpha is 1. Frees the old pixels.
    /// \param bytes  newWidth x newHeight pixels of 3 or 4 bytes, first to last in the array's order
    /// \return true
    bool setFromBytes(std::int32_t newWidth, std::int32_t newHeight, bool hasAlpha,
                      const std::uint8_t* bytes);

    /// `width` times `height`; 0 if one of them is not above 0.
    std::size_t pixelCount() const;

    /// \name Procedures
    /// They change the pixels in place (so also those of every copy of the record), work on any
    /// size, leave alpha alone unless they say otherwise, and return true. They address the pixel
    /// at (i, j) as `height * i + j`, with i from 0 to `width` and j from 0 to `height`; only
    /// `scroll` takes rows of `width` pixels. For a square image the two agree.
    /// @{

    /// Becomes newWidth x newHeight pixels of opaque black. Frees the old pixels.
    bool clear(std::int32_t newWidth, std::int32_t newHeight);

    /// Turns every colour channel, and alpha too if `withAlpha`, into 1 minus itself.
    bool invert(bool withAlpha);

    /// Adds `octaves` layers of value noise to red, then copies red to green and blue. The values
    /// may leave 0 to 1.
    ///
    /// Noise cells of the first layer are `frequency` times the image's size, so a larger frequency
    /// gives wider features. Each further layer has its cells multiplied by `frequencyFactor` and
    /// its height by `amplitudeFactor`.
    /// \param amplitude  the first layer's height: it adds between -amplitude and amplitude
    bool perlin(std::int32_t octaves, float frequency, float amplitude, float frequencyFactor,
                float amplitudeFactor);

    /// Limits red, green and blue to 0 to 1.
    bool clamp();

    /// Stretches red so that its smallest value becomes 0 and its largest 1, and copies it to green
    /// and blue. An image of one red value becomes not-a-number.
    bool normalise();

    /// Softens all four channels with an exponential kernel of `radius` pixels to each side, cut
    /// off at the borders. Wholly transparent pixels lend no colour to their neighbours along i. A
    /// radius of 0 blackens those pixels and keeps the others; a negative one leaves every channel
    /// 0.
    bool blur(std::int32_t radius);

    /// Moves the picture by `dx` pixels to the right and `dy` rows on, or back where they are
    /// negative. What leaves the image is gone, and `fill` comes in from the other side; a distance
    /// of the size or more leaves only `fill`. The unnamed arguments have no effect.
    bool scroll(std::int32_t dx, std::int32_t dy, std::int32_t, std::int32_t, Vector fill, bool);

    /// Becomes itself times one factor plus `other` times another, pixel by pixel in all four
    /// channels, limited to 0 to 1. An `other` of another size is sampled at the same relative
    /// place, unfiltered; one without pixels changes nothing.
    ///
    /// The factor codes:
    ///
    ///     0  the source is left out       1  the source as it is
    ///     2  this pixel's alpha           3  the other pixel's alpha
    ///     4  1 - this pixel's alpha       5  1 - the other pixel's alpha
    ///     6  this pixel's luminance       7  the other pixel's luminance
    ///     8  1 - this pixel's luminance   9  1 - the other pixel's luminance
    ///
    /// Luminance is the mean of red, green and blue. So codes 2 and 4 lay this image over the other
    /// one, and 5 and 3 lay the other one over this.
    ///
    /// Any other code leaves its source out and prints, for every pixel:
    ///
    ///     Unknown texture operation
    bool blend(std::uint32_t thisFactor, std::uint32_t otherFactor, Image other);

    /// The noise of a lattice point, -1 to 1: the same in every image and every run.
    static float noise(std::int32_t x, std::int32_t y);

    /// The noise of a lattice point, softened by that of its eight neighbours.
    static float smoothNoise(std::int32_t x, std::int32_t y);

    /// From `a` at t = 0 to `b` at t = 1 along half a cosine wave.
    static float cosineInterpolate(float a, float b, float t);

    /// The softened noise between the lattice points. A coordinate is truncated toward zero.
    static float interpolatedNoise(float x, float y);
    /// @}

    std::int32_t width = 2;  ///< pixels
    std::int32_t height = 2; ///< pixels
    /// width x height x 4 floats, from array new.
    float* pixels = nullptr;
};

/// Makes an OpenGL texture of `image`, by the bits of `key.flags`, and leaves it bound.
///
/// | `FLOAT_PIXELS` | `LINEAR_ONE_CHANNEL` | Uploaded                                            |
/// |----------------|----------------------|-----------------------------------------------------|
/// | set            | set                  | the floats, one level                               |
/// | set            | clear                | the floats, with mipmaps                            |
/// | clear          | set                  | a byte a pixel, the red channel, one level          |
/// | clear          | clear                | four bytes a pixel, with mipmaps                    |
///
/// A byte is the float times 255, truncated, of which the low 8 bits are kept: 1.5 wraps to 126.
/// Without mipmaps OpenGL gets the size as it stands; with them it is scaled to powers of two.
/// \param id     receives the new texture's name
/// \param image  its pixels are read and stay the caller's
/// \param key    of which only the flags are read
/// \return true
TAMOR_EXPORT bool uploadTexture(std::uint32_t& id, Image image, TextureKey key);
} // namespace tamor
