/// \file
/// Small pictures by formula, and their files.
#pragma once

#include "maths/Vector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
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

/// Writes a run-length encoded true-colour TGA file of 24 bits a pixel, rows in the picture's
/// order. \return whether that worked
inline bool writeTGA(const Raster& raster, const std::string& path)
{
    const auto low = [](int value) { return static_cast<std::uint8_t>(value & 255); };
    const auto high = [](int value) { return static_cast<std::uint8_t>(value >> 8); };
    std::vector<std::uint8_t> file = {0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    file.insert(file.end(), {low(raster.width), high(raster.width), low(raster.height),
                             high(raster.height), 24, 0});

    constexpr std::size_t longestPacket = 128;
    const std::size_t total = raster.bytes.size() / 3;
    const auto pixel = [&](std::size_t i) {
        return raster.bytes.begin() + static_cast<long>(3 * i);
    };
    const auto isSame = [&](std::size_t i, std::size_t j) {
        return std::equal(pixel(i), pixel(i) + 3, pixel(j));
    };
    for (std::size_t start = 0; start < total;) {
        const std::size_t limit = std::min(total, start + longestPacket);
        std::size_t end = start + 1;
        while (end < limit && isSame(start, end))
            ++end;
        if (end - start > 1) { // a run: one pixel, repeated
            file.push_back(static_cast<std::uint8_t>(127 + end - start));
            file.insert(file.end(), pixel(start), pixel(start) + 3);
        } else { // raw pixels, up to the next run
            while (end < limit && (end + 1 == limit || !isSame(end, end + 1)))
                ++end;
            file.push_back(static_cast<std::uint8_t>(end - start - 1));
            file.insert(file.end(), pixel(start), pixel(end));
        }
        start = end;
    }

    std::FILE* stream = std::fopen(path.c_str(), "wb");
    if (stream == nullptr)
        return false;
    const bool written = std::fwrite(file.data(), 1, file.size(), stream) == file.size();
    return std::fclose(stream) == 0 && written;
}
} // namespace tamor::tools
