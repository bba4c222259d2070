// Pictures of each widget in each of its states.

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/Image.h"
#include "widgets/Button.h"
#include "widgets/Checkbox.h"
#include "widgets/Combobox.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"
#include "widgets/Slider.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace tamor::test
{
namespace
{
constexpr int cell = 32; ///< pixels of an icon's side

/// What is opaque of each icon, with x and y from its middle, -1 to 1.
bool isInIcon(int icon, float x, float y)
{
    const float distance = std::sqrt(x * x + y * y);
    const float reach = std::max(std::abs(x), std::abs(y));
    switch (icon) {
    case 0: // the option's frame: a ring
        return distance > 0.7F && distance < 0.9F;
    case 1: // its mark: a disc
        return distance < 0.5F;
    case 2: // the check's frame: a square without its middle
        return reach > 0.7F && reach < 0.9F;
    case 3: // its mark: a cross
        return std::abs(std::abs(x) - std::abs(y)) < 0.2F && reach < 0.6F;
    default: // the slider's knob: broad below, so that it can be seen to turn
        return std::abs(x) < 0.5F - 0.3F * y && std::abs(y) < 0.9F;
    }
}

/// Makes a texture of the five icons side by side, white where they are.
std::uint32_t makeIcons()
{
    constexpr int width = 8 * cell;
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < cell; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto place = [](int pixel) {
                return (static_cast<float>(pixel % cell) + 0.5F) * 2.0F / cell - 1.0F;
            };
            const bool isOpaque = x / cell < 5 && isInIcon(x / cell, place(x), place(y));
            bytes.insert(bytes.end(), {255, 255, 255, std::uint8_t(isOpaque ? 255 : 0)});
        }
    }
    Image image;
    image.setFromBytes(width, cell, true, bytes.data());
    std::uint32_t texture = 0;
    uploadTexture(texture, image, {"icons", 0});
    return texture;
}

class GoldenGLTest : public GuiGLTest
{
protected:
    void SetUp() override
    {
        GuiGLTest::SetUp();
        GLWidget::font.load(TAMOR_TEST_FONT);
        Vector* const icons[] = {&GLWidget::optionFrame, &GLWidget::optionMark,
                                 &GLWidget::checkFrame, &GLWidget::checkMark,
                                 &GLWidget::sliderKnob};
        float left = 0.0F;
        for (Vector* icon : icons) {
            *icon = Vector(left, 0.0F, left + 0.125F, 1.0F);
            left += 0.125F;
        }
        theme.textColour = {0.1F, 0.1F, 0.2F};
        theme.edgeColour = {1.0F, 0.71F, 0.16F};
        theme.bodyColour = {0.5F, 0.8F, 0.7F};
        theme.bodyAlpha = 0.75F;
        theme.listAlpha = 0.5F;
        theme.lineWidth = 2.0F;
        theme.margin = 0.01F;
        theme.chamfer = 0.1F;
        theme.fontSize = {0.05F, 0.06F};
        theme.iconSize = 0.12F;
        theme.pressOffset = {0.02F, -0.02F};
        theme.texture = makeIcons();
        buttonTheme = theme;
    }

    /// Builds a widget at the top level.
    template <class Widget, class... Arguments>
    Seen<Widget>& show(float x, float y, const Arguments&... arguments)
    {
        const CapturedErrors errors;
        auto& widget = make<Widget>("w", nullptr, Vector(x, y), arguments...);
        GLWidget::topLevel.push_back(&widget);
        return widget;
    }

    /// Compares what stands in the rectangle from (0, 0) to `width` and `height` in pixels, 300 to
    /// a unit.
    static testing::AssertionResult drawingMatches(const std::string& name, int width, int height)
    {
        glClearColor(0.25F, 0.3F, 0.4F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        GLWidget::renderAll();
        return matchesGolden(pictureOfWindow(400, 300 - height, width, height),
                             "goldens/" + name + ".png");
    }
};

TEST_F(GoldenGLTest, ButtonIdleLitHeldAndWithAnImage)
{
    show<Button>(0.05F, 0.05F, std::string("Idle"));
    show<Button>(0.3F, 0.05F, std::string("Lit")).glow = 1.0F;
    show<Button>(0.5F, 0.05F, std::string("Held")).active = true;
    show<Button>(0.75F, 0.05F, Vector(0.4F, 0.1F)).glow = 1.0F;

    EXPECT_TRUE(drawingMatches("button", 360, 60));
}

TEST_F(GoldenGLTest, LabelOfOneLineAndOfSeveral)
{
    theme.textColour = {1.0F, 1.0F, 1.0F};
    show<Label>(0.05F, 0.2F, std::string("One line, 100%%"));
    show<Label>(0.65F, 0.2F, std::string("Three\nlines\nof text"));

    EXPECT_TRUE(drawingMatches("label", 300, 90));
}

TEST_F(GoldenGLTest, CheckboxOffOnAndFading)
{
    show<Checkbox>(0.05F, 0.2F, std::string("Off"));
    show<Checkbox>(0.05F, 0.05F, std::string("On")).active = true;
    auto& appearing = show<Checkbox>(0.5F, 0.2F, std::string("Appears"));
    appearing.active = true;
    appearing.fade = 0.5F;
    appearing.glow = 1.0F;
    show<Checkbox>(0.5F, 0.05F, std::string("Disappears")).fade = 0.5F;

    EXPECT_TRUE(drawingMatches("checkbox", 330, 105));
}

TEST_F(GoldenGLTest, OptionboxOffOnAndLit)
{
    show<Optionbox>(0.05F, 0.05F, std::string("Off"));
    show<Optionbox>(0.35F, 0.05F, std::string("On")).active = true;
    auto& lit = show<Optionbox>(0.65F, 0.05F, std::string("Lit"));
    lit.active = true;
    lit.glow = 1.0F;

    EXPECT_TRUE(drawingMatches("optionbox", 300, 60));
}

TEST_F(GoldenGLTest, ComboboxShutAndOpenWithAHighlight)
{
    auto& shut = show<Combobox>(0.05F, 0.5F);
    auto& open = show<Combobox>(0.65F, 0.5F);
    for (auto* box : {&shut, &open}) {
        for (const char* item : {"One", "Second", "Third one"})
            box->addText(item);
    }
    shut.setSelected(1);
    open.open = true;
    open.highlight = 2;

    EXPECT_TRUE(drawingMatches("combobox", 390, 210));
}

TEST_F(GoldenGLTest, FrameWithAndWithoutABorder)
{
    auto& bordered = show<Frame>(0.05F, 0.05F, true);
    auto& plain = show<Frame>(0.5F, 0.05F, false);
    for (auto* frame : {&bordered, &plain}) {
        auto& button = make<Button>("b", frame, Vector(0.05F, 0.05F), std::string("Inside"));
        frame->addChild(&button);
        frame->fitChildren();
    }

    EXPECT_TRUE(drawingMatches("frame", 270, 90));
}

TEST_F(GoldenGLTest, GLWindowDimAndLit)
{
    auto& dim = show<GLWindow>(0.05F, 0.05F, std::string("A window"), true);
    auto& lit = show<GLWindow>(0.6F, 0.05F, std::string("A lit one"), true);
    lit.glow = 1.0F;
    for (auto* window : {&dim, &lit}) {
        auto& label = make<Label>("l", window, Vector(0.0F, 0.1F), std::string("with a label"));
        window->addChild(&label);
        window->fitChildren();
    }

    EXPECT_TRUE(drawingMatches("glwindow", 360, 150));
}

TEST_F(GoldenGLTest, SliderInAllDirections)
{
    show<Slider>(0.1F, 0.05F, Vector(0.0F, 0.4F)).glow = 1.0F;
    auto& low = show<Slider>(0.25F, 0.05F, Vector(0.0F, 0.4F));
    low.value = 0.1F;
    show<Slider>(0.4F, 0.3F, Vector(0.4F, 0.0F)).glow = 1.0F;
    auto& high = show<Slider>(0.4F, 0.1F, Vector(0.4F, 0.0F));
    high.value = 0.9F;

    EXPECT_TRUE(drawingMatches("slider", 300, 180));
}

TEST_F(GoldenGLTest, TabWindowWithEachOfItsTabs)
{
    auto& window = show<TabWindow>(0.05F, 0.05F);
    window.addTab(0, "First");
    window.addTab(1, "Second");
    auto& label = make<Label>("l", &window, Vector(), std::string("on the first tab"));
    auto& box = make<Checkbox>("c", &window, Vector(), std::string("on the second"));
    window.addToTab(0, &label);
    window.addToTab(1, &box);
    window.fitChildren();
    EXPECT_TRUE(drawingMatches("tabwindow-first", 240, 120));

    const Vector rect = window.tabs[1].button->getRect();
    point(window, rect.x + 0.05F, rect.y + 0.05F, true);
    window.update(0);
    window.tabs[0].button->update(100);
    window.onPointer(-5.0F, -5.0F);
    window.tabs[0].button->update(100);
    window.tabs[0].button->update(100);
    EXPECT_TRUE(drawingMatches("tabwindow-second", 240, 120));
}

TEST_F(GoldenGLTest, TextboxWithAndWithoutTheFocus)
{
    theme.textColour = {0.9F, 0.9F, 0.8F};
    auto& idle = show<Textbox>(0.05F, 0.05F, 10, 3);
    idle.text = "Some text\nin two rows";
    auto& focused = show<Textbox>(0.7F, 0.05F, 10, 3);
    focused.text = idle.text;
    focused.beforeCursor = "Some text\nin t";
    focused.hover = true;
    focused.glow = 1.0F;

    EXPECT_TRUE(drawingMatches("textbox", 405, 105));
}

TEST_F(GoldenGLTest, MessageBoxWithThreeButtons)
{
    const auto messageBoxInItsDirectory = [] {
        const TemporaryDirectory directory;
        const CapturedErrors errors;
        directory.write("messagebox.theme",
                        "0.1 0.1 0.2\n1 0.71 0.16\n0.5 0.8 0.7\n0 0 0\n0.75\n0.5\n2\n0.01\n0.1\n0\n"
                        "0.05 0.06\n0.7 1\n0 0 0\n0.12\nNULL\n1\n");
        GLWidget::messageBox("Shall we?\nIt is late.", 14);
    };
    messageBoxInItsDirectory();
    GLWidget::find("__msgbox")->move(Vector(0.5F, 0.3F));

    EXPECT_TRUE(drawingMatches("messagebox", 300, 180));
}
} // namespace
} // namespace tamor::test
