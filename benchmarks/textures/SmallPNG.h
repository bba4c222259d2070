/// \file
/// A PNG file of 3 by 2 pixels, red, green, blue and alpha, of eight bits a channel.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tamor::bench
{
/// What our reader wants in front of the packed rows, and no other reader does.
constexpr const char* frontOfOurs = "\x78\x9C";

/// The bytes of the file.
/// \param front     what stands before the packed rows
/// \param textSize  the size of a chunk of text that no reader needs
std::string makeSmallPNG(const std::string& front, std::size_t textSize);

using SmallPixels = std::array<float, 24>;

/// The picture's pixels, 0 to 1.
SmallPixels smallPNGsPixels();
} // namespace tamor::bench
