/// \file
/// The image buffer that all image code shares, and its upload as an OpenGL texture.
///
/// The folder textures/ holds images, their readers (TGA, PNG), the procedures that make and change
/// them, the registry that gives one texture a file, and the font. It leaves drawing with textures
/// to others.
#pragma once

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
        CLAMP_S = 2,
        CLAMP_T = 4,
        FLOAT_PIXELS = 16, ///< upload the floats as they are
        FONT_GLYPH = 32,   ///< no effect; the font sets it
    };

    /// The file name as the caller wrote it; compared byte for byte.
    std::string path;
    std::uint32_t flags = 0;

    bool operator==(const TextureKey&) const = default;
};

/// Pixels of four floats each: red, green, blue, alpha, nominally 0 to 1.
///
/// A plain record. A copy shares the pixel array, and nothing frees the array when an image goes
/// out of scope: only the operations that give an image a new size free it, to replace it.
class Image
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
    /// \param bytes  newWidth x newHeight pixels of 3 or 4 bytes, first to last in the array's
    /// order \return true
    bool setFromBytes(std::int32_t newWidth, std::int32_t newHeight, bool hasAlpha,
                      const std::uint8_t* bytes);

    /// `width` times `height`; 0 if one of them is not above 0.
    std::size_t pixelCount() const;

    std::int32_t width = 2;
    std::int32_t height = 2;
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
bool uploadTexture(std::uint32_t& id, Image image, TextureKey key);
} // namespace tamor
