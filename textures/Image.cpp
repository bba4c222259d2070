#include "textures/Image.h"

#include "maths/GLState.h"
#include "maths/Memory.h"
#include "textures/internal/Pixels.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <memory>

namespace tamor
{
namespace
{
// GLU counts the bytes of a picture in 32 bits, and writes past its own storage when they overflow.
constexpr std::size_t largestUpload = std::size_t{1} << 28;

/// The low 8 bits of `channel` times 255, truncated. Not-a-number gives 0, and so does all from
/// 2^31 on: there floats are multiples of 256.
std::uint8_t toByte(float channel)
{
    constexpr float multiplesOf256 = 2147483648.0F;
    const float scaled = channel * 255.0F;
    const float truncatable = std::abs(scaled) < multiplesOf256 ? scaled : 0.0F;
    return static_cast<std::uint8_t>(static_cast<std::int32_t>(truncatable));
}

/// How many channels lie behind the pixels of a picture that GLU scales: it reads on into the row
/// behind the last one, and times what it finds there by 0. Seen is one pixel; a row is room for
/// all that it could address.
std::size_t overread(const Image& image)
{
    return channels * (static_cast<std::size_t>(image.width) + 1);
}

/// The pixels of an image of this size.
std::size_t countOf(std::int32_t width, std::int32_t height)
{
    if (width <= 0 || height <= 0)
        return 0;
    return toSize(static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height));
}

/// The floats of so many pixels.
///
/// Meant: no destructor frees them, since copies of an image share them: they stay for the life of
/// the process, but for those that `Image::allocate` replaces.
/// `Image.LeavesItsPixelsAllocatedWhenItGoesOutOfScope` holds it.
float* newPixels(std::size_t count)
{
    return new float[toSize(std::uint64_t{count} * channels)];
}

/// Storage for the bytes of an upload, and `room` for what is read behind them, all 0.
///
/// Meant: never freed: every upload leaves its bytes for the life of the process, and whoever counts
/// a host's memory finds them there;
/// `UploadTextureGLTest.LeavesTheStagedBytesAllocatedAndFreesNoPixels` holds it.
std::uint8_t* newStaging(std::size_t size, std::size_t room)
{
    auto* const staging = new std::uint8_t[size + room];
    std::memset(staging + size, 0, room);
    return staging;
}

/// The red bytes, one row behind the other without a gap.
///
/// Meant: OpenGL starts each row at a multiple of its unpack alignment, 4 by default and 8 at most,
/// so that a width of another kind shears the picture, and the last rows lie behind the bytes.
/// A host that wants it straight sets GL_UNPACK_ALIGNMENT to 1;
/// `UploadTextureGLTest.ReadsRowsOfOneChannelAtMultiplesOfFour` holds it.
const std::uint8_t* stageRed(const Image& image, std::size_t count)
{
    constexpr std::size_t largestGap = 7;
    std::uint8_t* const staging =
        newStaging(count, count == 0 ? 0 : largestGap * static_cast<std::size_t>(image.height));
    for (std::size_t k = 0; k < count; k++)
        staging[k] = toByte(image.pixels[channels * k]);
    return staging;
}

const std::uint8_t* stageAllChannels(const Image& image, std::size_t count)
{
    std::uint8_t* const staging = newStaging(count * channels, count == 0 ? 0 : overread(image));
    for (std::size_t k = 0; k < count * channels; k++)
        staging[k] = toByte(image.pixels[k]);
    return staging;
}

void setParameters(std::uint32_t flags)
{
    const GLint minification =
        flags & TextureKey::LINEAR_ONE_CHANNEL ? GL_LINEAR : GL_LINEAR_MIPMAP_NEAREST;
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minification);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    if (flags & TextureKey::CLAMP_S)
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    if (flags & TextureKey::CLAMP_T)
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

void uploadOneLevel(const Image& image, GLenum format, GLenum type, const void* data)
{
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.width, image.height, 0, format, type, data);
}

void uploadWithMipmaps(const Image& image, GLenum type, const void* data)
{
    gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, image.width, image.height, GL_RGBA, type, data);
}

/// Uploads the floats themselves where GLU reads no others: it halves a picture whose sides are
/// powers of two, and scales any other. For that one they are copied, with room behind them.
void uploadFloatsWithMipmaps(const Image& image, std::size_t count)
{
    const bool isHalved = std::has_single_bit(static_cast<std::uint32_t>(image.width)) &&
                          std::has_single_bit(static_cast<std::uint32_t>(image.height));
    if (isHalved || count == 0) {
        uploadWithMipmaps(image, GL_FLOAT, image.pixels);
        return;
    }
    const auto copy = std::make_unique<float[]>(count * channels + overread(image));
    std::copy_n(image.pixels, count * channels, copy.get());
    uploadWithMipmaps(image, GL_FLOAT, copy.get());
}
} // namespace

Image::Image() : pixels(newPixels(2 * 2))
{
    std::fill_n(pixels, 2 * 2 * channels, 0.0F);
}

void Image::allocate(std::int32_t newWidth, std::int32_t newHeight)
{
    // An image for which there is no memory has none, and no size.
    delete[] pixels;
    pixels = nullptr;
    width = height = 0;
    pixels = newPixels(countOf(newWidth, newHeight));
    width = newWidth;
    height = newHeight;
    useLargePages(pixels, pixelCount() * floatPixelSize);
}

bool Image::setFromBytes(std::int32_t newWidth, std::int32_t newHeight, bool hasAlpha,
                         const std::uint8_t* bytes)
{
    allocate(newWidth, newHeight);
    const std::size_t count = pixelCount();
    if (hasAlpha) {
        for (std::size_t k = 0; k < count * channels; k++)
            pixels[k] = static_cast<float>(bytes[k]) / 255.0F;
        return true;
    }
    for (std::size_t k = 0; k < count; k++) {
        for (std::size_t channel = 0; channel < 3; channel++)
            pixels[channels * k + channel] = static_cast<float>(bytes[3 * k + channel]) / 255.0F;
        pixels[channels * k + 3] = 1.0F;
    }
    return true;
}

std::size_t Image::pixelCount() const
{
    return countOf(width, height);
}

bool uploadTexture(std::uint32_t& id, Image image, TextureKey key)
{
    glGenTextures(1, &id);
    bindTexture(id);
    setParameters(key.flags);

    const std::size_t count = image.pixelCount();
    if (count > largestUpload || !memoryHolds(2 * count * channels))
        return true;
    const bool oneLevel = key.flags & TextureKey::LINEAR_ONE_CHANNEL;
    const bool asFloats = key.flags & TextureKey::FLOAT_PIXELS;
    if (asFloats && oneLevel)
        uploadOneLevel(image, GL_RGBA, GL_FLOAT, image.pixels);
    else if (asFloats)
        uploadFloatsWithMipmaps(image, count);
    else if (oneLevel)
        uploadOneLevel(image, GL_LUMINANCE, GL_UNSIGNED_BYTE, stageRed(image, count));
    else
        uploadWithMipmaps(image, GL_UNSIGNED_BYTE, stageAllChannels(image, count));
    return true;
}
} // namespace tamor
