/// \file
/// Pictures as run-length encoded true-colour TGA files, the kind that the engine reads.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace tamor::tools
{
/// Appends a row to `file` as packets of at most 128 pixels: equal neighbours as one run, others as
/// they are.
/// \param row  `width` pixels of `pixelSize` bytes
inline void appendRow(std::vector<std::uint8_t>& file, const std::uint8_t* row, int width,
                      int pixelSize)
{
    const auto pixel = [&](int x) { return row + x * pixelSize; };
    const auto isLikeTheNext = [&](int x) {
        return std::equal(pixel(x), pixel(x + 1), pixel(x + 1));
    };
    for (int x = 0; x < width;) {
        const int longest = std::min(128, width - x);
        int count = 1;
        while (count < longest && isLikeTheNext(x + count - 1))
            count++;
        const bool isRun = count > 1;
        while (!isRun && count < longest && (x + count + 1 >= width || !isLikeTheNext(x + count)))
            count++;
        file.push_back(static_cast<std::uint8_t>(isRun ? 127 + count : count - 1));
        file.insert(file.end(), pixel(x), pixel(x + (isRun ? 1 : count)));
        x += count;
    }
}

/// Writes a file of 24 or 32 bits a pixel, rows in the picture's order.
/// \param pixelSize  bytes a pixel, 3 or 4
/// \param bytes      width x height pixels: blue, green, red and perhaps alpha
/// \return whether that worked
inline bool writeTGA(const std::string& path, int width, int height, int pixelSize,
                     const std::vector<std::uint8_t>& bytes)
{
    const auto low = [](int value) { return static_cast<std::uint8_t>(value & 255); };
    const auto high = [](int value) { return static_cast<std::uint8_t>(value >> 8); };
    const int alphaBits = pixelSize == 4 ? 8 : 0;
    std::vector<std::uint8_t> file = {0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    file.insert(file.end(), {low(width), high(width), low(height), high(height), low(8 * pixelSize),
                             low(alphaBits)});
    for (int y = 0; y < height; y++)
        appendRow(file, bytes.data() + y * width * pixelSize, width, pixelSize);

    std::FILE* const stream = std::fopen(path.c_str(), "wb");
    if (stream == nullptr)
        return false;
    const bool written = std::fwrite(file.data(), 1, file.size(), stream) == file.size();
    return std::fclose(stream) == 0 && written;
}
} // namespace tamor::tools
