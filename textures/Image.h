/// \file
/// The image buffer that all image code shares, and its upload as an OpenGL texture.
///
/// The folder textures/ holds images, their readers (TGA, PNG), the procedures that make and change
/// them, the registry that gives one texture a file, and the font. It leaves drawing with textures
/// to others.
#pragma once

#include <cstdint>
#include <string>

namespace tamor
{
/// The identity of a texture request: the same file with other flags is another texture.
struct TextureKey
{
    /// Bits of `flags`, as `uploadTexture` reads them.
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
    /// 2 by 2 pixels of whatever the memory holds.
    Image();

    /// Takes pixels of one byte a channel: red, green, blue and, if `hasAlpha`, alpha, each divided
    /// by 255; otherwise alpha is 1. Frees the old pixels.
    /// \param bytes  newWidth x newHeight pixels of 3 or 4 bytes
    /// \return true
    bool setFromBytes(std::int32_t newWidth, std::int32_t newHeight, bool hasAlpha,
                      const std::uint8_t* bytes);

    std::int32_t width = 2;
    std::int32_t height = 2;
    /// width x height x 4 floats, from array new.
    float* pixels = nullptr;
};

/// Makes an OpenGL texture of `image`, by the bits of `key.flags`, and leaves it bound.
/// \param id  receives the new texture's name
/// \return true
bool uploadTexture(std::uint32_t& id, Image image, TextureKey key);
} // namespace tamor
