/// \file
/// Pictures of what was drawn, and their comparison with those that were found good.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
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

/// How far a picture may be from its golden one. As it stands it covers what Mesa's rasteriser
/// rounds differently in vectors of another width, and no letter.
struct Tolerance
{
    int channel = 1;         ///< of 255, in each channel of each pixel
    std::size_t pixels = 10; ///< how many pixels may differ by more, at the ends of lines
};

/// Whether `picture` looks like the PNG file at `goldenPath`.
///
/// A picture that fails is kept beside one of the differences, and the message says where, and what
/// to do on a machine whose renderer is another. With TAMOR_UPDATE_GOLDENS set, the file is written
/// instead.
testing::AssertionResult matchesGolden(const Picture& picture, const std::string& goldenPath,
                                       Tolerance tolerance = {});
} // namespace tamor::test
