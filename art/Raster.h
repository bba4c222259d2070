/// \file
/// Small pictures by formula.
#pragma once

#include "maths/Vector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace tamor::tools
{
/// A picture of three bytes a pixel: blue, green, red, as TGA files have them.
struct Raster
{
    Raster(int newWidth, int newHeight)
        : width(newWidth), height(newHeight), bytes(static_cast<std::size_t>(3 * width * height))
    {}

    /// Sets every pixel to `colour(u, v)`, with u and v from 0 to 1 at the pixel's middle and v
    /// growing with the rows.
    template <typename Colour>
    void fill(const Colour& colour)
    {
        const auto toByte = [](float channel) {
            // Few shades, so that neighbours are alike and runs long.
            constexpr float shades = 48.0F;
            const float rounded = std::round(channel * shades);
            return static_cast<std::uint8_t>(std::clamp(rounded / shades, 0.0F, 1.0F) * 255.0F);
        };
        auto out = bytes.begin();
        for (int row = 0; row < height; ++row) {
            for (int column = 0; column < width; ++column) {
                const float u = (static_cast<float>(column) + 0.5F) / static_cast<float>(width);
                const float v = (static_cast<float>(row) + 0.5F) / static_cast<float>(height);
                const Vector c = colour(u, v);
                *out++ = toByte(c.z);
                *out++ = toByte(c.y);
                *out++ = toByte(c.x);
            }
        }
    }

    int width;
    int height;
    std::vector<std::uint8_t> bytes;
};
} // namespace tamor::tools
