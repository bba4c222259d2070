#include "textures/TextureRegistry.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/textures/LiveArrays.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <string>

namespace tamor
{
namespace
{

/// One pixel of 32 bits.
const std::string smallTGA("\0\0\12\0\0\0\0\0\0\0\0\0\1\0\1\0\40\0\0\x33\x66\x99\xCC", 23);

/// A header of 5 by 3 pixels without alpha.
const std::string pngWithoutAlpha("\x89PNG\r\n\x1A\n\0\0\0\15IHDR\0\0\0\5\0\0\0\3\10\2\0\0\0crc?x",
                                  34);

class AssignTextureGLTest : public test::WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        textureRegistry.clear();
        textureRefCounts.clear();
    }

    static GLint levelSize(std::uint32_t id, GLenum name)
    {
        GLint value = 0;
        glBindTexture(GL_TEXTURE_2D, id);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, name, &value);
        return value;
    }

    test::TemporaryDirectory directory;
    test::CapturedErrors errors;
};

TEST_F(AssignTextureGLTest, LoadsAndRegistersAFirstRequest)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t id = 77;

    EXPECT_TRUE(assignTexture(id, {"a.tga", 2}));

    EXPECT_EQ(errors.text(), "");
    EXPECT_TRUE(glIsTexture(id));
    ASSERT_EQ(textureRegistry.size(), 1U);
    EXPECT_EQ(textureRegistry[0].key, (TextureKey{"a.tga", 2}));
    EXPECT_EQ(textureRegistry[0].id, id);
    EXPECT_EQ(textureRefCounts.at(id), 1);
    std::uint8_t texel[4] = {};
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, texel);
    EXPECT_THAT(texel, testing::ElementsAre(0x99, 0x66, 0x33, 0xCC));
}

TEST_F(AssignTextureGLTest, GivesASecondHolderTheSameTexture)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    assignTexture(first, {"a.tga", 0});

    EXPECT_TRUE(assignTexture(second, {"a.tga", 0}));

    EXPECT_EQ(errors.text(), "not reloading texture\n");
    EXPECT_EQ(second, first);
    EXPECT_EQ(textureRegistry.size(), 1U);
    EXPECT_EQ(textureRefCounts.at(first), 2);
}

TEST_F(AssignTextureGLTest, SaysThatAHolderHasTheTextureAlready)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t id = 0;
    assignTexture(id, {"a.tga", 0});
    const std::uint32_t held = id;

    EXPECT_TRUE(assignTexture(id, {"a.tga", 0}));

    EXPECT_EQ(errors.text(), "reassigning this texture\n");
    EXPECT_EQ(id, held);
    EXPECT_EQ(textureRefCounts.at(id), 1);
}

TEST_F(AssignTextureGLTest, MovesAHolderFromOneTextureToAnother)
{
    directory.write("a.tga", smallTGA);
    directory.write("b.tga", smallTGA);
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    assignTexture(a, {"a.tga", 0});
    assignTexture(b, {"b.tga", 0});
    std::uint32_t holder = a;

    assignTexture(holder, {"b.tga", 0});

    EXPECT_EQ(holder, b);
    EXPECT_EQ(textureRefCounts.at(a), 0);
    EXPECT_EQ(textureRefCounts.at(b), 2);
}

TEST_F(AssignTextureGLTest, WrapsACounterThatGoesBelowZero)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t id = 0;
    assignTexture(id, {"a.tga", 0});
    GLuint stranger = 0;
    glGenTextures(1, &stranger);
    glBindTexture(GL_TEXTURE_2D, stranger);
    std::uint32_t holder = stranger;

    assignTexture(holder, {"a.tga", 0});

    EXPECT_EQ(textureRefCounts.at(stranger), 65535);
}

TEST_F(AssignTextureGLTest, CountsNothingForAHolderWhoseNumberIsNoTexture)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t id = 0;
    assignTexture(id, {"a.tga", 0});
    const std::size_t size = textureRefCounts.size();
    std::uint32_t none = 4000000000U;

    assignTexture(none, {"a.tga", 0});

    EXPECT_EQ(none, id);
    EXPECT_EQ(textureRefCounts.size(), size);
    EXPECT_EQ(textureRefCounts.at(0), 0);
    EXPECT_EQ(textureRefCounts.at(id), 2);
}

TEST_F(AssignTextureGLTest, MakesAnotherTextureForOtherFlags)
{
    directory.write("a.tga", smallTGA);
    std::uint32_t plain = 0;
    std::uint32_t clamped = 0;

    assignTexture(plain, {"a.tga", 0});
    directory.write("a.tga", "no picture");
    assignTexture(clamped, {"a.tga", 2});

    EXPECT_NE(plain, clamped);
    EXPECT_EQ(textureRegistry.size(), 2U);
    EXPECT_EQ(errors.text(), "Please use compressed TGAs\n"); // so it was read again
}

TEST_F(AssignTextureGLTest, SearchesFromTheFront)
{
    GLuint names[2] = {};
    glGenTextures(2, names);
    textureRegistry = {{{"a.tga", 0}, names[0]}, {{"a.tga", 0}, names[1]}};
    std::uint32_t id = names[1];

    assignTexture(id, {"a.tga", 0});

    EXPECT_EQ(id, names[0]);
    EXPECT_EQ(errors.text(), "not reloading texture\n");
}

TEST_F(AssignTextureGLTest, ExtendsTheCountersWithZerosUpToAName)
{
    GLuint names[30] = {};
    glGenTextures(30, names);
    directory.write("a.tga", smallTGA);
    std::uint32_t id = 0;

    assignTexture(id, {"a.tga", 0});

    ASSERT_EQ(textureRefCounts.size(), std::size_t{id} + 1);
    for (std::size_t k = 0; k < id; k++)
        EXPECT_EQ(textureRefCounts[k], 0);
}

TEST_F(AssignTextureGLTest, RegistersAFileThatCannotBeRead)
{
    std::uint32_t id = 0;
    EXPECT_TRUE(assignTexture(id, {"missing.tga", 0}));
    const std::uint32_t first = id;

    std::uint32_t other = 0;
    assignTexture(other, {"missing.tga", 0});

    EXPECT_EQ(errors.text(),
              "Error loading texture tga file 'missing.tga'\nnot reloading texture\n");
    EXPECT_EQ(other, first);
    EXPECT_EQ(levelSize(first, GL_TEXTURE_WIDTH), 2);
    EXPECT_EQ(levelSize(first, GL_TEXTURE_HEIGHT), 2);
}

TEST_F(AssignTextureGLTest, GivesANameOfNoKnownKind2By2Pixels)
{
    std::uint32_t id = 0;

    EXPECT_TRUE(assignTexture(id, {"picture.bmp", 0}));

    EXPECT_EQ(errors.text(), "picture.bmp: Unsupported texture format\n");
    EXPECT_EQ(levelSize(id, GL_TEXTURE_WIDTH), 2);
    ASSERT_EQ(textureRegistry.size(), 1U);
    EXPECT_EQ(textureRegistry[0].key.path, "picture.bmp");
}

TEST_F(AssignTextureGLTest, MakesATextureOfAPNGThatIsRefused)
{
    directory.write("x.png", pngWithoutAlpha);
    std::uint32_t id = 0;

    EXPECT_TRUE(assignTexture(id, {"x.png", 0}));

    EXPECT_EQ(errors.text(), "Unsupported format of PNG. Make sure it is RGBA, non-interlaced.\n");
    EXPECT_TRUE(glIsTexture(id));
    EXPECT_EQ(textureRefCounts.at(id), 1);
    // GLU scales 5 by 3 to the nearest powers of two.
    EXPECT_EQ(levelSize(id, GL_TEXTURE_WIDTH), 4);
    EXPECT_EQ(levelSize(id, GL_TEXTURE_HEIGHT), 4);
}

TEST_F(AssignTextureGLTest, MakesATextureOfAPNGOfImpossibleSize)
{
    for (const char* size : {"\x7F\xFF\xFF\xFF", "\xFF\xFF\xFF\xFE"}) {
        std::string bytes = pngWithoutAlpha;
        bytes.replace(16, 4, size, 4);
        bytes.replace(20, 4, size, 4);
        const std::string name = directory.write("x.png", bytes);
        textureRegistry.clear();
        for (const std::uint32_t flags : {0U, 1U, 16U, 17U}) {
            std::uint32_t id = 0;
            EXPECT_TRUE(assignTexture(id, {name, flags}));
            EXPECT_NE(id, 0U);
            EXPECT_EQ(levelSize(id, GL_TEXTURE_WIDTH), 0);
        }
    }
}

/// The header of a PNG without alpha, of these sides.
std::string refusedPNG(char width, char height)
{
    std::string bytes = pngWithoutAlpha;
    bytes[19] = width;
    bytes[23] = height;
    return bytes;
}

TEST_F(AssignTextureGLTest, UploadsTheSizeThatAFailedReaderLeft)
{
    const std::vector<std::pair<char, char>> sizes = {{5, 3}, {1, 9}, {2, 2},
                                                      {1, 4}, {0, 7}, {7, 0}};
    for (const auto& [width, height] : sizes) {
        const std::string name = directory.write("x.png", refusedPNG(width, height));
        const std::string size = std::to_string(width) + ", " + std::to_string(height);
        textureRegistry.clear();
        const test::GLRecorder recorder;
        for (const std::uint32_t flags : {0U, 1U, 16U, 17U}) {
            std::uint32_t id = 0;
            EXPECT_TRUE(assignTexture(id, {name, flags}));
        }

        EXPECT_THAT(recorder.calls({"gluBuild2DMipmaps", "glTexImage2D"}),
                    testing::ElementsAre("gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, " + size +
                                             ", GL_RGBA, GL_UNSIGNED_BYTE, data)",
                                         "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, " + size +
                                             ", 0, GL_LUMINANCE, GL_UNSIGNED_BYTE, data)",
                                         "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, " + size +
                                             ", GL_RGBA, GL_FLOAT, data)",
                                         "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, " + size +
                                             ", 0, GL_RGBA, GL_FLOAT, data)"));
    }
}

TEST_F(AssignTextureGLTest, StaysInsideThePixelsOfAFailedReader)
{
    const test::GuardedArrays guarded;
    for (char width = 1; width <= 9; width++) {
        for (char height = 1; height <= 9; height++) {
            const std::string name = directory.write("x.png", refusedPNG(width, height));
            textureRegistry.clear();
            for (const std::uint32_t flags : {0U, 1U, 16U, 17U}) {
                std::uint32_t id = 0;
                EXPECT_TRUE(assignTexture(id, {name, flags}));
            }
        }
    }
}

TEST(LoadImage, ChoosesTheReaderByASubstringOfThePath)
{
    const test::CapturedErrors errors;
    Image image;

    EXPECT_FALSE(loadImage(image, {"none/tgaskin.png", 0}));
    EXPECT_FALSE(loadImage(image, {"pngmaps/a.tga", 0}));
    EXPECT_FALSE(loadImage(image, {"tgas/a.jpeg", 0}));
    EXPECT_FALSE(loadImage(image, {"pngs/a.jpeg", 0}));
    EXPECT_FALSE(loadImage(image, {"MAP.TGA", 0}));
    EXPECT_FALSE(loadImage(image, {"", 0}));

    EXPECT_EQ(errors.text(), "Error loading texture tga file 'none/tgaskin.png'\n"
                             "Error loading texture tga file 'pngmaps/a.tga'\n"
                             "Error loading texture tga file 'tgas/a.jpeg'\n"
                             "Error opening pngs/a.jpeg\n"
                             "MAP.TGA: Unsupported texture format\n"
                             ": Unsupported texture format\n");
}

TEST(LoadImage, FillsAnImage)
{
    const test::TemporaryDirectory directory;
    directory.write("a.tga", smallTGA);
    Image image;

    EXPECT_TRUE(loadImage(image, {"a.tga", 123}));

    EXPECT_EQ(image.width, 1);
    EXPECT_FLOAT_EQ(image.pixels[0], 0.6F);
}

TEST(LoadImage, LeavesAFailedReadersSizeWithThePixelsOfTheImage)
{
    const test::TemporaryDirectory directory;
    const test::CapturedErrors errors;
    for (const std::string& size : {std::string("\0\0\0\5\0\0\0\3", 8), std::string(8, '\0'),
                                    std::string("\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFE", 8)}) {
        std::string bytes = pngWithoutAlpha;
        bytes.replace(16, 8, size);
        directory.write("x.png", bytes);
        Image image;
        const Image copy = image;
        copy.pixels[15] = 0.25F;

        EXPECT_FALSE(loadImage(image, {"x.png", 0}));

        const auto side = [&](std::size_t at) {
            return static_cast<std::int32_t>(static_cast<unsigned char>(size[at]) << 24 |
                                             static_cast<unsigned char>(size[at + 1]) << 16 |
                                             static_cast<unsigned char>(size[at + 2]) << 8 |
                                             static_cast<unsigned char>(size[at + 3]));
        };
        EXPECT_EQ(image.width, side(0));
        EXPECT_EQ(image.height, side(4));
        EXPECT_EQ(image.pixels, copy.pixels);
        EXPECT_EQ(image.pixels[15], 0.25F);
    }
}
} // namespace
} // namespace tamor
