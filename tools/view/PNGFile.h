/// \file
/// PNG files, whole, for pictures that people look at. The engine's own reader takes few of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tamor::view
{
/// Rows from the top, four bytes a pixel: red, green, blue, alpha.
struct BytePicture
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

/// Writes a picture. \return empty, or what went wrong
std::string writePNG(const BytePicture& picture, const std::string& path);

/// Reads any PNG file. \return empty, or what went wrong
std::string readPNGFile(BytePicture& picture, const std::string& path);

/// What the window shows behind its back buffer: all of it, with alpha 255.
BytePicture pictureOfBackBuffer();
} // namespace tamor::view
