/// \file
/// Pictures of what was drawn, and their comparison with those that were found good.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor::test
{
/// Red, green and blue, 0 to 255.
using Pixel = std::array<std::uint8_t, 3>;

/// Rows from the top, three bytes a pixel.
struct Picture
{
    /// x from the left and y from the top.
    Pixel at(int x, int y) const;

    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

/// Reads a PNG file; a picture of size 0 if there is none.
Picture readPicture(const std::string& path);

/// Writes a PNG file.
void writePicture(const Picture& picture, const std::string& path);

/// The part of the current back buffer whose top left corner is (left, top).
Picture pictureOfWindow(int left, int top, int width, int height);

/// Whether `picture` looks like the PNG file at `goldenPath`.
///
/// Every channel of a pixel may differ by 8 of 255, since Mesa's rasteriser chooses its vector code
/// by the processor and rounds colours differently; one pixel in 500 may differ by more, which
/// covers the ends of lines. A picture that fails is kept, and the message says where. With
/// TAMOR_UPDATE_GOLDENS set, the file is written instead.
testing::AssertionResult matchesGolden(const Picture& picture, const std::string& goldenPath);
} // namespace tamor::test
