#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
namespace
{
constexpr Place nothing{780, 20};

// Two rows of two pixels, the lower one first. A packet of two raw pixels a row; blue comes first.
const std::string fourPixels = [] {
    std::string bytes(18, '\0');
    bytes[2] = 10; // run lengths, true colour
    bytes[12] = 2;
    bytes[14] = 2;
    bytes[16] = 32;
    bytes += "\x01";
    bytes += std::string("\x00\x00\xFF\xFF", 4); // red
    bytes += std::string("\x00\xFF\x00\xFF", 4); // green
    bytes += "\x01";
    bytes += std::string("\xFF\x00\x00\xFF", 4); // blue
    bytes += std::string("\x80\x80\x80\x00", 4); // grey that is not to be seen
    return bytes;
}();

class ViewPictureGLTest : public testing::Test
{
protected:
    ViewPictureGLTest() { directory.write("four.tga", fourPixels); }

    static void open(View& view)
    {
        ASSERT_TRUE(view.opensWithPointerAt(nothing));
        view.type("F1");
    }

    const TemporaryDirectory directory;
};

// Each pixel of the picture is a square of 64, and their common corner the window's middle.
constexpr Place topLeft{370, 270};
constexpr Place topRight{430, 270};
constexpr Place bottomLeft{370, 330};
constexpr Place bottomRight{430, 330};

TEST_F(ViewPictureGLTest, ShowsTheFirstRowOfATGAFileAtTheBottom)
{
    View view({"four.tga"});
    open(view);

    EXPECT_NE(view.output().find("four.tga: read in"), std::string::npos);
    EXPECT_NE(view.output().find(" 2 x 2 pixels\n"), std::string::npos);
    EXPECT_EQ(view.pixel(topLeft), (Pixel{0, 0, 255}));
    EXPECT_EQ(view.pixel(bottomLeft), (Pixel{255, 0, 0}));
    EXPECT_EQ(view.pixel(bottomRight), (Pixel{0, 255, 0}));
    // Squares of two greys are seen through what is transparent.
    EXPECT_NE(view.pixel(topRight), view.pixel({topRight.x + 8, topRight.y}));
}

TEST_F(ViewPictureGLTest, ShowsChannelsOneByOne)
{
    View view({"four.tga"});
    open(view);

    view.type("r");
    EXPECT_EQ(view.pixel(bottomLeft), (Pixel{255, 255, 255}));
    EXPECT_EQ(view.pixel(topRight), (Pixel{128, 128, 128}));
    view.type("g");
    EXPECT_EQ(view.pixel(bottomRight), (Pixel{255, 255, 255}));
    view.type("b");
    EXPECT_EQ(view.pixel(topLeft), (Pixel{255, 255, 255}));
    EXPECT_EQ(view.pixel(bottomLeft), (Pixel{0, 0, 0}));
    view.type("a");
    EXPECT_EQ(view.pixel(topRight), (Pixel{0, 0, 0}));
    EXPECT_EQ(view.pixel(topLeft), (Pixel{255, 255, 255}));
    view.type("c");
    EXPECT_EQ(view.pixel(bottomLeft), (Pixel{255, 0, 0}));
}

TEST_F(ViewPictureGLTest, ZoomsByWholePixels)
{
    View view({"four.tga"});
    open(view);
    const Pixel background = view.pixel({400, 100});

    // From 64 pixels a side to 63, and back.
    EXPECT_EQ(view.pixel({400 - 64, 300 - 64}), (Pixel{0, 0, 255}));
    view.turnWheel(false);
    EXPECT_EQ(view.pixel({400 - 64, 300 - 64}), background);
    EXPECT_EQ(view.pixel({400 - 63, 300 - 63}), (Pixel{0, 0, 255}));
    view.type("minus");
    EXPECT_EQ(view.pixel({400 - 63, 300 - 63}), background);
    view.type("0");
    EXPECT_EQ(view.pixel({400 - 64, 300 - 64}), (Pixel{0, 0, 255}));
}

TEST_F(ViewPictureGLTest, MovesWithThePointer)
{
    View view({"four.tga"});
    open(view);

    view.drag({400, 300}, {500, 250}, 1);

    EXPECT_EQ(view.pixel({500 - 60, 250 + 60}), (Pixel{255, 0, 0}));
    EXPECT_EQ(view.pixel({500 - 60, 250 - 60}), (Pixel{0, 0, 255}));
}

TEST_F(ViewPictureGLTest, TellsTheValueUnderThePointer)
{
    View view({"four.tga"});
    open(view);
    view.type("F1");
    view.moveTo(bottomRight);

    EXPECT_TRUE(matchesGolden(view.whole(), TAMOR_DOCS "/view-picture.png"));
}

TEST_F(ViewPictureGLTest, ShowsAPNGFileThatTheEngineDoesNotRead)
{
    Picture picture{2, 1, {10, 20, 30, 200, 100, 50}};
    writePicture(picture, (directory.path() / "two.png").string());

    View view({"two.png"});
    open(view);

    EXPECT_NE(view.output().find("two.png:1:1: error: "), std::string::npos);
    EXPECT_NE(view.output().find("2 x 1 pixels; the engine does not read it\n"), std::string::npos);
    EXPECT_EQ(view.pixel({370, 300}), (Pixel{10, 20, 30}));
    EXPECT_EQ(view.pixel({430, 300}), (Pixel{200, 100, 50}));
}

TEST_F(ViewPictureGLTest, ReadsAChangedPicture)
{
    View view({"four.tga"});
    open(view);

    std::string changed = fourPixels;
    changed[20] = '\xFF'; // the green of the first pixel
    directory.write("four.tga", changed);

    ASSERT_TRUE(view.saysTimes("four.tga: read in", 2));
    EXPECT_EQ(view.pixel(bottomLeft), (Pixel{255, 255, 0}));
}
} // namespace
} // namespace tamor::test
