#include "gui/GLWidget.h"

#include "tests/gui/CommaLocale.h"
#include "tests/gui/ProbeWidget.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/Font.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace tamor::test
{
namespace
{
class GLWidgetReadConfig : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        GLWidget::optionFrame = GLWidget::optionMark = GLWidget::checkFrame = GLWidget::checkMark =
            GLWidget::sliderKnob = {9.0F, 9.0F, 9.0F, 9.0F};
        GLWidget::glowRate = 9.0F;
    }

    // Returns what was printed.
    std::string read(const std::string& text) const
    {
        directory.write("gui.conf", text);
        const CapturedErrors errors;
        EXPECT_TRUE(GLWidget::readConfig("gui.conf"));
        return errors.text();
    }

    TemporaryDirectory directory;
};

class GLWidgetReadConfigGLTest : public GuiGLTest
{
protected:
    TemporaryDirectory directory;
};

void expectRectangle(const Vector& rectangle, float uMin, float vMin, float uMax, float vMax)
{
    EXPECT_EQ(rectangle.x, uMin);
    EXPECT_EQ(rectangle.y, vMin);
    EXPECT_EQ(rectangle.z, uMax);
    EXPECT_EQ(rectangle.w, vMax);
}

TEST_F(GLWidgetReadConfig, ReadsEveryFieldInItsPlace)
{
    read("missing.ttf the font\n"
         "unused and a remark\n"
         "0.01 0.02 0.03 0.04 option frame\n"
         "0.05 0.06 0.07 0.08\n"
         "0.09 0.10 0.11 0.12\n"
         "0.13 0.14 0.15 0.16\n"
         "0.17 0.18 0.19 0.20\n"
         "0.002 per millisecond\n");

    expectRectangle(GLWidget::optionFrame, 0.01F, 0.02F, 0.03F, 0.04F);
    expectRectangle(GLWidget::optionMark, 0.05F, 0.06F, 0.07F, 0.08F);
    expectRectangle(GLWidget::checkFrame, 0.09F, 0.10F, 0.11F, 0.12F);
    expectRectangle(GLWidget::checkMark, 0.13F, 0.14F, 0.15F, 0.16F);
    expectRectangle(GLWidget::sliderKnob, 0.17F, 0.18F, 0.19F, 0.20F);
    EXPECT_EQ(GLWidget::glowRate, 0.002F);
}

TEST_F(GLWidgetReadConfig, ReadsNoNumberBehindItsLast)
{
    read("missing.ttf\nunused\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0.17 0.18 0.19 0.20\n0.002 "
         "0.5\n0.25\n");

    expectRectangle(GLWidget::sliderKnob, 0.17F, 0.18F, 0.19F, 0.20F);
    EXPECT_EQ(GLWidget::glowRate, 0.002F);
}

TEST_F(GLWidgetReadConfig, ReadsInTheCLocaleWhateverTheHostHasSet)
{
    const CommaLocale commas;

    read("missing.ttf\nunused\n0.5 0.25 0.125 0.75\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0.002\n");

    expectRectangle(GLWidget::optionFrame, 0.5F, 0.25F, 0.125F, 0.75F);
    EXPECT_EQ(GLWidget::glowRate, 0.002F);
}

TEST_F(GLWidgetReadConfig, ReadsTheDemonstrationsFileToItsLastNumber)
{
    std::ifstream stream(TAMOR_DOCS "/../data/gui.conf.in");
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    ASSERT_NE(text, "");

    read(text);

    expectRectangle(GLWidget::optionFrame, 0.03125F, 0.5625F, 0.21875F, 0.9375F);
    expectRectangle(GLWidget::optionMark, 0.28125F, 0.5625F, 0.46875F, 0.9375F);
    expectRectangle(GLWidget::checkFrame, 0.53125F, 0.5625F, 0.71875F, 0.9375F);
    expectRectangle(GLWidget::checkMark, 0.78125F, 0.5625F, 0.96875F, 0.9375F);
    expectRectangle(GLWidget::sliderKnob, 0.03125F, 0.0625F, 0.21875F, 0.4375F);
    EXPECT_EQ(GLWidget::glowRate, 0.004F);
}

TEST_F(GLWidgetReadConfig, SaysWhatItLoadsAndLetsTheFontSayWhatWentWrong)
{
    EXPECT_EQ(read("missing.ttf\nunused\n"), "Loading missing.ttf\n"
                                             "Error loading the font\n"
                                             "Loaded.\n");
}

TEST_F(GLWidgetReadConfig, KeepsEveryFieldThatAShortFileDoesNotReach)
{
    read("missing.ttf\nunused\n0.1 0.2 0.3 0.4\n0.5 0.6\n");

    expectRectangle(GLWidget::optionFrame, 0.1F, 0.2F, 0.3F, 0.4F);
    expectRectangle(GLWidget::optionMark, 0.5F, 0.6F, 9.0F, 9.0F);
    expectRectangle(GLWidget::sliderKnob, 9.0F, 9.0F, 9.0F, 9.0F);
    EXPECT_EQ(GLWidget::glowRate, 9.0F);
}

TEST_F(GLWidgetReadConfig, KeepsEveryFieldBehindAWordInANumbersPlace)
{
    read("missing.ttf\nunused\n0.1 0.2 0.3 0.4\nword\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0.5\n");

    expectRectangle(GLWidget::optionFrame, 0.1F, 0.2F, 0.3F, 0.4F);
    expectRectangle(GLWidget::optionMark, 9.0F, 9.0F, 9.0F, 9.0F);
    expectRectangle(GLWidget::checkFrame, 9.0F, 9.0F, 9.0F, 9.0F);
    EXPECT_EQ(GLWidget::glowRate, 9.0F);
}

TEST_F(GLWidgetReadConfig, KeepsEverythingWhenTheFileIsMissing)
{
    const CapturedErrors errors;

    EXPECT_TRUE(GLWidget::readConfig("missing.conf"));

    EXPECT_EQ(errors.text(), "Loading \nError loading the font\nLoaded.\n");
    expectRectangle(GLWidget::optionFrame, 9.0F, 9.0F, 9.0F, 9.0F);
    EXPECT_EQ(GLWidget::glowRate, 9.0F);
}

TEST_F(GLWidgetReadConfig, PassesAFileThatIsNoFontOn)
{
    directory.write("a.ttf", "this is text");

    EXPECT_EQ(read("a.ttf\nunused\n"), "Loading a.ttf\n"
                                       "The font file format is not recgonised\n"
                                       "Loaded.\n");
}

TEST_F(GLWidgetReadConfigGLTest, LoadsTheFontThatAllTextIsDrawnWith)
{
    directory.write("gui.conf", TAMOR_TEST_FONT "\nunused\n");
    CapturedErrors errors;

    EXPECT_TRUE(GLWidget::readConfig("gui.conf"));

    EXPECT_EQ(errors.text(), "Loading " TAMOR_TEST_FONT "\nLoaded.\n");
    GLWidget::font.setScale(1.0F, 1.0F);
    EXPECT_GT(ProbeWidget::measureText("w"), 0.0F);
    EXPECT_EQ(ProbeWidget::measureText("ww"), 2.0F * ProbeWidget::measureText("w"));
}
} // namespace
} // namespace tamor::test
