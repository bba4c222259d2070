#include "textures/Image.h"

#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"
#include "tests/textures/LiveArrays.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <array>
#include <limits>
#include <vector>

namespace tamor
{
namespace
{
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

class UploadTextureGLTest : public test::WindowTest
{
protected:
    /// An image that shares `pixels`.
    static Image imageOf(std::int32_t width, std::int32_t height, std::vector<float>& pixels)
    {
        Image image;
        delete[] image.pixels;
        image.width = width;
        image.height = height;
        image.pixels = pixels.data();
        return image;
    }

    /// The bytes of a level of the texture that is bound.
    static std::vector<int> texels(int size, int level = 0)
    {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size) * 4);
        glGetTexImage(GL_TEXTURE_2D, level, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
        return {bytes.begin(), bytes.end()};
    }

    static GLint parameter(GLenum name)
    {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
        return value;
    }

    /// The calls of an upload of 2 by 2 pixels.
    static std::vector<std::string> callsWith(std::uint32_t flags)
    {
        std::vector<float> pixels(16, 1.0F);
        const Image image = imageOf(2, 2, pixels);
        std::uint32_t id = 0;
        const test::GLRecorder recorder;
        EXPECT_TRUE(uploadTexture(id, image, {"", flags}));
        return recorder.calls();
    }
};

TEST_F(UploadTextureGLTest, MakesANewTextureAndLeavesItBound)
{
    std::vector<float> pixels(4, 0.0F);
    std::uint32_t first = 0;
    std::uint32_t second = 0;

    uploadTexture(first, imageOf(1, 1, pixels), {"", 0});
    uploadTexture(second, imageOf(1, 1, pixels), {"", 0});

    EXPECT_NE(first, second);
    EXPECT_TRUE(glIsTexture(first));
    EXPECT_EQ(parameter(GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(static_cast<std::uint32_t>(bound), second);
}

TEST_F(UploadTextureGLTest, Flags0MakeMipmapsOfFourBytesAPixel)
{
    EXPECT_THAT(callsWith(0),
                ElementsAre("glGenTextures(1, answer)", StartsWith("glBindTexture(GL_TEXTURE_2D, "),
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, "
                            "GL_LINEAR_MIPMAP_NEAREST)",
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                            "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 2, 2, GL_RGBA, "
                            "GL_UNSIGNED_BYTE, data)"));
}

TEST_F(UploadTextureGLTest, Bit0MakesOneLevelOfTheRedChannel)
{
    EXPECT_THAT(callsWith(1),
                ElementsAre("glGenTextures(1, answer)", StartsWith("glBindTexture(GL_TEXTURE_2D, "),
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                            "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 2, 2, 0, GL_LUMINANCE, "
                            "GL_UNSIGNED_BYTE, data)"));
}

TEST_F(UploadTextureGLTest, Bit4UploadsTheFloats)
{
    EXPECT_EQ(callsWith(16).back(),
              "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 2, 2, GL_RGBA, GL_FLOAT, data)");
    EXPECT_EQ(callsWith(17).back(),
              "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_FLOAT, data)");
}

TEST_F(UploadTextureGLTest, Bits1And2ClampToTheEdge)
{
    EXPECT_THAT(callsWith(6),
                ElementsAre("glGenTextures(1, answer)", StartsWith("glBindTexture(GL_TEXTURE_2D, "),
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, "
                            "GL_LINEAR_MIPMAP_NEAREST)",
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE)",
                            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)",
                            StartsWith("gluBuild2DMipmaps(")));
    callsWith(2);
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_S), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_T), GL_REPEAT);
    callsWith(4);
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_S), GL_REPEAT);
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
}

TEST_F(UploadTextureGLTest, Bits3And5HaveNoEffect)
{
    const std::vector<std::string> calls = callsWith(8 | 32);

    EXPECT_EQ(calls.size(), 5U);
    EXPECT_EQ(calls.back(),
              "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 2, 2, GL_RGBA, GL_UNSIGNED_BYTE, data)");
    EXPECT_EQ(calls[2], callsWith(0)[2]);
}

TEST_F(UploadTextureGLTest, TruncatesBytesAndWrapsThem)
{
    // 1.5 is 382, which is 126 without its higher bits. -1 is -255, and so 1.
    std::vector<float> pixels = {1.0F, 0.999F, 1.5F, 0.0F, -1.0F, 2.0F, 0.5F, 257.0F};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(2, 1, pixels), {"", 0});

    EXPECT_THAT(texels(2), ElementsAre(255, 254, 126, 0, 1, 254, 127, 255));
}

TEST_F(UploadTextureGLTest, GivesBackTheBytesThatAnImageWasMadeOf)
{
    std::vector<std::uint8_t> bytes(256);
    std::vector<int> expected(256);
    for (std::size_t k = 0; k < 256; k++) {
        bytes[k] = static_cast<std::uint8_t>(k);
        expected[k] = static_cast<int>(k);
    }
    Image image;
    image.setFromBytes(8, 8, true, bytes.data());
    std::uint32_t id = 0;

    uploadTexture(id, image, {"", 0});

    EXPECT_THAT(texels(64), ElementsAreArray(expected));
}

TEST_F(UploadTextureGLTest, GivesNumbersThatNoIntegerHoldsTheByteZero)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    std::vector<float> pixels = {infinity, -infinity, notANumber, 1e30F};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(1, 1, pixels), {"", 0});

    EXPECT_THAT(texels(1), Each(0));
}

TEST_F(UploadTextureGLTest, KeepsTheLowBitsOfLargeNumbers)
{
    // Times 255, exactly: 2^30 + 128, 2^31 - 128, -(2^30 + 128) and 2^31.
    const float large = 1073741952.0F / 255.0F;
    std::vector<float> pixels = {large, 2147483520.0F / 255.0F, -large, 2147483648.0F / 255.0F};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(1, 1, pixels), {"", 0});

    EXPECT_THAT(texels(1), ElementsAre(128, 128, 128, 0));
}

TEST_F(UploadTextureGLTest, OneChannelTakesRedForAllColoursAndNoAlpha)
{
    std::vector<float> pixels = {0.2F, 0.9F, 0.9F, 0.1F, 0.4F, 0.9F, 0.9F, 0.1F,
                                 0.6F, 0.9F, 0.9F, 0.1F, 0.8F, 0.9F, 0.9F, 0.1F};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(4, 1, pixels), {"", 1});

    EXPECT_THAT(texels(4), ElementsAre(51, 51, 51, 255, 102, 102, 102, 255, 153, 153, 153, 255, 204,
                                       204, 204, 255));
}

TEST_F(UploadTextureGLTest, FloatsAreClampedByOpenGLAndNotWrapped)
{
    std::vector<float> pixels = {1.5F, -1.0F, 0.2F, 1.0F};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(1, 1, pixels), {"", 17});
    EXPECT_THAT(texels(1), ElementsAre(255, 0, 51, 255));
    uploadTexture(id, imageOf(1, 1, pixels), {"", 16});
    EXPECT_THAT(texels(1), ElementsAre(255, 0, 51, 255));
}

TEST_F(UploadTextureGLTest, MipmapsAreTheMeansOfTheirPixels)
{
    std::vector<float> pixels = {0, 0, 0, 1, 1, 0, 0, 1, 0, 1, 0, 1, 1, 1, 0, 1};
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(2, 2, pixels), {"", 0});

    const std::vector<int> smallest = texels(1, 1);
    EXPECT_NEAR(smallest[0], 127, 1); // GLU rounds the mean of 0 and 255 either way
    EXPECT_NEAR(smallest[1], 127, 1);
    EXPECT_EQ(smallest[2], 0);
    EXPECT_EQ(smallest[3], 255);
}

TEST_F(UploadTextureGLTest, LeavesTheStagedBytesAllocatedAndFreesNoPixels)
{
    std::vector<float> pixels(4);
    const Image image = imageOf(1, 1, pixels);
    std::uint32_t id = 0;
    const int before = test::liveArrays();

    uploadTexture(id, image, {"", 0});
    EXPECT_EQ(test::liveArrays(), before + 1);
    uploadTexture(id, image, {"", 1});
    EXPECT_EQ(test::liveArrays(), before + 2);
    uploadTexture(id, image, {"", 16});
    EXPECT_EQ(test::liveArrays(), before + 2);
}

TEST_F(UploadTextureGLTest, ReadsRowsOfOneChannelAtMultiplesOfFour)
{
    // Rows of three bytes, of which OpenGL takes the second one from the fifth on.
    std::vector<float> pixels;
    for (const float byte : {1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F})
        pixels.insert(pixels.end(), {byte / 255.0F + 0.001F, 0.0F, 0.0F, 0.0F});
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(3, 2, pixels), {"", 1});

    std::array<std::uint8_t, 8> red{};
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RED, GL_UNSIGNED_BYTE, red.data());
    EXPECT_THAT((std::vector<int>{red.begin(), red.end()}), ElementsAre(1, 2, 3, 0, 5, 6, 0, 0));
}

TEST_F(UploadTextureGLTest, HasRoomForTheRowsOfOneChannelAsOpenGLReadsThem)
{
    std::vector<float> pixels(std::size_t{9} * 9 * 4, 0.5F);
    const test::GuardedArrays guarded;
    std::uint32_t id = 0;

    for (const int alignment : {1, 2, 4, 8}) {
        glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
        for (int width = 1; width <= 9; width++)
            for (int height = 1; height <= 9; height++)
                uploadTexture(id, imageOf(width, height, pixels), {"", 1});
    }

    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(UploadTextureGLTest, HasRoomForWhatGLUReadsBehindThePixels)
{
    const test::GuardedArrays guarded;
    std::uint32_t id = 0;

    for (const std::uint32_t flags : {0U, 16U}) {
        for (int width = 1; width <= 64; width++) {
            for (int height = 1; height <= 64; height++) {
                Image image;
                image.clear(width, height);
                uploadTexture(id, image, {"", flags});
                glDeleteTextures(1, &id);
                delete[] image.pixels;
            }
        }
    }

    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(UploadTextureGLTest, UploadsFloatsThatGLUScales)
{
    // Three equal rows of three pixels become four of four: the inner pixels take a third from the
    // outer ones.
    std::vector<float> pixels;
    for (int row = 0; row < 3; row++)
        pixels.insert(pixels.end(), {1, 0, 0, 1, 0, 0, 0, 1, 0, 1, 0, 1});
    std::uint32_t id = 0;

    uploadTexture(id, imageOf(3, 3, pixels), {"", 16});

    std::vector<int> expected;
    for (int row = 0; row < 4; row++)
        expected.insert(expected.end(),
                        {255, 0, 0, 255, 85, 0, 0, 255, 0, 85, 0, 255, 0, 255, 0, 255});
    EXPECT_THAT(texels(16), ElementsAreArray(expected));
}

TEST_F(UploadTextureGLTest, SendsNothingOfMorePixelsThanCanBeCounted)
{
    // The pixels are not looked at, so that there need not be 2^28 of them.
    Image image;
    image.width = 1 << 14;
    image.height = (1 << 14) + 1;
    std::uint32_t id = 0;

    EXPECT_TRUE(uploadTexture(id, image, {"", 0}));

    EXPECT_NE(id, 0U);
    std::int32_t width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 0);
}

TEST_F(UploadTextureGLTest, TakesAnImageWithoutPixels)
{
    Image image;
    image.allocate(0, 0);
    std::uint32_t id = 0;

    for (const std::uint32_t flags : {0U, 1U, 16U, 17U})
        EXPECT_TRUE(uploadTexture(id, image, {"", flags}));
    image.width = -2;
    image.height = -3;
    for (const std::uint32_t flags : {0U, 1U, 16U, 17U})
        EXPECT_TRUE(uploadTexture(id, image, {"", flags}));
}
} // namespace
} // namespace tamor
