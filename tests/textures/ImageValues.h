/// \file
/// Images and values for tests that hold a procedure to plain loops, bit for bit.
#pragma once

#include "textures/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tamor::test
{
inline constexpr float infinity = std::numeric_limits<float>::infinity();
inline constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
inline constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

/// In pixels.
struct Size
{
    std::int32_t width;
    std::int32_t height;
};

// Lengths of 1, odd ones, both orders of non-square, and more than a strip of noise or a vector.
inline constexpr Size sizes[] = {{1, 1}, {1, 7},  {7, 1},   {2, 3},   {3, 2},   {5, 5},
                                 {8, 8}, {9, 20}, {33, 17}, {6, 131}, {131, 6}, {64, 64}};

/// An image whose array ends with it.
class OwnedImage : public Image
{
public:
    OwnedImage() = default;
    OwnedImage(std::int32_t newWidth, std::int32_t newHeight) { clear(newWidth, newHeight); }
    ~OwnedImage() { delete[] pixels; }
    OwnedImage(const OwnedImage&) = delete;
    OwnedImage& operator=(const OwnedImage&) = delete;

    std::vector<float> values() const { return {pixels, pixels + pixelCount() * 4}; }
    void set(const std::vector<float>& values) { std::copy(values.begin(), values.end(), pixels); }
};

/// Values from -0.25 to 1.25 in every channel. One alpha in four is 0, another 1.
inline std::vector<float> scatteredValues(Size size, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-0.25F, 1.25F);
    std::vector<float> values;
    for (std::int32_t k = 0; k < size.width * size.height; k++) {
        for (int c = 0; c < 4; c++)
            values.push_back(value(random));
        const unsigned choice = random() % 4;
        if (choice < 2)
            values.back() = static_cast<float>(choice);
    }
    return values;
}

/// Gives `image` the size, and scattered values.
inline void fillScattered(OwnedImage& image, Size size, unsigned seed)
{
    image.clear(size.width, size.height);
    image.set(scatteredValues(size, seed));
}

/// Compares the bits, so that the sign of a zero counts. Any not-a-number equals any other.
inline void expectSameBits(const std::vector<float>& actual, const std::vector<float>& expected,
                           const std::string& what)
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t n = 0; n < actual.size(); n++) {
        const bool areBothNotANumber = std::isnan(actual[n]) && std::isnan(expected[n]);
        if (areBothNotANumber ||
            std::bit_cast<std::uint32_t>(actual[n]) == std::bit_cast<std::uint32_t>(expected[n]))
            continue;
        FAIL() << what << ": float " << n << " is " << actual[n] << ", not " << expected[n];
    }
}

/// What a failing case is called.
inline std::string named(Size size, const std::string& arguments)
{
    return std::to_string(size.width) + " by " + std::to_string(size.height) + ", " + arguments;
}

/// Where the floats of a pixel begin.
inline std::size_t at(Size size, std::int32_t i, std::int32_t j)
{
    return static_cast<std::size_t>(size.height * i + j) * 4;
}
} // namespace tamor::test
