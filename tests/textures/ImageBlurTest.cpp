#include "tests/textures/ImageValues.h"
#include "tests/textures/PlainImages.h"
#include "textures/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

// Each procedure is held to the plain loops of PlainImages.h, bit for bit.

namespace tamor
{
namespace
{
using namespace test;

TEST(ImageBlur, OfRadiusZeroOnlyBlackensTransparentPixels)
{
    OwnedImage image(2, 1);
    image.set({0.5F, 2.0F, -1.0F, 0.25F, 0.5F, 2.0F, -1.0F, 0.0F});

    EXPECT_TRUE(image.blur(0));

    EXPECT_EQ(image.values(), (std::vector<float>{0.5F, 2.0F, -1.0F, 0.25F, 0, 0, 0, 0}));
}

TEST(ImageBlur, WeighsByTheExponentialOfTheDistance)
{
    // Radius 2 has a spread of 2, so a neighbour counts exp(-1 / 8) = 0.882497 of the middle and
    // the next one exp(-2 / 8) = 0.778801. All five together are 4.322596; a Gaussian's would be
    // less.
    OwnedImage image(5, 1);
    image.pixels[4 * 2] = 1.0F;

    image.blur(2);

    EXPECT_NEAR(image.pixels[4 * 2], 1.0F / 4.322596F, 1e-6F);
    // The outermost pixel has only three of the weights: 1, 0.882497 and 0.778801.
    EXPECT_NEAR(image.pixels[0], 0.778801F / 2.661298F, 1e-6F);
}

TEST(ImageBlur, CutsTheKernelAtTheBorderAndRenormalises)
{
    OwnedImage image(3, 1);
    image.set({1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1});

    image.blur(1);

    // The first pixel has itself and one neighbour, which counts exp(-1 / 4.5) = 0.800737 of it.
    EXPECT_NEAR(image.pixels[0], 1.0F / 1.800737F, 1e-6F);
    EXPECT_NEAR(image.pixels[3], 1.0F, 1e-6F);
    EXPECT_EQ(image.pixels[8], 0.0F);
}

TEST(ImageBlur, KeepsTheColourOfTransparentPixelsOutAcrossRowsOnly)
{
    const std::vector<float> redBesideInvisibleGreen = {1, 0, 0, 1, 0, 1, 0, 0};
    OwnedImage along(1, 2);
    along.set(redBesideInvisibleGreen);
    OwnedImage across(2, 1);
    across.set(redBesideInvisibleGreen);

    across.blur(1);
    along.blur(1);

    // Across rows both pixels become red, while alpha is shared out.
    EXPECT_EQ(across.pixels[1], 0.0F);
    EXPECT_FLOAT_EQ(across.pixels[4], 1.0F);
    EXPECT_NEAR(across.pixels[3], 1.0F / 1.800737F, 1e-6F);
    // Along the row the green pixel has turned black before, and dims the red one.
    EXPECT_EQ(along.pixels[1], 0.0F);
    EXPECT_NEAR(along.pixels[0], 1.0F / 1.800737F, 1e-6F);
}

TEST(ImageBlur, EqualsThePlainLoopsBitForBit)
{
    for (const Size size : sizes)
        for (const std::int32_t radius : {0, 1, 2, 4, 7, 40}) {
            OwnedImage image;
            fillScattered(image, size, 5);
            const std::vector<float> expected = plain::blur(image.values(), size, radius);

            image.blur(radius);

            expectSameBits(image.values(), expected,
                           named(size, "radius " + std::to_string(radius)));
        }
}

TEST(ImageBlur, EqualsThePlainLoopsWhereNoPixelIsTransparentOrOneIs)
{
    const Size size = {40, 21};
    for (const int transparentRow : {-1, 0, 20, 39}) {
        OwnedImage image;
        fillScattered(image, size, 6);
        for (std::size_t n = 3; n < image.pixelCount() * 4; n += 4)
            image.pixels[n] = 0.5F;
        if (transparentRow >= 0)
            image.pixels[at(size, transparentRow, 20) + 3] = -0.0F;
        const std::vector<float> expected = plain::blur(image.values(), size, 4);

        image.blur(4);

        expectSameBits(image.values(), expected,
                       "transparent row " + std::to_string(transparentRow));
    }
}

TEST(ImageBlur, SpreadsInfinitiesAsThePlainLoopsDo)
{
    const Size size = {12, 12};
    OwnedImage image;
    fillScattered(image, size, 7);
    image.pixels[at(size, 5, 5)] = infinity;
    image.pixels[at(size, 5, 5) + 3] = 0.0F;
    image.pixels[at(size, 9, 2)] = -infinity;
    image.pixels[at(size, 9, 2) + 3] = 1.0F;
    const std::vector<float> expected = plain::blur(image.values(), size, 3);

    image.blur(3);

    expectSameBits(image.values(), expected, "infinities");
}

TEST(ImageBlur, LeavesNothingOfAnImageWhenTheRadiusIsNegative)
{
    for (const std::int32_t radius : {-1, -5, least}) {
        OwnedImage image(3, 2);
        image.invert(false);

        EXPECT_TRUE(image.blur(radius));

        EXPECT_EQ(image.values(), std::vector<float>(24, 0.0F));
    }
}

TEST(ImageBlur, TakesAnyLargeRadius)
{
    OwnedImage image(3, 2);
    image.invert(false);

    EXPECT_TRUE(image.blur(largest));

    EXPECT_EQ(image.values(), std::vector<float>(24, 1.0F));
}
} // namespace
} // namespace tamor
