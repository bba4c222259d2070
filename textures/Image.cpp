#include "textures/Image.h"

#include "maths/GLState.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <sys/mman.h>

#include <memory>

namespace tamor
{
namespace
{
constexpr std::size_t channels = 4;

// GLU counts the bytes of a picture in 32 bits, and writes past its own storage when they overflow.
constexpr std::size_t largestUpload = std::size_t{1} << 28;

/// Asks for large pages under the pixels of a large picture, which are about to be written for the
/// first time. Half of the time that a picture took to load went into its 4 KiB pages.
void useLargePages(float* pixels, std::size_t size)
{
    constexpr std::size_t pageSize = std::size_t{2} << 20;
    void* start = pixels;
    if (std::align(pageSize, pageSize, start, size) != nullptr)
        madvise(start, size / pageSize * pageSize, MADV_HUGEPAGE); // a hint: it may be refused
}

/// The low 8 bits of `channel` times 255, truncated. What a 32-bit integer cannot hold, which only
/// a picture of nonsense has, gives 0.
std::uint8_t toByte(float channel)
{
    constexpr float limit = 1 << 30;
    float scaled = channel * 255.0F;
    scaled = scaled > -limit ? scaled : -limit;
    scaled = scaled < limit ? scaled : limit;
    return static_cast<std::uint8_t>(static_cast<std::int32_t>(scaled));
}

/// Storage for the bytes of an upload.
///
/// Meant: never freed, so that a driver that reads the bytes late finds them;
/// `UploadTextureGLTest.LeavesTheStagedBytesAllocatedAndFreesNoPixels` holds it.
std::uint8_t* newStaging(std::size_t size)
{
    return new std::uint8_t[size];
}

const std::uint8_t* stageRed(const Image& image, std::size_t count)
{
    std::uint8_t* const staging = newStaging(count);
    for (std::size_t k = 0; k < count; k++)
        staging[k] = toByte(image.pixels[channels * k]);
    return staging;
}

const std::uint8_t* stageAllChannels(const Image& image, std::size_t count)
{
    std::uint8_t* const staging = newStaging(count * channels);
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
} // namespace

// Meant: no destructor frees the pixels, since copies share them; the two arrays made here stay for
// the life of the process, but for those that `allocate` replaces.
// `Image.LeavesItsPixelsAllocatedWhenItGoesOutOfScope` holds it.
Image::Image() : pixels(new float[2 * 2 * channels]()) {}

void Image::allocate(std::int32_t newWidth, std::int32_t newHeight)
{
    width = newWidth;
    height = newHeight;
    delete[] pixels;
    pixels = new float[pixelCount() * channels];
    useLargePages(pixels, pixelCount() * channels * sizeof(float));
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
    if (width <= 0 || height <= 0)
        return 0;
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

bool uploadTexture(std::uint32_t& id, Image image, TextureKey key)
{
    glGenTextures(1, &id);
    bindTexture(id);
    setParameters(key.flags);

    const std::size_t count = image.pixelCount();
    if (count > largestUpload)
        return true;
    const bool oneLevel = key.flags & TextureKey::LINEAR_ONE_CHANNEL;
    const bool asFloats = key.flags & TextureKey::FLOAT_PIXELS;
    if (asFloats && oneLevel)
        uploadOneLevel(image, GL_RGBA, GL_FLOAT, image.pixels);
    else if (asFloats)
        uploadWithMipmaps(image, GL_FLOAT, image.pixels);
    else if (oneLevel)
        uploadOneLevel(image, GL_LUMINANCE, GL_UNSIGNED_BYTE, stageRed(image, count));
    else
        uploadWithMipmaps(image, GL_UNSIGNED_BYTE, stageAllChannels(image, count));
    return true;
}
} // namespace tamor
