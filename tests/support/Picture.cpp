#include "tests/support/Picture.h"

#include "tests/support/TestWindow.h"

#include <GL/gl.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace tamor::test
{
namespace
{
/// The renderer that drew the golden pictures.
constexpr const char* goldenRenderer =
    "llvmpipe (LLVM 15.0.6, 128 bits), 4.5 (Compatibility Profile) Mesa 22.3.6";

/// The renderer of this machine, asked through a window of its own.
std::string rendererHere()
{
    openTestWindow(64, 64);
    const auto text = [](GLenum name) {
        return std::string(reinterpret_cast<const char*>(glGetString(name)));
    };
    std::string words = text(GL_RENDERER) + ", " + text(GL_VERSION);
    closeTestWindow();
    return words;
}

/// By how much two pixels differ, in the channel that differs most.
int distance(const std::uint8_t* a, const std::uint8_t* b)
{
    int most = 0;
    for (int channel = 0; channel < 3; ++channel)
        most = std::max(most, std::abs(a[channel] - b[channel]));
    return most;
}

/// Black where two pictures are the same, and the brighter the more they differ.
Picture differenceOf(const Picture& a, const Picture& b)
{
    Picture difference = a;
    for (std::size_t index = 0; index < a.bytes.size(); ++index) {
        const int apart = std::abs(a.bytes[index] - b.bytes[index]);
        // So that the least one shows.
        difference.bytes[index] =
            static_cast<std::uint8_t>(apart == 0 ? 0 : std::min(255, 63 + apart));
    }
    return difference;
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

/// Keeps the picture, and what is different in it, and says so.
testing::AssertionResult failure(const Picture& picture, const Picture& golden,
                                 const std::string& goldenPath, const std::string& reason)
{
    const std::filesystem::path directory = TAMOR_FAILED_PICTURES;
    std::filesystem::create_directories(directory);
    const std::string name = std::filesystem::path(goldenPath).stem().string();
    writePicture(picture, directory / (name + ".png"));
    if (golden.bytes.size() == picture.bytes.size())
        writePicture(differenceOf(picture, golden), directory / (name + "-difference.png"));

    testing::AssertionResult result = testing::AssertionFailure();
    result << goldenPath << ": " << reason << "; see " << name << "*.png in " << directory.string();
    const std::string here = rendererHere();
    if (here != goldenRenderer)
        result << ". Drawn by " << here << " instead of " << goldenRenderer
               << ": TAMOR_UPDATE_GOLDENS=1 scripts/test makes the pictures anew, and "
                  "tests/support/Picture.cpp names the renderer";
    return result;
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

testing::AssertionResult matchesGolden(const Picture& picture, const std::string& goldenPath,
                                       Tolerance tolerance)
{
    if (std::getenv("TAMOR_UPDATE_GOLDENS") != nullptr) {
        std::filesystem::create_directories(std::filesystem::absolute(goldenPath).parent_path());
        writePicture(picture, goldenPath);
        return testing::AssertionSuccess();
    }
    const Picture golden = readPicture(goldenPath);
    if (golden.width != picture.width || golden.height != picture.height)
        return failure(picture, golden, goldenPath, "missing or of another size");

    std::size_t outliers = 0;
    int most = 0;
    for (std::size_t offset = 0; offset < golden.bytes.size(); offset += 3) {
        const int apart = distance(&golden.bytes[offset], &picture.bytes[offset]);
        outliers += apart > tolerance.channel ? 1 : 0;
        most = std::max(most, apart);
    }
    if (outliers > tolerance.pixels)
        return failure(picture, golden, goldenPath,
                       std::to_string(outliers) + " pixels differ, by up to " +
                           std::to_string(most) + " of 255");
    return testing::AssertionSuccess();
}
} // namespace tamor::test
