#include "tests/textures/PlainImages.h"

#include <algorithm>
#include <cmath>

namespace tamor::test::plain
{
namespace
{
/// The lattice point so far on.
std::int32_t moved(std::int32_t point, int by)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(point) +
                                     static_cast<std::uint32_t>(by));
}

/// Toward zero.
std::int32_t truncated(float value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 2147483648.0F)
        return largest;
    return value <= -2147483648.0F ? least : static_cast<std::int32_t>(value);
}

float cosineInterpolate(float a, float b, float t)
{
    const float f = (1.0F - std::cos(t * 3.1415927F)) * 0.5F;
    return a * (1.0F - f) + b * f;
}
} // namespace

float noise(std::int32_t x, std::int32_t y)
{
    std::uint32_t n = static_cast<std::uint32_t>(y) * 57 + static_cast<std::uint32_t>(x);
    n = n ^ (n << 13);
    const std::uint32_t hash = ((n * n * 15731 + 789221) * n + 1376312589) & 0x7fffffff;
    return static_cast<float>(1.0 - hash / 1073741824.0);
}

float smoothNoise(std::int32_t x, std::int32_t y)
{
    const std::int32_t left = moved(x, -1);
    const std::int32_t right = moved(x, 1);
    const std::int32_t above = moved(y, -1);
    const std::int32_t below = moved(y, 1);
    return noise(x, y) / 4.0F +
           (noise(right, y) + noise(left, y) + noise(x, below) + noise(x, above)) / 8.0F +
           (noise(right, below) + noise(right, above) + noise(left, below) + noise(left, above)) /
               16.0F;
}

float interpolatedNoise(float x, float y)
{
    const std::int32_t ix = truncated(x);
    const std::int32_t iy = truncated(y);
    const float fx = x - static_cast<float>(ix);
    const float fy = y - static_cast<float>(iy);
    const float first = cosineInterpolate(smoothNoise(ix, iy), smoothNoise(moved(ix, 1), iy), fx);
    const float second = cosineInterpolate(smoothNoise(ix, moved(iy, 1)),
                                           smoothNoise(moved(ix, 1), moved(iy, 1)), fx);
    return cosineInterpolate(first, second, fy);
}

std::vector<float> perlin(std::vector<float> pixels, Size size, int octaves, float f, float a,
                          float frequencyFactor, float amplitudeFactor)
{
    const auto width = static_cast<float>(size.width);
    const auto height = static_cast<float>(size.height);
    for (int octave = 0; octave < octaves; octave++) {
        for (std::int32_t i = 0; i < size.width; i++)
            for (std::int32_t j = 0; j < size.height; j++) {
                const float x = static_cast<float>(j) / (width * f);
                const float y = static_cast<float>(i) / (height * f);
                pixels[at(size, i, j)] += interpolatedNoise(x, y) * a;
            }
        f *= frequencyFactor;
        a *= amplitudeFactor;
    }
    for (std::size_t n = 0; n < pixels.size(); n += 4)
        pixels[n + 1] = pixels[n + 2] = pixels[n];
    return pixels;
}

std::vector<float> blur(const std::vector<float>& pixels, Size size, std::int32_t radius)
{
    const float s = static_cast<float>(radius) / 2.0F + 1.0F;
    // Sums over less than nothing have no terms, however much less it is.
    const std::int32_t reach = std::max(radius, -1);
    std::vector<float> kernel;
    for (std::int32_t k = -reach; k <= reach; k++) {
        const float distance = std::sqrt(static_cast<float>(k) * static_cast<float>(k));
        kernel.push_back(std::exp(distance / (-2.0F * s * s)) / (6.2831855F * s));
    }
    if (radius == 0)
        kernel = {1.0F};
    const auto weight = [&](std::int32_t k) { return *(kernel.data() + reach + k); };

    std::vector<float> across(pixels.size());
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++)
            for (std::size_t c = 0; c < 4; c++) {
                float sum = 0.0F;
                float total = 0.0F;
                for (std::int32_t k = -reach; k <= reach; k++) {
                    if (i + k < 0 || i + k > size.width - 1)
                        continue;
                    if (c < 3 && pixels[at(size, i + k, j) + 3] == 0.0F)
                        continue;
                    sum += weight(k) * pixels[at(size, i + k, j) + c];
                    total += weight(k);
                }
                across[at(size, i, j) + c] = total != 0.0F ? sum / total : sum;
            }

    std::vector<float> along(pixels.size());
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++)
            for (std::size_t c = 0; c < 4; c++) {
                float sum = 0.0F;
                float total = 0.0F;
                for (std::int32_t k = -reach; k <= reach; k++) {
                    if (j + k < 0 || j + k > size.height - 1)
                        continue;
                    sum += weight(k) * across[at(size, i, j + k) + c];
                    total += weight(k);
                }
                along[at(size, i, j) + c] = total != 0.0F ? sum / total : sum;
            }
    return along;
}

std::vector<float> scroll(std::vector<float> pixels, Size size, std::int32_t dx, std::int32_t dy,
                          Vector fill)
{
    const float colour[] = {fill.x, fill.y, fill.z, fill.w};
    const auto move = [&](std::int64_t stepX, std::int64_t stepY) {
        const std::vector<float> old = pixels;
        for (std::int32_t y = 0; y < size.height; y++)
            for (std::int32_t x = 0; x < size.width; x++)
                for (std::int32_t c = 0; c < 4; c++) {
                    const std::int64_t fromX = x - stepX;
                    const std::int64_t fromY = y - stepY;
                    const bool isInside =
                        fromX >= 0 && fromX < size.width && fromY >= 0 && fromY < size.height;
                    const auto to = (size.width * y + x) * 4 + c;
                    const auto from = (size.width * fromY + fromX) * 4 + c;
                    pixels[static_cast<std::size_t>(to)] =
                        isInside ? old[static_cast<std::size_t>(from)] : colour[c];
                }
    };
    move(dx, 0);
    move(0, dy);
    return pixels;
}

std::vector<float> blend(const std::vector<float>& pixels, Size size, unsigned thisCode,
                         unsigned otherCode, const std::vector<float>& others, Size otherSize)
{
    const auto match = [](std::int32_t place, std::int32_t length, std::int32_t otherLength) {
        return static_cast<std::int32_t>(static_cast<float>(place) / static_cast<float>(length) *
                                         static_cast<float>(otherLength));
    };
    std::vector<float> blended;
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++) {
            const std::int32_t oi = match(i, size.width, otherSize.width);
            const std::int32_t oj = match(j, size.height, otherSize.height);
            const float* const p = &pixels[at(size, i, j)];
            const float* const o = &others[at(otherSize, oi, oj)];
            const float factors[] = {0.0F,
                                     1.0F,
                                     p[3],
                                     o[3],
                                     1.0F - p[3],
                                     1.0F - o[3],
                                     (p[0] + p[1] + p[2]) / 3.0F,
                                     (o[0] + o[1] + o[2]) / 3.0F,
                                     1.0F - (p[0] + p[1] + p[2]) / 3.0F,
                                     1.0F - (o[0] + o[1] + o[2]) / 3.0F};
            for (int c = 0; c < 4; c++) {
                // Nothing is added for a source that is left out, not even 0 times infinity.
                float sum = 0.0F;
                if (thisCode != 0)
                    sum += p[c] * factors[thisCode];
                if (otherCode != 0)
                    sum += o[c] * factors[otherCode];
                blended.push_back(sum < 0.0F ? 0.0F : sum > 1.0F ? 1.0F : sum);
            }
        }
    return blended;
}

std::vector<float> invert(std::vector<float> pixels, bool withAlpha)
{
    for (std::size_t n = 0; n < pixels.size(); n++)
        if (n % 4 != 3 || withAlpha)
            pixels[n] = 1.0F - pixels[n];
    return pixels;
}

std::vector<float> clamp(std::vector<float> pixels)
{
    for (std::size_t n = 0; n < pixels.size(); n++) {
        if (n % 4 != 3 && pixels[n] > 1.0F)
            pixels[n] = 1.0F;
        if (n % 4 != 3 && pixels[n] < 0.0F)
            pixels[n] = 0.0F;
    }
    return pixels;
}

std::vector<float> normalise(std::vector<float> pixels)
{
    float smallest = pixels[0];
    float largestRed = pixels[0];
    for (std::size_t n = 0; n < pixels.size(); n += 4) {
        if (pixels[n] < smallest)
            smallest = pixels[n];
        if (pixels[n] > largestRed)
            largestRed = pixels[n];
    }
    for (std::size_t n = 0; n < pixels.size(); n += 4)
        pixels[n] = pixels[n + 1] = pixels[n + 2] =
            (pixels[n] - smallest) / (largestRed - smallest);
    return pixels;
}
} // namespace tamor::test::plain
