#include "tests/textures/ImageValues.h"
#include "tests/textures/PlainImages.h"
#include "textures/Image.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

// Each procedure is held to the plain loops of PlainImages.h, bit for bit.

namespace tamor
{
namespace
{
using namespace test;

TEST(ImageNoise, IsFixedForALatticePoint)
{
    // At the origin the hash is 1376312589, which is 302570765 above 2^30.
    EXPECT_EQ(Image::noise(0, 0), static_cast<float>(-302570765 / 1073741824.0));
    EXPECT_EQ(Image::noise(3, 4), Image::noise(3, 4));
    EXPECT_NE(Image::noise(3, 4), Image::noise(4, 3));
}

TEST(ImageNoise, RepeatsARowEachFiftySevenColumns)
{
    EXPECT_EQ(Image::noise(0, 1), Image::noise(57, 0));
    EXPECT_EQ(Image::noise(-57, 5), Image::noise(0, 4));
}

TEST(ImageNoise, FollowsTheHashForAllIntegers)
{
    for (const std::int32_t x : {0, 1, -1, 12345, -98765, largest, least})
        for (const std::int32_t y : {0, 1, -1, 777, -31337, largest, least}) {
            EXPECT_EQ(Image::noise(x, y), plain::noise(x, y)) << x << ", " << y;
            EXPECT_LE(std::abs(Image::noise(x, y)), 1.0F);
        }
}

TEST(ImageNoise, IsSmoothedByAxisAndDiagonalNeighbours)
{
    for (const std::int32_t x : {0, 1, -7, 1000})
        for (const std::int32_t y : {0, 2, -9, 4321})
            EXPECT_EQ(Image::smoothNoise(x, y), plain::smoothNoise(x, y)) << x << ", " << y;
}

TEST(ImageNoise, WrapsAroundAtTheEndOfTheIntegers)
{
    EXPECT_EQ(Image::smoothNoise(largest, least),
              Image::noise(largest, least) / 4.0F +
                  (Image::noise(least, least) + Image::noise(largest - 1, least) +
                   Image::noise(largest, least + 1) + Image::noise(largest, largest)) /
                      8.0F +
                  (Image::noise(least, least + 1) + Image::noise(least, largest) +
                   Image::noise(largest - 1, least + 1) + Image::noise(largest - 1, largest)) /
                      16.0F);
}

TEST(ImageCosineInterpolate, GoesFromOneEndToTheOther)
{
    EXPECT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 0.0F), 2.0F);
    EXPECT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 1.0F), 6.0F);
    EXPECT_FLOAT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 0.5F), 4.0F);
    // A third of the half wave has risen by (1 - cos 60 degrees) / 2, a quarter.
    EXPECT_FLOAT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 1.0F / 3.0F), 3.0F);
}

TEST(ImageInterpolatedNoise, IsTheSmoothNoiseOnALatticePoint)
{
    EXPECT_EQ(Image::interpolatedNoise(3.0F, 8.0F), Image::smoothNoise(3, 8));
}

TEST(ImageInterpolatedNoise, TruncatesTowardZeroOnBothSidesOfIt)
{
    for (const float x : {0.0F, 0.3F, 5.75F, -0.3F, -5.75F})
        for (const float y : {0.0F, 0.6F, 9.125F, -0.6F, -9.125F})
            EXPECT_EQ(Image::interpolatedNoise(x, y), plain::interpolatedNoise(x, y))
                << x << ", " << y;
}

TEST(ImageInterpolatedNoise, TakesAnyFloat)
{
    for (const float x : {infinity, -infinity, notANumber, 3e38F, -3e38F, 2147483648.0F})
        for (const float y : {0.0F, notANumber, infinity, -3e38F})
            Image::interpolatedNoise(x, y);
    EXPECT_TRUE(std::isnan(Image::interpolatedNoise(notANumber, 0.0F)));
}

TEST(ImagePerlin, OneOctaveOfAmplitudeOneStaysWithinMinusOneAndOne)
{
    OwnedImage image(40, 40);

    EXPECT_TRUE(image.perlin(1, 0.1F, 1.0F, 0.5F, 0.5F));

    const std::vector<float> values = image.values();
    bool hasNegative = false;
    for (std::size_t n = 0; n < values.size(); n += 4) {
        ASSERT_GE(values[n], -1.0F);
        ASSERT_LE(values[n], 1.0F);
        ASSERT_EQ(values[n + 1], values[n]);
        ASSERT_EQ(values[n + 2], values[n]);
        ASSERT_EQ(values[n + 3], 1.0F);
        hasNegative = hasNegative || values[n] < 0.0F;
    }
    EXPECT_TRUE(hasNegative);
}

TEST(ImagePerlin, EqualsThePlainLoopsBitForBit)
{
    struct Arguments
    {
        const char* name;
        int octaves;
        float frequency, amplitude, frequencyFactor, amplitudeFactor;
    };
    const Arguments rows[] = {
        {"halving cells", 5, 0.5F, 0.6F, 0.5F, 0.5F},
        {"cells of less than a pixel", 2, 0.001F, 1.0F, 0.3F, 0.7F},
        {"one wide cell", 1, 100.0F, 2.0F, 1.0F, 1.0F},
        {"growing cells", 4, 0.03F, 0.1F, 1.7F, 1.9F},
        {"a negative frequency", 3, -0.07F, 1.0F, 0.5F, -0.5F},
        {"no octave", 0, 1.0F, 1.0F, 1.0F, 1.0F},
        {"less than no octave", -3, 1.0F, 1.0F, 1.0F, 1.0F},
    };
    for (const Size size : sizes)
        for (const Arguments& row : rows) {
            OwnedImage image;
            fillScattered(image, size, 2);
            const std::vector<float> expected =
                plain::perlin(image.values(), size, row.octaves, row.frequency, row.amplitude,
                              row.frequencyFactor, row.amplitudeFactor);

            image.perlin(row.octaves, row.frequency, row.amplitude, row.frequencyFactor,
                         row.amplitudeFactor);

            expectSameBits(image.values(), expected, named(size, row.name));
        }
}

TEST(ImagePerlin, TakesFrequenciesThatGiveNoFiniteCell)
{
    for (const float frequency : {0.0F, infinity, notANumber, 1e-38F, -1e-38F, 3e38F}) {
        OwnedImage image(5, 70);
        image.perlin(2, frequency, 1.0F, 0.5F, 0.5F);
        EXPECT_EQ(image.pixels[3], 1.0F);
    }
}
} // namespace
} // namespace tamor
