#include "tests/support/CapturedErrors.h"
#include "tests/textures/ImageValues.h"
#include "tests/textures/PlainImages.h"
#include "textures/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

// Each procedure is held to the plain loops of PlainImages.h, bit for bit.

namespace tamor
{
namespace
{
using namespace test;

TEST(ImageClear, MakesOpaqueBlackOfTheNewSize)
{
    OwnedImage image;

    EXPECT_TRUE(image.clear(2, 3));

    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 3);
    const std::vector<float> expected = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1,
                                         0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageClear, FollowedByInvertGivesOpaqueWhite)
{
    OwnedImage image(1, 2);

    EXPECT_TRUE(image.invert(false));

    EXPECT_EQ(image.values(), (std::vector<float>{1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST(ImageInvert, TurnsAlphaOnlyWhenAsked)
{
    OwnedImage image(1, 1);
    image.set({0.25F, 1.5F, -1.0F, 0.75F});

    image.invert(false);
    EXPECT_EQ(image.values(), (std::vector<float>{0.75F, -0.5F, 2.0F, 0.75F}));

    image.invert(true);
    EXPECT_EQ(image.values(), (std::vector<float>{0.25F, 1.5F, -1.0F, 0.25F}));
}

TEST(ImageInvert, ReachesEveryPixelOfEverySize)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 1);
        std::vector<float> expected = image.values();
        for (std::size_t n = 0; n < expected.size(); n++)
            expected[n] = n % 4 == 3 ? expected[n] : 1.0F - expected[n];

        image.invert(false);

        expectSameBits(image.values(), expected, named(size, "colours"));
    }
}

TEST(ImageClamp, LimitsColoursAndLeavesAlpha)
{
    OwnedImage image(1, 2);
    image.set({1.5F, -0.5F, 0.5F, 2.0F, notANumber, infinity, -infinity, -3.0F});

    EXPECT_TRUE(image.clamp());

    expectSameBits(image.values(), {1.0F, 0.0F, 0.5F, 2.0F, notANumber, 1.0F, 0.0F, -3.0F}, "");
}

TEST(ImageClamp, ReachesEveryPixelOfEverySize)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 3);
        std::vector<float> expected = image.values();
        for (std::size_t n = 0; n < expected.size(); n++)
            if (n % 4 != 3)
                expected[n] = std::min(std::max(expected[n], 0.0F), 1.0F);

        image.clamp();

        expectSameBits(image.values(), expected, named(size, "clamped"));
    }
}

TEST(ImageNormalise, StretchesRedAndCopiesItToGreenAndBlue)
{
    OwnedImage image(1, 3);
    image.set({-1, 7, 8, 0.1F, 3, 9, 9, 0.2F, 1, 0, 0, 0.3F});

    EXPECT_TRUE(image.normalise());

    const std::vector<float> expected = {0, 0, 0, 0.1F, 1, 1, 1, 0.2F, 0.5F, 0.5F, 0.5F, 0.3F};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageNormalise, DividesByZeroWhenRedIsTheSameEverywhere)
{
    OwnedImage image(1, 2);
    image.set({0.5F, 0, 1, 1, 0.5F, 0, 1, 1});

    EXPECT_TRUE(image.normalise());

    EXPECT_TRUE(std::isnan(image.pixels[0]));
    EXPECT_TRUE(std::isnan(image.pixels[6]));
    EXPECT_EQ(image.pixels[7], 1.0F);
}

TEST(ImageNormalise, EqualsThePlainLoopsBitForBit)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 4);
        const std::vector<float> expected = plain::normalise(image.values());

        image.normalise();

        expectSameBits(image.values(), expected, named(size, "normalised"));
    }
}

TEST(ImageScroll, MovesRightAndDownAndFillsBehind)
{
    // Three columns and two rows, for scrolling takes rows of `width` pixels.
    OwnedImage image(3, 2);
    image.set({1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6});

    EXPECT_TRUE(image.scroll(1, 1, 99, -99, Vector(7, 8, 9, 0), true));

    const std::vector<float> expected = {7, 8, 9, 0, 7, 8, 9, 0, 7, 8, 9, 0,
                                         7, 8, 9, 0, 1, 1, 1, 1, 2, 2, 2, 2};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageScroll, MovesLeftAndUpAndFillsBehind)
{
    OwnedImage image(3, 2);
    image.set({1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6});

    image.scroll(-2, -1, 0, 0, Vector(7, 8, 9, 0), false);

    const std::vector<float> expected = {6, 6, 6, 6, 7, 8, 9, 0, 7, 8, 9, 0,
                                         7, 8, 9, 0, 7, 8, 9, 0, 7, 8, 9, 0};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageScroll, EqualsThePlainLoopsForAllDistances)
{
    const Vector fill(0.5F, -1.0F, 2.0F, 0.25F);
    for (const Size size : sizes)
        for (const std::int32_t dx : {0, 1, -1, 4, -5, 200, -200})
            for (const std::int32_t dy : {0, 1, -1, 3, -6, 200, -200}) {
                OwnedImage image;
                fillScattered(image, size, 8);
                const std::vector<float> expected =
                    plain::scroll(image.values(), size, dx, dy, fill);

                image.scroll(dx, dy, 0, 0, fill, false);

                expectSameBits(image.values(), expected,
                               named(size, std::to_string(dx) + " and " + std::to_string(dy)));
            }
}

TEST(ImageScroll, LeavesOnlyTheFillAtTheFarthestDistances)
{
    for (const std::int32_t distance : {largest, least, 2, -2}) {
        OwnedImage right(2, 2);
        right.scroll(distance, 0, 0, 0, Vector(3, 3, 3, 3), false);
        EXPECT_EQ(right.values(), std::vector<float>(16, 3.0F)) << distance;

        OwnedImage down(2, 2);
        down.scroll(0, distance, 0, 0, Vector(3, 3, 3, 3), false);
        EXPECT_EQ(down.values(), std::vector<float>(16, 3.0F)) << distance;
    }
}

TEST(ImageBlend, ReadsEachPixelOfASmallerImageForFourOfItsOwn)
{
    OwnedImage image(4, 4);
    OwnedImage other(2, 2);
    other.set({0.1F, 0, 0, 1, 0.2F, 0, 0, 1, 0.3F, 0, 0, 1, 0.4F, 0, 0, 1});

    EXPECT_TRUE(image.blend(0, 1, other));

    std::vector<float> reds;
    for (std::size_t n = 0; n < 64; n += 4)
        reds.push_back(image.pixels[n]);
    const std::vector<float> expected = {0.1F, 0.1F, 0.2F, 0.2F, 0.1F, 0.1F, 0.2F, 0.2F,
                                         0.3F, 0.3F, 0.4F, 0.4F, 0.3F, 0.3F, 0.4F, 0.4F};
    EXPECT_EQ(reds, expected);
}

TEST(ImageBlend, CodesOneAndZeroLeaveTheImageAsItWasButClamped)
{
    OwnedImage image(1, 1);
    image.set({0.5F, 1.5F, -0.5F, 2.0F});
    OwnedImage other(1, 1);
    other.set({infinity, infinity, infinity, infinity});

    image.blend(1, 0, other);

    EXPECT_EQ(image.values(), (std::vector<float>{0.5F, 1.0F, 0.0F, 1.0F}));
}

TEST(ImageBlend, LaysOneImageOverTheOtherByAlpha)
{
    const std::vector<float> pixel = {1.0F, 0.0F, 0.5F, 0.25F};
    OwnedImage other(1, 1);
    other.set({0.0F, 1.0F, 0.5F, 0.75F});

    OwnedImage above(1, 1);
    above.set(pixel);
    above.blend(2, 4, other);
    EXPECT_EQ(above.values(), (std::vector<float>{0.25F, 0.75F, 0.5F, 0.625F}));

    OwnedImage below(1, 1);
    below.set(pixel);
    below.blend(5, 3, other);
    EXPECT_EQ(below.values(), (std::vector<float>{0.25F, 0.75F, 0.5F, 0.625F}));
}

TEST(ImageBlend, TakesLuminanceAsTheUnweightedMean)
{
    OwnedImage image(1, 1);
    image.set({0.75F, 0.0F, 0.0F, 1.0F}); // luminance 0.25
    OwnedImage other(1, 1);
    other.set({0.0F, 1.5F, 0.0F, 0.5F}); // luminance 0.5

    image.blend(7, 8, other);

    EXPECT_EQ(image.values(), (std::vector<float>{0.375F, 1.0F, 0.0F, 0.875F}));
}

void expectPlainBlend(Size size, Size otherSize, unsigned thisCode, unsigned otherCode)
{
    OwnedImage image;
    fillScattered(image, size, 9);
    OwnedImage other;
    fillScattered(other, otherSize, 10);
    const std::vector<float> expected =
        plain::blend(image.values(), size, thisCode, otherCode, other.values(), otherSize);

    image.blend(thisCode, otherCode, other);

    expectSameBits(image.values(), expected,
                   named(size, "codes " + std::to_string(thisCode) + std::to_string(otherCode)));
}

TEST(ImageBlend, EqualsThePlainLoopsForAllCodes)
{
    for (unsigned codes = 0; codes < 100; codes++)
        expectPlainBlend({9, 20}, {7, 31}, codes / 10, codes % 10);
}

TEST(ImageBlend, EqualsThePlainLoopsForAllSizes)
{
    for (const Size size : sizes)
        for (const Size otherSize : sizes)
            expectPlainBlend(size, otherSize, 9, 3);
}

TEST(ImageBlend, WithItselfReadsThePixelsAsTheyWere)
{
    // For these sizes the relative place of a pixel is not always its own.
    const Size size = {49, 61};
    OwnedImage image;
    fillScattered(image, size, 11);
    const std::vector<float> expected =
        plain::blend(image.values(), size, 3, 6, image.values(), size);

    image.blend(3, 6, image);

    expectSameBits(image.values(), expected, "itself");
}

TEST(ImageBlend, SaysForEachPixelAndSourceThatACodeIsUnknown)
{
    OwnedImage image(1, 2);
    image.invert(false);
    OwnedImage other(1, 1);
    other.set({0.5F, 0.25F, 0.125F, 1.0F});
    const CapturedErrors errors;

    EXPECT_TRUE(image.blend(10, 1, other));

    EXPECT_EQ(errors.text(), "Unknown texture operation\nUnknown texture operation\n");
    EXPECT_EQ(image.values(),
              (std::vector<float>{0.5F, 0.25F, 0.125F, 1.0F, 0.5F, 0.25F, 0.125F, 1.0F}));
}

TEST(ImageBlend, SaysSoTwiceAPixelWhenBothCodesAreUnknown)
{
    OwnedImage image(1, 1);
    const OwnedImage other(1, 1);
    const CapturedErrors errors;

    EXPECT_TRUE(image.blend(4294967295U, 10, other));

    EXPECT_EQ(errors.text(), "Unknown texture operation\nUnknown texture operation\n");
    EXPECT_EQ(image.values(), std::vector<float>(4, 0.0F));
}

TEST(ImageBlend, WithAnImageWithoutPixelsChangesNothing)
{
    OwnedImage image(1, 1);
    const OwnedImage empty(0, 3);

    EXPECT_TRUE(image.blend(0, 1, empty));

    EXPECT_EQ(image.values(), (std::vector<float>{0, 0, 0, 1}));
}

TEST(ImageProcedures, TakeSizesWithoutPixels)
{
    const Size withoutPixels[] = {{0, 0},  {0, 5},   {5, 0},          {-3, 4},
                                  {4, -3}, {-2, -2}, {least, largest}};
    for (const Size size : withoutPixels) {
        OwnedImage image;
        const OwnedImage other(2, 2);
        EXPECT_TRUE(image.clear(size.width, size.height));
        EXPECT_EQ(image.width, size.width);
        EXPECT_EQ(image.height, size.height);
        EXPECT_EQ(image.pixelCount(), 0U);

        EXPECT_TRUE(image.invert(true));
        EXPECT_TRUE(image.perlin(2, 0.5F, 1.0F, 0.5F, 0.5F));
        EXPECT_TRUE(image.clamp());
        EXPECT_TRUE(image.normalise());
        EXPECT_TRUE(image.blur(3));
        EXPECT_TRUE(image.scroll(1, 1, 0, 0, Vector(), false));
        EXPECT_TRUE(image.blend(1, 1, other));
    }
}
/// Small numbers mostly, and now and then one of the largest.
std::int32_t anyInteger(std::mt19937& random)
{
    const std::int32_t extremes[] = {largest, least, -1000000007, 1 << 24};
    const auto number = static_cast<std::int32_t>(random() % 90) - 20;
    return random() % 8 == 0 ? extremes[random() % 4] : number;
}

float anyFloat(std::mt19937& random)
{
    const float extremes[] = {0.0F, infinity, -infinity, notANumber, 3e38F, -1e-40F};
    const float number = static_cast<float>(random() % 4000) / 1000.0F - 1.0F;
    return random() % 8 == 0 ? extremes[random() % 6] : number;
}

// The judge is the address sanitiser: images end with their arrays.
TEST(ImageProcedures, StayInsideTheirStorageWhateverTheArguments)
{
    std::mt19937 random(12);
    const CapturedErrors errors; // of unknown factor codes
    for (int round = 0; round < 400; round++) {
        OwnedImage image(static_cast<std::int32_t>(random() % 40) - 2,
                         static_cast<std::int32_t>(random() % 90) - 2);
        const OwnedImage other(static_cast<std::int32_t>(random() % 40) - 2,
                               static_cast<std::int32_t>(random() % 40) - 2);
        for (std::size_t n = 0; n < image.pixelCount() * 4; n++)
            image.pixels[n] = anyFloat(random);

        image.perlin(static_cast<std::int32_t>(random() % 4), anyFloat(random), anyFloat(random),
                     anyFloat(random), anyFloat(random));
        image.scroll(anyInteger(random), anyInteger(random), anyInteger(random), anyInteger(random),
                     Vector(), true);
        image.blur(anyInteger(random));
        const auto codes = static_cast<std::uint32_t>(random());
        image.blend(codes % 11, codes / 11 % 11, random() % 4 == 0 ? image : other);
        image.normalise();
        image.clamp();
        image.invert(true);
    }
}
} // namespace
} // namespace tamor
