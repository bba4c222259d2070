#include "gui/Theme.h"

#include "tests/gui/CommaLocale.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "textures/TextureRegistry.h"

#include <gmock/gmock.h>

namespace tamor::test
{
namespace
{
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* builtInTheme = "1 1 1        text\n"
                                     "1 0.71 0.16  edge\n"
                                     "0.8 0.8 0.8  body\n"
                                     "0.3 0.3 0.3  spare\n"
                                     "1\n"
                                     "0.8\n"
                                     "2\n"
                                     "0.005\n"
                                     "0.1\n"
                                     "0.003\n"
                                     "0.04 0.05    font\n"
                                     "0.7 1        dim, lit\n"
                                     "0.005 -0.005 0\n"
                                     "0.1\n"
                                     "NULL\n"
                                     "1\n";

class ThemeRead : public testing::Test
{
protected:
    // Returns what was printed.
    std::string read(Theme& theme, const std::string& text) const
    {
        directory.write("a.theme", text);
        const CapturedErrors errors;
        theme.read("a.theme");
        return errors.text();
    }

    TemporaryDirectory directory;
};

class ThemeReadGLTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        textureRegistry.clear(); // its names belong to the last test's window
    }

    TemporaryDirectory directory;
};

using ThemeSetDefaultsGLTest = ThemeReadGLTest;

void expectColour(const Vector& colour, float red, float green, float blue, float alpha)
{
    EXPECT_EQ(colour.x, red);
    EXPECT_EQ(colour.y, green);
    EXPECT_EQ(colour.z, blue);
    EXPECT_EQ(colour.w, alpha);
}

void expectBuiltInValues(const Theme& theme)
{
    expectColour(theme.textColour, 1.0F, 1.0F, 1.0F, 1.0F);
    expectColour(theme.edgeColour, 1.0F, 0.71F, 0.16F, 1.0F);
    expectColour(theme.bodyColour, 0.8F, 0.8F, 0.8F, 1.0F);
    expectColour(theme.spareColour, 0.3F, 0.3F, 0.3F, 1.0F);
    EXPECT_EQ(theme.bodyAlpha, 1.0F);
    EXPECT_EQ(theme.listAlpha, 0.8F);
    EXPECT_EQ(theme.lineWidth, 2.0F);
    EXPECT_EQ(theme.margin, 0.005F);
    EXPECT_EQ(theme.chamfer, 0.1F);
    EXPECT_EQ(theme.spareSize, 0.003F);
    expectColour(theme.fontSize, 0.04F, 0.05F, 0.0F, 1.0F);
    EXPECT_EQ(theme.dimBrightness, 0.7F);
    EXPECT_EQ(theme.litBrightness, 1.0F);
    expectColour(theme.pressOffset, 0.005F, -0.005F, 0.0F, 1.0F);
    EXPECT_EQ(theme.iconSize, 0.1F);
    EXPECT_TRUE(theme.glowEnabled);
}

TEST(Theme, StartsUnset)
{
    const Theme theme;

    expectColour(theme.textColour, 0.0F, 0.0F, 0.0F, 1.0F);
    expectColour(theme.edgeColour, 0.0F, 0.0F, 0.0F, 1.0F);
    expectColour(theme.fontSize, 0.0F, 0.0F, 0.0F, 1.0F);
    EXPECT_EQ(theme.bodyAlpha, 0.0F);
    EXPECT_EQ(theme.iconSize, 0.0F);
    EXPECT_STREQ(theme.textureFile, "");
    EXPECT_FALSE(theme.glowEnabled);
    EXPECT_EQ(theme.texture, 0U);
}

TEST_F(ThemeSetDefaultsGLTest, GivesTheBuiltInValuesAndLoadsGuiTga)
{
    Theme theme;

    theme.setDefaults();

    expectBuiltInValues(theme);
    EXPECT_STREQ(theme.textureFile, "");
    EXPECT_NE(theme.texture, 0U);
    EXPECT_EQ(textureRegistry.back().key, (TextureKey{"gui.tga", 0}));
    EXPECT_EQ(textureRegistry.back().id, theme.texture);
}

TEST_F(ThemeRead, ReadsAndPrintsInTheCLocaleWhateverTheHostHasSet)
{
    Theme usual;
    const std::string usualLog = read(usual, builtInTheme);
    Theme theme;
    const CommaLocale commas;

    const std::string log = read(theme, builtInTheme);

    expectBuiltInValues(theme);
    EXPECT_EQ(log, usualLog);
}

TEST_F(ThemeRead, ReadsEveryFieldInItsPlace)
{
    Theme theme;

    read(theme, "0.01 0.02 0.03\n0.04 0.05 0.06\n0.07 0.08 0.09\n0.10 0.11 0.12\n13\n14\n15\n16\n"
                "17\n18\n19 20\n21 22\n23 24 25\n26\nNULL\n1\n");

    expectColour(theme.textColour, 0.01F, 0.02F, 0.03F, 1.0F);
    expectColour(theme.edgeColour, 0.04F, 0.05F, 0.06F, 1.0F);
    expectColour(theme.bodyColour, 0.07F, 0.08F, 0.09F, 1.0F);
    expectColour(theme.spareColour, 0.10F, 0.11F, 0.12F, 1.0F);
    EXPECT_EQ(theme.bodyAlpha, 13.0F);
    EXPECT_EQ(theme.listAlpha, 14.0F);
    EXPECT_EQ(theme.lineWidth, 15.0F);
    EXPECT_EQ(theme.margin, 16.0F);
    EXPECT_EQ(theme.chamfer, 17.0F);
    EXPECT_EQ(theme.spareSize, 18.0F);
    expectColour(theme.fontSize, 19.0F, 20.0F, 0.0F, 1.0F);
    EXPECT_EQ(theme.dimBrightness, 21.0F);
    EXPECT_EQ(theme.litBrightness, 22.0F);
    expectColour(theme.pressOffset, 23.0F, 24.0F, 25.0F, 1.0F);
    EXPECT_EQ(theme.iconSize, 26.0F);
    EXPECT_STREQ(theme.textureFile, "NULL");
    EXPECT_TRUE(theme.glowEnabled);
}

TEST_F(ThemeRead, EchoesEveryLine)
{
    Theme theme;

    const std::string echo = read(theme, builtInTheme);

    EXPECT_EQ(echo, "reading theme a.theme\n"
                    "(1, 1, 1, 1)\n"
                    "(1, 0.71, 0.16, 1)\n"
                    "(0.8, 0.8, 0.8, 1)\n"
                    "(0.3, 0.3, 0.3, 1)\n"
                    "1\n"
                    "0.8\n"
                    "2\n"
                    "0.005\n"
                    "0.1\n"
                    "0.003\n"
                    "(0.04, 0.05, 0, 1)\n"
                    "0.7 1\n"
                    "(0.005, -0.005, 0, 1)\n"
                    "0.1\n"
                    "NULL\n"
                    "1\n"
                    "read theme a.theme\n");
    expectBuiltInValues(theme);
}

TEST_F(ThemeRead, LeavesTheTextureWithoutOneInTheFile)
{
    Theme theme;
    theme.texture = 0;

    const std::string echo = read(theme, builtInTheme);

    EXPECT_EQ(theme.texture, 0U);
    EXPECT_THAT(echo, Not(HasSubstr("loading ")));
}

TEST_F(ThemeReadGLTest, LoadsTheTextureOfTheFileThoughItBeMissing)
{
    std::string text = builtInTheme;
    text.replace(text.find("NULL"), 4, "missing.tga");
    directory.write("a.theme", text);
    Theme theme;
    const CapturedErrors errors;

    theme.read("a.theme");

    EXPECT_THAT(errors.text(), HasSubstr("missing.tga\n1\nloading missing.tga\n"));
    EXPECT_THAT(errors.text(), EndsWith("read theme a.theme\n"));
    EXPECT_NE(theme.texture, 0U);
    EXPECT_EQ(textureRegistry.back().key, (TextureKey{"missing.tga", 0}));
}

TEST_F(ThemeRead, TakesWordsBehindTheFieldsAsARemark)
{
    Theme theme;

    std::string text = builtInTheme;
    text.replace(0, text.find('\n'), "0.25 0.5 0.75 3 more words");
    read(theme, text);

    expectColour(theme.textColour, 0.25F, 0.5F, 0.75F, 1.0F);
    expectColour(theme.edgeColour, 1.0F, 0.71F, 0.16F, 1.0F);
}

TEST_F(ThemeRead, IsNotShiftedByABlankLine)
{
    Theme theme;

    std::string text = builtInTheme;
    text.insert(text.find('\n'), "\n");
    text.insert(text.find("0.8 0.8"), "  \n\n");
    read(theme, text);

    expectColour(theme.edgeColour, 1.0F, 0.71F, 0.16F, 1.0F);
    expectColour(theme.bodyColour, 0.8F, 0.8F, 0.8F, 1.0F);
}

TEST_F(ThemeReadGLTest, KeepsAllFieldsFromARemarkOnALineOfItsOwn)
{
    directory.write("a.theme", "0.5 0.5 0.5\n# the edge\n1 0.71 0.16\n");
    Theme theme;
    theme.edgeColour = {0.1F, 0.2F, 0.3F};
    theme.iconSize = 0.75F;
    theme.glowEnabled = true;
    const CapturedErrors errors;

    theme.read("a.theme");

    expectColour(theme.textColour, 0.5F, 0.5F, 0.5F, 1.0F);
    expectColour(theme.edgeColour, 0.1F, 0.2F, 0.3F, 1.0F);
    EXPECT_EQ(theme.iconSize, 0.75F);
    EXPECT_TRUE(theme.glowEnabled);
    EXPECT_THAT(errors.text(), StartsWith("reading theme a.theme\n"
                                          "(0.5, 0.5, 0.5, 1)\n"
                                          "(0.1, 0.2, 0.3, 1)\n"
                                          "(0, 0, 0, 1)\n"));
}

// The bytes where a theme file may end; the last is the whole file.
class ThemeReadShortGLTest : public ThemeReadGLTest, public testing::WithParamInterface<std::size_t>
{};

TEST_P(ThemeReadShortGLTest, EchoesAllLinesAndKeepsWhatItDoesNotReach)
{
    directory.write("a.theme", std::string_view(builtInTheme).substr(0, GetParam()));
    Theme theme;
    theme.bodyAlpha = theme.iconSize = 0.5F;
    const CapturedErrors errors;

    theme.read("a.theme");

    const std::string echo = errors.text();
    EXPECT_THAT(echo, StartsWith("reading theme a.theme\n"));
    EXPECT_THAT(echo, EndsWith("read theme a.theme\n"));
    EXPECT_GE(std::count(echo.begin(), echo.end(), '\n'), 18);
    EXPECT_TRUE(theme.bodyAlpha == 0.5F || theme.bodyAlpha == 1.0F);
    EXPECT_TRUE(theme.iconSize == 0.5F || theme.iconSize == 0.1F || theme.iconSize == 0.0F);
}

INSTANTIATE_TEST_SUITE_P(Files, ThemeReadShortGLTest,
                         testing::Values(0, 1, 2, 5, 13, 20, 60, 61, 80, 90, 101, 115, 140, 150,
                                         156, 158, 160, 163, 164, 165));

TEST_F(ThemeReadGLTest, AsksForTheTextureOfAnEmptyNameWhenTheFileIsMissing)
{
    Theme theme;
    const CapturedErrors errors;

    theme.read("missing.theme");

    EXPECT_THAT(errors.text(), StartsWith("reading theme missing.theme\n"
                                          "(0, 0, 0, 1)\n(0, 0, 0, 1)\n(0, 0, 0, 1)\n(0, 0, 0, 1)\n"
                                          "0\n0\n0\n0\n0\n0\n"
                                          "(0, 0, 0, 1)\n"
                                          "0 0\n"
                                          "(0, 0, 0, 1)\n"
                                          "0\n"
                                          "\n"
                                          "0\n"
                                          "loading \n"));
    EXPECT_THAT(errors.text(), EndsWith("read theme missing.theme\n"));
    EXPECT_EQ(textureRegistry.back().key, (TextureKey{"", 0}));
}

TEST_F(ThemeReadGLTest, Takes511CharactersOfATextureName)
{
    std::string text = builtInTheme;
    text.replace(text.find("NULL"), 4, std::string(600, 'x'));
    directory.write("a.theme", text);
    Theme theme;
    const CapturedErrors errors;

    theme.read("a.theme");

    EXPECT_EQ(std::string(theme.textureFile), std::string(511, 'x'));
    EXPECT_TRUE(theme.glowEnabled);
}
} // namespace
} // namespace tamor::test
