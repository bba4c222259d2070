#include "textures/Image.h"
#include "textures/internal/Pixels.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>
#include <vector>

namespace tamor
{
namespace
{
float luminance(const float* pixel)
{
    return (pixel[0] + pixel[1] + pixel[2]) / 3.0F;
}

/// Limits to 0 to 1; not-a-number stays.
float clamped(float value)
{
    const float capped = value > 1.0F ? 1.0F : value;
    return capped < 0.0F ? 0.0F : capped;
}

/// Adds to the `sums` of a row its `source` times the factors of `code`, which depend on the pixels
/// of `row` and their matches. The four arrays are one length.
void addToBlend(std::vector<float>& sums, const float* source, std::uint32_t code, const float* row,
                const float* matches)
{
    const auto addTimes = [&](auto factorOf) {
        for (std::size_t n = 0; n < sums.size(); n += channels) {
            const float factor = factorOf(row + n, matches + n);
            for (std::size_t c = 0; c < channels; c++)
                sums[n + c] += source[n + c] * factor;
        }
    };
    using Pixel = const float*;
    switch (code) {
    case 0:
        return;
    case 1:
        return addTimes([](Pixel, Pixel) { return 1.0F; });
    case 2:
        return addTimes([](Pixel pixel, Pixel) { return pixel[alphaChannel]; });
    case 3:
        return addTimes([](Pixel, Pixel other) { return other[alphaChannel]; });
    case 4:
        return addTimes([](Pixel pixel, Pixel) { return 1.0F - pixel[alphaChannel]; });
    case 5:
        return addTimes([](Pixel, Pixel other) { return 1.0F - other[alphaChannel]; });
    case 6:
        return addTimes([](Pixel pixel, Pixel) { return luminance(pixel); });
    case 7:
        return addTimes([](Pixel, Pixel other) { return luminance(other); });
    case 8:
        return addTimes([](Pixel pixel, Pixel) { return 1.0F - luminance(pixel); });
    case 9:
        return addTimes([](Pixel, Pixel other) { return 1.0F - luminance(other); });
    default:
        for (std::size_t n = 0; n < sums.size(); n += channels)
            std::cerr << "Unknown texture operation" << std::endl;
    }
}

/// The place among `otherLength` that is relatively where `place` is among `length`.
std::size_t matchingPlace(std::int32_t place, std::int32_t length, std::int32_t otherLength)
{
    const float match =
        static_cast<float>(place) / static_cast<float>(length) * static_cast<float>(otherLength);
    // Past 2^24 pixels a place rounds up to the length.
    return static_cast<std::size_t>(std::min(truncated(match), otherLength - 1));
}

void fillPixels(float* pixels, std::size_t count, Vector colour)
{
    for (std::size_t k = 0; k < count; k++) {
        pixels[channels * k] = colour.x;
        pixels[channels * k + 1] = colour.y;
        pixels[channels * k + 2] = colour.z;
        pixels[channels * k + alphaChannel] = colour.w;
    }
}
} // namespace

bool Image::clear(std::int32_t newWidth, std::int32_t newHeight)
{
    allocate(newWidth, newHeight);
    fillPixels(pixels, pixelCount(), Vector(0.0F, 0.0F, 0.0F, 1.0F));
    return true;
}

bool Image::invert(bool withAlpha)
{
    const std::size_t inverted = withAlpha ? channels : alphaChannel;
    const std::size_t end = pixelCount() * channels;
    for (std::size_t n = 0; n < end; n += channels)
        for (std::size_t c = 0; c < inverted; c++)
            pixels[n + c] = 1.0F - pixels[n + c];
    return true;
}

bool Image::clamp()
{
    const std::size_t end = pixelCount() * channels;
    for (std::size_t n = 0; n < end; n += channels)
        for (std::size_t c = 0; c < alphaChannel; c++)
            pixels[n + c] = clamped(pixels[n + c]);
    return true;
}

bool Image::normalise()
{
    const std::size_t end = pixelCount() * channels;
    if (end == 0)
        return true;

    float smallest = pixels[0];
    float largest = pixels[0];
    for (std::size_t n = 0; n < end; n += channels) {
        smallest = pixels[n] < smallest ? pixels[n] : smallest;
        largest = pixels[n] > largest ? pixels[n] : largest;
    }
    const float range = largest - smallest;
    for (std::size_t n = 0; n < end; n += channels)
        pixels[n] = pixels[n + 1] = pixels[n + 2] = (pixels[n] - smallest) / range;
    return true;
}

bool Image::scroll(std::int32_t dx, std::int32_t dy, std::int32_t, std::int32_t, Vector fill, bool)
{
    if (pixelCount() == 0)
        return true;

    // Meant: rows of `width` pixels, where all other procedures take rows of `height`, so that the
    // picture of an image from a file, whose rows are its width long, moves as it is seen;
    // `ImageScroll.MovesRightAndDownAndFillsBehind` holds it.
    const std::int32_t right = std::clamp(dx, -width, width);
    const auto kept = static_cast<std::size_t>(width - std::abs(right));
    const auto rowLength = static_cast<std::size_t>(width);
    const auto rowAt = [&](std::int64_t y) {
        return pixels + channels * rowLength * static_cast<std::size_t>(y);
    };

    const auto from = channels * static_cast<std::size_t>(std::max(-right, 0));
    const auto to = channels * static_cast<std::size_t>(std::max(right, 0));
    const auto filled = right > 0 ? 0 : channels * kept;
    for (std::int32_t n = 0; n < height; n++) {
        // Against the direction of the move, so that a row is read before it is written.
        const std::int32_t y = dy > 0 ? height - 1 - n : n;
        const std::int64_t source = std::int64_t{y} - dy;
        if (source < 0 || source >= height) {
            fillPixels(rowAt(y), rowLength, fill);
            continue;
        }
        std::memmove(rowAt(y) + to, rowAt(source) + from, kept * channels * sizeof(float));
        fillPixels(rowAt(y) + filled, rowLength - kept, fill);
    }
    return true;
}

bool Image::blend(std::uint32_t thisFactor, std::uint32_t otherFactor, Image other)
{
    const std::size_t otherCount = other.pixelCount();
    if (pixelCount() == 0 || otherCount == 0 || other.pixels == nullptr)
        return true;

    // An image that shares these pixels is read as it was before the blend.
    std::vector<float> copy;
    if (other.pixels == pixels)
        copy.assign(other.pixels, other.pixels + otherCount * channels);
    const float* const otherPixels = copy.empty() ? other.pixels : copy.data();

    std::vector<std::size_t> matchingColumns;
    matchingColumns.reserve(static_cast<std::size_t>(height));
    for (std::int32_t j = 0; j < height; j++)
        matchingColumns.push_back(channels * matchingPlace(j, height, other.height));

    const std::size_t rowLength = channels * static_cast<std::size_t>(height);
    std::vector<float> matches(rowLength);
    std::vector<float> sums;
    for (std::int32_t i = 0; i < width; i++) {
        float* const row = pixels + rowLength * static_cast<std::size_t>(i);
        const float* const otherRow = otherPixels + channels *
                                                        static_cast<std::size_t>(other.height) *
                                                        matchingPlace(i, width, other.width);
        float* match = matches.data();
        for (const std::size_t column : matchingColumns)
            match = std::copy_n(otherRow + column, channels, match);

        sums.assign(rowLength, 0.0F);
        addToBlend(sums, row, thisFactor, row, matches.data());
        addToBlend(sums, matches.data(), otherFactor, row, matches.data());
        std::transform(sums.begin(), sums.end(), row, clamped);
    }
    return true;
}
} // namespace tamor
