// The pictures of docs/widgets.md: each is drawn from the page's own listing, with what a user does
// to it, one state beside the other. TAMOR_UPDATE_GOLDENS writes them anew.

#include "Gauge.h"
#include "gui/GLWidget.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tamor::test
{
namespace
{
using State = std::function<void()>;

/// Where a listing's widgets stand, in GUI units around the origin.
struct Area
{
    float left;
    float bottom;
    float right;
    float top;
};

constexpr float pixelsOfAUnit = 300.0F;

int pixels(float units)
{
    return static_cast<int>(units * pixelsOfAUnit);
}

/// Puts the pointer at a place in GUI units.
void point(float x, float y, bool left = false)
{
    GLWidget::mouseMoved({400.0F + x * pixelsOfAUnit, 300.0F - y * pixelsOfAUnit});
    GLWidget::mouseButtons(left, false, false);
}

/// Presses and releases the left button.
void click(float x, float y)
{
    point(x, y);
    point(x, y, true);
    point(x, y);
}

/// Lets fading come to its end.
void settle()
{
    for (int frame = 0; frame < 20; ++frame)
        GLWidget::updateAll(50);
}

void type(const std::string& words)
{
    for (const char letter : words) {
        std::array<std::uint8_t, 512> pressed{};
        pressed[static_cast<unsigned char>(letter)] = 1;
        GLWidget::keysChanged(pressed.data());
    }
}

void append(Picture& strip, const Picture& next)
{
    Picture joined{strip.width + next.width, next.height, {}};
    for (int row = 0; row < next.height; ++row) {
        for (const Picture* part : {&std::as_const(strip), &next}) {
            const auto first = part->bytes.begin() + std::ptrdiff_t{3} * row * part->width;
            joined.bytes.insert(joined.bytes.end(), first, first + std::ptrdiff_t{3} * part->width);
        }
    }
    strip = joined;
}

class WidgetsPageGLTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        std::filesystem::copy(TAMOR_DATA, ".");
    }

    void TearDown() override
    {
        clear();
        WindowTest::TearDown();
    }

    static void clear()
    {
        GLWidget::widgets.clear();
        GLWidget::themes.clear();
        GLWidget::topLevel.clear();
        GLWidget::messageResult = 0;
    }

    /// Builds the listing as the whole of a layout would.
    static void load(const std::string& name)
    {
        clear();
        const CapturedErrors echo;
        std::ofstream layout("page.gui");
        layout << "CONF gui.conf\n" << std::ifstream(LISTINGS + name + ".gui").rdbuf() << "SOLID\n";
        layout.close();
        GLWidget::loadLayout("page.gui");
        point(-1.3F, -0.9F);
        settle();
    }

    static Picture draw(const Area& area)
    {
        glClearColor(0.2706F, 0.302F, 0.3294F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        GLWidget::renderAll();
        return pictureOfWindow(400 + pixels(area.left), 300 - pixels(area.top),
                               pixels(area.right - area.left), pixels(area.top - area.bottom));
    }

    /// Whether the listing NAME.gui looks as NAME.png in the manual does, in each of these states.
    static testing::AssertionResult looksAsInTheManual(const std::string& name, const Area& area,
                                                       const std::vector<State>& states)
    {
        Picture strip;
        for (const State& state : states) {
            load(name);
            state();
            append(strip, draw(area));
        }
        return matchesGolden(strip, TAMOR_DOCS "widgets/" + name + ".png");
    }

private:
    TemporaryDirectory directory;
};

const State asBuilt = [] {};

TEST_F(WidgetsPageGLTest, Label)
{
    EXPECT_TRUE(looksAsInTheManual("label", {-0.06F, -0.09F, 0.54F, 0.12F}, {asBuilt}));
}

TEST_F(WidgetsPageGLTest, ButtonIdleLitAndHeld)
{
    const State lit = [] {
        point(0.05F, 0.03F);
        settle();
    };
    const State held = [] {
        point(0.05F, 0.03F);
        point(0.05F, 0.03F, true);
        settle();
        EXPECT_TRUE(GLWidget::find("save")->isActive());
        EXPECT_TRUE(GLWidget::find("save")->wasClicked());
        EXPECT_FALSE(GLWidget::find("save")->wasClicked());
    };

    EXPECT_TRUE(looksAsInTheManual("button", {-0.06F, -0.06F, 0.56F, 0.26F}, {asBuilt, lit, held}));
}

TEST_F(WidgetsPageGLTest, CheckBoxOffOnTheWayAndOn)
{
    const State onTheWay = [] {
        click(0.04F, 0.17F);
        GLWidget::updateAll(200);
        point(-1.3F, -0.9F);
    };
    const State ticked = [] {
        click(0.04F, 0.17F);
        click(0.04F, 0.04F);
        point(-1.3F, -0.9F);
        settle();
        EXPECT_TRUE(GLWidget::find("lamp")->isActive());
    };

    EXPECT_TRUE(
        looksAsInTheManual("check", {-0.06F, -0.06F, 0.56F, 0.27F}, {asBuilt, onTheWay, ticked}));
}

TEST_F(WidgetsPageGLTest, OptionFirstOnTheWayAndSecond)
{
    const State onTheWay = [] {
        click(0.05F, 0.18F);
        point(-1.3F, -0.9F);
        GLWidget::updateAll(200);
    };
    const State second = [] {
        click(0.05F, 0.18F);
        point(-1.3F, -0.9F);
        settle();
        EXPECT_FALSE(GLWidget::find("quillpen")->isActive());
        EXPECT_TRUE(GLWidget::find("pencil")->isActive());
    };

    EXPECT_TRUE(
        looksAsInTheManual("option", {-0.06F, -0.06F, 0.42F, 0.44F}, {asBuilt, onTheWay, second}));
}

TEST_F(WidgetsPageGLTest, ComboBoxShutOpenAndChosen)
{
    const State open = [] {
        click(0.04F, 0.04F);
        point(0.2F, -0.12F);
    };
    const State chosen = [] {
        click(0.04F, 0.04F);
        click(0.2F, -0.12F);
        EXPECT_EQ(GLWidget::find("speed")->getSelection(), 1U);
    };

    EXPECT_TRUE(looksAsInTheManual("combo", {-0.06F, -0.3F, 0.7F, 0.14F}, {asBuilt, open, chosen}));
}

TEST_F(WidgetsPageGLTest, SliderIdleLitAndDragged)
{
    const State lit = [] {
        point(0.29F, 0.15F);
        settle();
    };
    const State dragged = [] {
        point(0.29F, 0.15F);
        point(0.29F, 0.15F, true);
        point(0.49F, 0.15F, true);
        point(0.49F, 0.15F);
        settle();
        EXPECT_NEAR(GLWidget::find("across")->getValue(), 0.9F, 0.001F);
    };

    EXPECT_TRUE(
        looksAsInTheManual("slider", {-0.06F, -0.06F, 0.81F, 0.44F}, {asBuilt, lit, dragged}));
}

TEST_F(WidgetsPageGLTest, TextBoxIdleWithTheKeyboardAndTypedIn)
{
    const State pressed = [] {
        click(0.1F, 0.05F);
        point(-1.3F, -0.9F);
        settle();
    };
    const State typed = [pressed] {
        pressed();
        type("dear diary,\rtoday");
    };

    EXPECT_TRUE(
        looksAsInTheManual("text", {-0.06F, -0.06F, 0.6F, 0.22F}, {asBuilt, pressed, typed}));
}

TEST_F(WidgetsPageGLTest, FrameWithAndWithoutABorder)
{
    EXPECT_TRUE(looksAsInTheManual("frame", {-0.06F, -0.06F, 0.8F, 0.15F}, {asBuilt}));
}

TEST_F(WidgetsPageGLTest, WindowIdleLitAndDragged)
{
    const State lit = [] {
        point(0.3F, 0.15F);
        settle();
    };
    const State dragged = [] {
        point(0.3F, 0.15F);
        point(0.3F, 0.15F, true);
        point(0.36F, 0.2F, true);
        point(0.36F, 0.2F);
        point(-1.3F, -0.9F);
        settle();
    };

    EXPECT_TRUE(
        looksAsInTheManual("window", {-0.06F, -0.06F, 0.74F, 0.32F}, {asBuilt, lit, dragged}));
}

TEST_F(WidgetsPageGLTest, TabWindowWithEachOfItsTabs)
{
    const State second = [] {
        click(0.3F, 0.283F);
        point(-1.3F, -0.9F);
        settle();
    };

    EXPECT_TRUE(looksAsInTheManual("tabs", {-0.06F, -0.06F, 0.7F, 0.4F}, {asBuilt, second}));
}

TEST_F(WidgetsPageGLTest, MessageBoxWithOneButtonAndWithThree)
{
    const auto open = [](std::int32_t buttons) {
        const CapturedErrors echo;
        GLWidget::messageBox("Keep the new settings?", buttons);
    };
    const State okay = [open] {
        open(1);
        settle();
    };
    const State three = [open] {
        open(14);
        settle();
    };

    EXPECT_TRUE(looksAsInTheManual("message", {-0.45F, -0.25F, 0.45F, 0.25F}, {okay, three}));
}

TEST_F(WidgetsPageGLTest, IconsOfAPictureThatCannotBeReadAreNotSeen)
{
    std::filesystem::remove("gui.tga");

    load("check");
    const Picture icon = draw({0.0F, 0.0F, 0.08F, 0.08F});

    const Pixel background{69, 77, 84};
    EXPECT_EQ(icon.at(0, 0), background);
    EXPECT_EQ(icon.at(3, 12), background);
    EXPECT_EQ(icon.at(12, 3), background);
    EXPECT_EQ(icon.at(12, 12), background);
}

TEST_F(WidgetsPageGLTest, ThemesOfPartsAreSoughtInTheWorkingDirectory)
{
    const CapturedErrors echo;
    std::filesystem::create_directory("elsewhere");
    std::ofstream("elsewhere/page.gui") << "THEM default.theme -\nCADD Combo c NULL 0 0\n"
                                        << "CADD TWin t NULL 0 0\nNTAB t 0 Tab\nSOLID\n";

    GLWidget::loadLayout("elsewhere/page.gui");

    EXPECT_EQ(GLWidget::themes["combo_button.theme"]->bodyColour.x, 0.85F);
    EXPECT_EQ(GLWidget::themes["tabwin_button.theme"]->litBrightness, 1.5F);
}

TEST_F(WidgetsPageGLTest, GaugeOfAHost)
{
    const State threeQuarters = [] { dynamic_cast<Gauge&>(*GLWidget::find("fuel")).show(0.75F); };

    EXPECT_TRUE(
        looksAsInTheManual("gauge", {-0.06F, -0.06F, 0.66F, 0.14F}, {asBuilt, threeQuarters}));
}
} // namespace
} // namespace tamor::test
