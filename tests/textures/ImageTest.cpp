#include "textures/Image.h"

#include "tests/textures/LiveArrays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <new>
#include <span>
#include <vector>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::FloatEq;

std::span<const float> floats(const Image& image)
{
    return {image.pixels, image.pixelCount() * 4};
}

TEST(TextureKey, IsEqualByPathAndFlags)
{
    EXPECT_EQ((TextureKey{"a.tga", 2}), (TextureKey{"a.tga", 2}));
    EXPECT_NE((TextureKey{"a.tga", 2}), (TextureKey{"a.tga", 0}));
    EXPECT_NE((TextureKey{"a.tga", 2}), (TextureKey{"A.tga", 2}));
    EXPECT_NE((TextureKey{"a.tga", 2}), (TextureKey{"./a.tga", 2}));
}

TEST(Image, StartsAs2By2Pixels)
{
    const Image image;

    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 2);
    ASSERT_NE(image.pixels, nullptr);
    EXPECT_EQ(image.pixelCount(), 4U);
}

TEST(Image, IsThreeWordsWhoseCopiesShareThePixels)
{
    const Image image;
    const Image copy = image;

    EXPECT_EQ(sizeof(Image), 2 * sizeof(std::int32_t) + sizeof(float*));
    EXPECT_EQ(copy.pixels, image.pixels);
}

TEST(Image, LeavesItsPixelsAllocatedWhenItGoesOutOfScope)
{
    const int before = test::liveArrays();

    {
        const Image image;
    }

    EXPECT_EQ(test::liveArrays(), before + 1);
}

TEST(Image, SetFromBytesWithAlphaDividesEachChannelBy255)
{
    const std::array<std::uint8_t, 8> bytes = {0, 51, 102, 153, 204, 255, 1, 254};
    Image image;

    EXPECT_TRUE(image.setFromBytes(1, 2, true, bytes.data()));

    EXPECT_EQ(image.width, 1);
    EXPECT_EQ(image.height, 2);
    EXPECT_THAT(floats(image),
                ElementsAre(0.0F, FloatEq(0.2F), FloatEq(0.4F), FloatEq(0.6F), FloatEq(0.8F), 1.0F,
                            FloatEq(0.003921569F), FloatEq(0.996078431F)));
}

TEST(Image, SetFromBytesWithoutAlphaGivesAlphaOneInEveryPixel)
{
    const std::array<std::uint8_t, 9> bytes = {255, 0, 0, 0, 255, 0, 0, 0, 255};
    Image image;

    EXPECT_TRUE(image.setFromBytes(3, 1, false, bytes.data()));

    EXPECT_THAT(floats(image), ElementsAre(1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1));
}

TEST(Image, SetFromBytesFreesTheOldPixels)
{
    const std::array<std::uint8_t, 4> bytes = {};
    Image image;
    const int before = test::liveArrays();

    image.setFromBytes(1, 1, true, bytes.data());

    EXPECT_EQ(test::liveArrays(), before);
}

TEST(Image, SetFromBytesTakesAnImageWithoutPixels)
{
    const std::array<std::uint8_t, 4> bytes = {255, 255, 255, 255};
    Image image;
    delete[] image.pixels;
    image.pixels = nullptr;

    image.setFromBytes(1, 1, true, bytes.data());

    EXPECT_THAT(floats(image), ElementsAre(1, 1, 1, 1));
}

TEST(Image, SetFromBytesOfNoSizeReadsNoByte)
{
    Image image;

    EXPECT_TRUE(image.setFromBytes(0, 7, true, nullptr));
    EXPECT_EQ(image.pixelCount(), 0U);
    EXPECT_TRUE(image.setFromBytes(-3, -3, false, nullptr));
    EXPECT_EQ(image.pixelCount(), 0U);
}

TEST(Image, HasNoSizeWhereThereAreNoAddressesForIt)
{
    std::vector<std::array<std::int32_t, 2>> sizes = {{0x7FFFFFFF, 0x7FFFFFFF},
                                                      {0x40000000, 0x40000000}};
    if (sizeof(void*) == 4)
        sizes.push_back({0x40000000, 1}); // has 2^32 channels
    for (const auto& [width, height] : sizes) {
        Image image;

        EXPECT_THROW(image.allocate(width, height), std::bad_alloc);

        EXPECT_EQ(image.width, 0);
        EXPECT_EQ(image.height, 0);
        EXPECT_EQ(image.pixels, nullptr);
    }
}
} // namespace
} // namespace tamor
