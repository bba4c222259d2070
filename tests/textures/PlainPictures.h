/// \file
/// Second readers of TGA and PNG files, as plain as the formats' rules, to compare the engine's with.
#pragma once

#include "textures/Image.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamor::test
{
/// What the reading of a file gives.
struct PlainPicture
{
    bool wasRead = false;
    /// What is printed on the error stream.
    std::string errors;
    /// The image's size afterwards: also that of a PNG file that failed behind its signature.
    std::int32_t width = 2;
    std::int32_t height = 2;
    /// Channels from the first on, of 0 to 1; what is missing behind them is 0. Not for a TGA file
    /// of a depth that is neither 24 nor 32, whose pixels are undefined.
    std::vector<float> channels;
    bool hasDefinedPixels = true;

    std::size_t pixelCount() const;
};

/// Reads a TGA file of these bytes.
PlainPicture readTGAPlainly(const std::string& bytes);

/// Reads a PNG file of these bytes.
/// \param path  as it is printed
PlainPicture readPNGPlainly(const std::string& bytes, const std::string& path);

/// What differs first between an image that was read and the plain picture, or "". A large picture
/// of nothing but zeros is compared at its ends.
std::string difference(const Image& image, const PlainPicture& plain);
} // namespace tamor::test
