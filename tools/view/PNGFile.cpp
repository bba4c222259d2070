#include "tools/view/PNGFile.h"

#include <GL/gl.h>
#include <png.h>

#include <algorithm>
#include <array>

namespace tamor::view
{
namespace
{
constexpr std::size_t channels = 4;
}

std::string writePNG(const BytePicture& picture, const std::string& path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    const bool isWritten =
        png_image_write_to_file(&image, path.c_str(), 0, picture.bytes.data(), 0, nullptr) != 0;
    return isWritten ? "" : image.message;
}

std::string readPNGFile(BytePicture& picture, const std::string& path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return image.message;
    image.format = PNG_FORMAT_RGBA;
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.bytes.resize(PNG_IMAGE_SIZE(image));
    const bool isRead =
        png_image_finish_read(&image, nullptr, picture.bytes.data(), 0, nullptr) != 0;
    return isRead ? "" : image.message;
}

BytePicture pictureOfBackBuffer()
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    BytePicture picture{viewport[2], viewport[3], {}};
    const std::size_t rowBytes = channels * static_cast<std::size_t>(picture.width);
    picture.bytes.resize(rowBytes * static_cast<std::size_t>(picture.height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, picture.width, picture.height, GL_RGBA, GL_UNSIGNED_BYTE,
                 picture.bytes.data());

    // OpenGL's first row is the lowest, and the buffer's alpha is whatever blending left there.
    for (std::size_t top = 0, bottom = picture.bytes.size(); top < bottom; top += rowBytes) {
        bottom -= rowBytes;
        if (top < bottom)
            std::swap_ranges(picture.bytes.begin() + static_cast<std::ptrdiff_t>(top),
                             picture.bytes.begin() + static_cast<std::ptrdiff_t>(top + rowBytes),
                             picture.bytes.begin() + static_cast<std::ptrdiff_t>(bottom));
    }
    for (std::size_t alpha = channels - 1; alpha < picture.bytes.size(); alpha += channels)
        picture.bytes[alpha] = 255;
    return picture;
}
} // namespace tamor::view
