#include "textures/Font.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/textures/LiveArrays.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::StartsWith;

class FontGLTest : public test::WindowTest
{
protected:
    /// The calls that make the list of one character, from its texture on.
    static std::vector<std::string> callsFor(const std::vector<std::string>& calls, int character)
    {
        auto start = calls.begin();
        for (int k = 0; k <= character; k++)
            start = std::find(start + 1, calls.end(), "glGenTextures(1, answer)");
        return {start, std::find(start + 1, calls.end(), "glGenTextures(1, answer)")};
    }

    static std::vector<std::string> callsOfPrint(const Font& font, const char* text)
    {
        const test::GLRecorder recorder;
        EXPECT_TRUE(font.print(text));
        return recorder.calls();
    }
};

TEST_F(FontGLTest, LoadMakes128ListsOfATextureEach)
{
    Font font;
    const test::GLRecorder recorder;

    EXPECT_TRUE(font.load(TAMOR_TEST_FONT));

    EXPECT_EQ(recorder.calls().front(), "glGenLists(128)");
    EXPECT_EQ(recorder.calls({"glNewList"}).size(), 128U);
    EXPECT_EQ(recorder.calls({"glGenTextures"}).size(), 128U);
    for (unsigned int k = 0; k < 128; k++)
        EXPECT_TRUE(glIsList(font.listBase + k));
    EXPECT_FALSE(glIsList(font.listBase + 128));
}

TEST_F(FontGLTest, CompilesALetterAsAQuadOnItsBaseline)
{
    Font font;
    const test::GLRecorder recorder;

    font.load(TAMOR_TEST_FONT);

    // The bitmap is 22 by 34 pixels in a texture of 32 by 64. It begins two pixels right of the pen
    // and nine below the baseline, and the pen moves on by 27.
    EXPECT_THAT(
        callsFor(recorder.calls(), 'g'),
        ElementsAre(
            "glGenTextures(1, answer)", StartsWith("glBindTexture(GL_TEXTURE_2D, "),
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)",
            "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 32, 64, GL_RGBA, GL_UNSIGNED_BYTE, data)",
            StartsWith("glNewList("), StartsWith("glBindTexture(GL_TEXTURE_2D, "), "glPushMatrix()",
            "glTranslatef(0.0625, -0.28125, 0)", "glBegin(GL_QUADS)", "glTexCoord2f(0, 0)",
            "glVertex2f(0, 1.0625)", "glTexCoord2f(0, 0.53125)", "glVertex2f(0, 0)",
            "glTexCoord2f(0.6875, 0.53125)", "glVertex2f(0.6875, 0)", "glTexCoord2f(0.6875, 0)",
            "glVertex2f(0.6875, 1.0625)", "glEnd()", "glPopMatrix()", "glTranslatef(0.84375, 0, 0)",
            "glEndList()"));
}

TEST_F(FontGLTest, GivesTheBlankATextureOf1By1AndAnAdvance)
{
    Font font;
    const test::GLRecorder recorder;

    font.load(TAMOR_TEST_FONT);

    EXPECT_THAT(
        callsFor(recorder.calls(), ' '),
        ElementsAre(
            "glGenTextures(1, answer)", StartsWith("glBindTexture(GL_TEXTURE_2D, "),
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE)",
            "gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, data)",
            StartsWith("glNewList("), StartsWith("glBindTexture(GL_TEXTURE_2D, "), "glPushMatrix()",
            "glTranslatef(0, 0, 0)", "glBegin(GL_QUADS)", "glTexCoord2f(0, 0)", "glVertex2f(0, 0)",
            "glTexCoord2f(0, 0)", "glVertex2f(0, 0)", "glTexCoord2f(0, 0)", "glVertex2f(0, 0)",
            "glTexCoord2f(0, 0)", "glVertex2f(0, 0)", "glEnd()", "glPopMatrix()",
            "glTranslatef(0.4375, 0, 0)", "glEndList()"));
    EXPECT_EQ(font.advance[' '], 0.4375F);
}

TEST_F(FontGLTest, AFontUnitIsThe32ndPartOfAPixel)
{
    Font font;

    font.load(TAMOR_TEST_FONT);

    // In pixels at 42.7 pixels an em.
    EXPECT_EQ(font.advance['A'] * 32.0F, 29.0F);
    EXPECT_EQ(font.advance['i'] * 32.0F, 12.0F);
    EXPECT_EQ(font.advance['m'] * 32.0F, 42.0F);
    EXPECT_EQ(font.textWidth("Ai m"), (29.0F + 12.0F + 14.0F + 42.0F) / 32.0F);
}

TEST_F(FontGLTest, ASecondLoadLeavesTheFirstListsThere)
{
    Font font;
    font.load(TAMOR_TEST_FONT);
    const std::uint32_t first = font.listBase;

    EXPECT_TRUE(font.load(TAMOR_TEST_FONT));

    EXPECT_NE(font.listBase, first);
    EXPECT_TRUE(glIsList(first + 'a'));
}

TEST_F(FontGLTest, LeavesTheBytesOfItsGlyphsAllocated)
{
    Font font;
    const int before = test::liveArrays();

    font.load(TAMOR_TEST_FONT);

    // A character's grey values, float pixels, and staged bytes.
    EXPECT_EQ(test::liveArrays(), before + 3 * 128);
}

TEST_F(FontGLTest, PrintsALineByOneCallOfItsLists)
{
    Font font;
    font.listBase = 1000;

    EXPECT_THAT(
        callsOfPrint(font, "ab"),
        ElementsAre(
            "glPushAttrib(GL_DEPTH_BUFFER_BIT|GL_ENABLE_BIT)", "glGetIntegerv(GL_VIEWPORT, answer)",
            "glDisable(GL_DEPTH_TEST)", "glDisable(GL_LIGHTING)", "glEnable(GL_TEXTURE_2D)",
            "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
            "glListBase(1000)", "glGetFloatv(GL_MODELVIEW_MATRIX, answer)", "glPushMatrix()",
            "glLoadIdentity()", "glTranslatef(0, 0, 0)",
            "glMultMatrixf([1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1])", "glScalef(1, 1, 0)",
            "glCallLists(2, GL_UNSIGNED_BYTE, \"ab\")", "glPopMatrix()", "glPopAttrib()"));
}

TEST_F(FontGLTest, PrintsEachLineLowerInEyeCoordinates)
{
    Font font;
    font.setScale(3.0F, 2.0F);
    glScalef(5, 5, 5);
    const test::GLRecorder recorder;

    font.print("one\ntwo\n\nfour");

    EXPECT_THAT(
        recorder.calls({"glTranslatef", "glMultMatrixf", "glScalef", "glCallLists"}),
        ElementsAre(
            "glTranslatef(0, 0, 0)",
            "glMultMatrixf([5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1])", "glScalef(3, 2, 0)",
            "glCallLists(3, GL_UNSIGNED_BYTE, \"one\")", "glTranslatef(0, -2.6, 0)",
            "glMultMatrixf([5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1])", "glScalef(3, 2, 0)",
            "glCallLists(3, GL_UNSIGNED_BYTE, \"two\")", "glTranslatef(0, -5.2, 0)",
            "glMultMatrixf([5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1])", "glScalef(3, 2, 0)",
            "glCallLists(0, GL_UNSIGNED_BYTE, \"\")", "glTranslatef(0, -7.8, 0)",
            "glMultMatrixf([5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1])", "glScalef(3, 2, 0)",
            "glCallLists(4, GL_UNSIGNED_BYTE, \"four\")"));
    EXPECT_EQ(recorder.calls({"glGetFloatv"}).size(), 1U);
}

TEST_F(FontGLTest, PrintsTheEmptyLineBehindALastNewline)
{
    const test::GLRecorder recorder;

    Font().print("a\n");

    EXPECT_THAT(recorder.calls({"glCallLists"}),
                ElementsAre("glCallLists(1, GL_UNSIGNED_BYTE, \"a\")",
                            "glCallLists(0, GL_UNSIGNED_BYTE, \"\")"));
}

TEST_F(FontGLTest, PrintsAnEmptyTextAsOneEmptyLine)
{
    const test::GLRecorder recorder;

    Font().print("");

    EXPECT_THAT(recorder.calls({"glCallLists"}),
                ElementsAre("glCallLists(0, GL_UNSIGNED_BYTE, \"\")"));
}

TEST_F(FontGLTest, FormatsWithAndWithoutArguments)
{
    const test::GLRecorder recorder;

    Font().print("%d %s", 42, "x");
    Font().print("%d %s%n");
    Font().print("100%%");

    EXPECT_THAT(recorder.calls({"glCallLists"}),
                ElementsAre("glCallLists(4, GL_UNSIGNED_BYTE, \"42 x\")",
                            "glCallLists(2, GL_UNSIGNED_BYTE, \"0 \")",
                            "glCallLists(4, GL_UNSIGNED_BYTE, \"100%\")"));
}

TEST_F(FontGLTest, PrintsNoMoreThan255Characters)
{
    const std::string text(1000, 'x');
    const test::GLRecorder recorder;

    Font().print(text.c_str());
    Font().print("%s", text.c_str());
    Font().print("%9999999d");

    for (const std::string& call : recorder.calls({"glCallLists"}))
        EXPECT_THAT(call, StartsWith("glCallLists(255, "));
    EXPECT_EQ(recorder.calls({"glCallLists"}).size(), 3U);
}

TEST_F(FontGLTest, LeavesTheEnabledStatesAsTheyWereButNotBlendFunctionAndListBase)
{
    Font font;
    font.listBase = 1234;
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(1, 2, 3);

    font.print("text");

    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    GLint value = 0;
    glGetIntegerv(GL_BLEND_SRC, &value);
    EXPECT_EQ(value, GL_SRC_ALPHA);
    glGetIntegerv(GL_BLEND_DST, &value);
    EXPECT_EQ(value, GL_ONE_MINUS_SRC_ALPHA);
    glGetIntegerv(GL_LIST_BASE, &value);
    EXPECT_EQ(value, 1234);
    GLfloat matrix[16] = {};
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_EQ(matrix[12], 1.0F);
    EXPECT_EQ(matrix[14], 3.0F);
}

TEST_F(FontGLTest, DrawsTextThatLooksRight)
{
    Font font;
    font.load(TAMOR_TEST_FONT);
    font.setScale(0.12F, 0.15F);
    glClearColor(0.1F, 0.1F, 0.3F, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glColor3f(1, 0.9F, 0.5F);
    glTranslatef(-0.9F, 0.6F, 0);

    font.print("Quick grey fox\njumps: %d%% {Ag}\n\n(last line)", 42);

    EXPECT_TRUE(test::matchesGolden(picture(), "goldens/font.png"));
}

TEST_F(FontGLTest, SaysWhenAGlyphCannotBeLoadedAndKeepsTheListsSoFar)
{
    // The font with its outlines from the 4,000th byte on overwritten: a number of contours of
    // 0x7F7F is none. An entry of the table directory is a tag, a check sum, a place and a length.
    std::ifstream stream(TAMOR_TEST_FONT, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    const std::size_t entry = bytes.find("glyf");
    ASSERT_NE(entry, std::string::npos);
    std::size_t place = 0;
    for (std::size_t k = 8; k < 12; k++)
        place = place << 8 | static_cast<std::uint8_t>(bytes[entry + k]);
    bytes.replace(place + 4000, 60000, std::string(60000, '\x7F'));
    const test::TemporaryDirectory directory;
    directory.write("broken.ttf", bytes);
    const test::CapturedErrors errors;
    const test::GLRecorder recorder;
    Font font;

    EXPECT_FALSE(font.load("broken.ttf"));

    EXPECT_EQ(errors.text(), "errors!\n");
    const std::size_t listCount = recorder.calls({"glNewList"}).size();
    EXPECT_EQ(listCount, 56U); // up to the digit 7
    EXPECT_EQ(recorder.calls({"glEndList"}).size(), listCount);
    EXPECT_EQ(font.advance[' '], 0.4375F);
    EXPECT_EQ(font.advance['~'], 0.0F);
}
} // namespace
} // namespace tamor
