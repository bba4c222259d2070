#include "tests/support/Picture.h"

#include <GL/gl.h>
#include <png.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace tamor::test
{
namespace
{
constexpr int channelTolerance = 8;
constexpr std::size_t pixelsForOneOutlier = 500;

bool isNear(const std::uint8_t* a, const std::uint8_t* b)
{
    for (int channel = 0; channel < 3; ++channel) {
        if (std::abs(a[channel] - b[channel]) > channelTolerance)
            return false;
    }
    return true;
}

png_image headerOf(const Picture& picture)
{
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    header.format = PNG_FORMAT_RGB;
    header.width = static_cast<png_uint_32>(picture.width);
    header.height = static_cast<png_uint_32>(picture.height);
    return header;
}

testing::AssertionResult failure(const Picture& picture, const std::string& goldenPath,
                                 const std::string& reason)
{
    std::filesystem::create_directories(TAMOR_FAILED_PICTURES);
    const std::filesystem::path kept =
        std::filesystem::path(TAMOR_FAILED_PICTURES) / std::filesystem::path(goldenPath).filename();
    writePicture(picture, kept.string());
    return testing::AssertionFailure() << goldenPath << ": " << reason << "; kept as " << kept;
}
} // namespace

Pixel Picture::at(int x, int y) const
{
    const auto offset = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x)) *
                        3;
    return {bytes.at(offset), bytes.at(offset + 1), bytes.at(offset + 2)};
}

Picture readPicture(const std::string& path)
{
    Picture picture;
    png_image header = headerOf(picture);
    if (png_image_begin_read_from_file(&header, path.c_str()) == 0)
        return picture;
    header.format = PNG_FORMAT_RGB;
    picture.bytes.resize(PNG_IMAGE_SIZE(header));
    if (png_image_finish_read(&header, nullptr, picture.bytes.data(), 0, nullptr) == 0)
        return {};
    picture.width = static_cast<int>(header.width);
    picture.height = static_cast<int>(header.height);
    return picture;
}

void writePicture(const Picture& picture, const std::string& path)
{
    png_image header = headerOf(picture);
    png_image_write_to_file(&header, path.c_str(), 0, picture.bytes.data(), 0, nullptr);
}

Picture pictureOfWindow(int left, int top, int width, int height)
{
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    const auto rowBytes = static_cast<std::size_t>(width) * 3;
    std::vector<std::uint8_t> upwards(rowBytes * static_cast<std::size_t>(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(left, viewport[3] - top - height, width, height, GL_RGB, GL_UNSIGNED_BYTE,
                 upwards.data());

    Picture picture{width, height, std::vector<std::uint8_t>(upwards.size())};
    for (std::size_t row = 0; row < static_cast<std::size_t>(height); ++row) {
        const std::size_t source = static_cast<std::size_t>(height) - 1 - row;
        std::memcpy(&picture.bytes[row * rowBytes], &upwards[source * rowBytes], rowBytes);
    }
    return picture;
}

testing::AssertionResult matchesGolden(const Picture& picture, const std::string& goldenPath)
{
    if (std::getenv("TAMOR_UPDATE_GOLDENS") != nullptr) {
        std::filesystem::create_directories(std::filesystem::absolute(goldenPath).parent_path());
        writePicture(picture, goldenPath);
        return testing::AssertionSuccess();
    }
    const Picture golden = readPicture(goldenPath);
    if (golden.width != picture.width || golden.height != picture.height)
        return failure(picture, goldenPath, "missing or of another size");

    std::size_t outliers = 0;
    for (std::size_t offset = 0; offset < golden.bytes.size(); offset += 3) {
        if (!isNear(&golden.bytes[offset], &picture.bytes[offset]))
            ++outliers;
    }
    if (outliers > golden.bytes.size() / 3 / pixelsForOneOutlier)
        return failure(picture, goldenPath, std::to_string(outliers) + " pixels differ");
    return testing::AssertionSuccess();
}
} // namespace tamor::test
