#include "app/Application.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <ostream>
#include <string>

namespace tamor::test
{
namespace
{
using testing::HasSubstr;

/// The first `count` lines of a file, and no more of it.
void shorten(const WorkingDirectory& directory, const std::string& name, int count)
{
    const std::string text = directory.read(name);
    std::size_t end = 0;
    for (int i = 0; i < count; i++)
        end = text.find('\n', end) + 1;
    directory.write(name, text.substr(0, end));
}

struct BadInput
{
    const char* name;
    void (*spoil)(const WorkingDirectory&);
    const char* words;
};

void PrintTo(const BadInput& input, std::ostream* out)
{
    *out << input.name;
}

class BadInputGLTest : public testing::TestWithParam<BadInput>
{};

TEST_P(BadInputGLTest, GetsItsWordsAndTheProgramGoesOn)
{
    const WorkingDirectory directory;
    GetParam().spoil(directory);
    Demonstration demo(directory);

    ASSERT_TRUE(demo.opens());
    demo.click(redButton);
    demo.click(listBox);
    demo.click(optionsTab);
    demo.click(notebook);
    demo.type("a");

    EXPECT_THAT(demo.errors(), HasSubstr(GetParam().words));
    demo.holdKey("Escape");
    EXPECT_EQ(demo.end().status, 0) << demo.errors();
}

INSTANTIATE_TEST_SUITE_P(
    Each, BadInputGLTest,
    testing::Values(
        // The widgets name "default.theme" too, and get what could be read of it: nothing.
        BadInput{"NoDefaultTheme", [](const WorkingDirectory& d) { d.remove("default.theme"); },
                 "reading theme default.theme\n(0, 0, 0, 1)\n(0, 0, 0, 1)\n(0, 0, 0, 1)\n"
                 "(0, 0, 0, 1)\n0\n0\n0\n0\n0\n0\n(0, 0, 0, 1)\n0 0\n(0, 0, 0, 1)\n0\n\n"},
        BadInput{"AShortTheme", [](const WorkingDirectory& d) { shorten(d, "panel.theme", 6); },
                 "reading theme panel.theme\n(0.94, 0.96, 0.98, 1)\n(0.33, 0.4, 0.5, 1)\n"
                 "(0.13, 0.17, 0.22, 1)\n(0.3, 0.3, 0.3, 1)\n1\n0.97\n0\n0\n0\n0\n(0, 0, 0, 1)\n0 "
                 "0\n(0, 0, 0, 1)\n0\n\n"},
        BadInput{"AThemeOfWords",
                 [](const WorkingDirectory& d) { d.write("panel.theme", "white on black\n"); },
                 "reading theme panel.theme\n(0, 0, 0, 1)\n"},
        BadInput{"NoMessageBoxTheme",
                 [](const WorkingDirectory& d) { d.remove("messagebox.theme"); },
                 "reading theme messagebox.theme\n(0, 0, 0, 1)\n"},
        BadInput{"NoThemeForTheListsButton",
                 [](const WorkingDirectory& d) { d.remove("combo_button.theme"); },
                 "reading theme combo_button.theme\n(0, 0, 0, 1)\n"},
        BadInput{"NoThemeForTheTabs",
                 [](const WorkingDirectory& d) { d.remove("tabwin_button.theme"); },
                 "reading theme tabwin_button.theme\n(0, 0, 0, 1)\n"},
        BadInput{"NoConfiguration", [](const WorkingDirectory& d) { d.remove("gui.conf"); },
                 "Loading \nError loading the font\nLoaded.\n"},
        BadInput{"AShortConfiguration",
                 [](const WorkingDirectory& d) { shorten(d, "gui.conf", 3); }, "\nLoaded.\n"},
        BadInput{"NoFont", [](const WorkingDirectory& d) { d.write("gui.conf", "none.ttf\n-\n"); },
                 "Loading none.ttf\nError loading the font\nLoaded.\n"},
        BadInput{"AFontThatIsNone",
                 [](const WorkingDirectory& d) { d.write("gui.conf", "my.gui\n-\n"); },
                 "Loading my.gui\nThe font file format is not recgonised\nLoaded.\n"},
        BadInput{"NoTexture", [](const WorkingDirectory& d) { d.remove("gui.tga"); },
                 "loading gui.tga\nError loading texture tga file 'gui.tga'\n"},
        BadInput{"ATextureOfWords",
                 [](const WorkingDirectory& d) { d.write("gui.tga", "a picture of nothing"); },
                 "loading gui.tga\nPlease use compressed TGAs\n"},
        BadInput{"AnEmptyTexture", [](const WorkingDirectory& d) { d.write("gui.tga", ""); },
                 "loading gui.tga\nPlease use compressed TGAs\n"},
        BadInput{"ATruncatedTexture",
                 [](const WorkingDirectory& d) {
                     d.write("gui.tga", d.read("gui.tga").substr(0, 3000));
                 },
                 "loading gui.tga\nread theme default.theme\n"},
        BadInput{"ATextureOfAnotherKind",
                 [](const WorkingDirectory& d) {
                     std::string text = d.read("choice.theme");
                     text.replace(text.find("gui.tga"), 7, "gui.bmp");
                     d.write("choice.theme", text);
                 },
                 "loading gui.bmp\ngui.bmp: Unsupported texture format\n"},
        BadInput{"ALayoutWithUnknownWords",
                 [](const WorkingDirectory& d) {
                     d.write("my.gui",
                             "THEM default.theme x\nLOOK here\nCADD Cushion soft NULL 0 0\n"
                             "CENTRE nobody\ncadd Label low NULL 0 0 low\n"
                             "CADD Label last NULL 0 0 100%s %n of it\n");
                 },
                 "adding a 'Cushion' - soft\nadding a 'Label' - last\n"},
        BadInput{
            "ALayoutWithoutConfiguration",
            [](const WorkingDirectory& d) {
                d.write("my.gui",
                        "THEM default.theme x\nCADD Text t NULL 0 0 9 3\nCADD Butt b NULL 0 0 b\n");
            },
            "textbox 9 3\ndim: (0.04, 0.156, 0, 1)\n"}),
    [](const testing::TestParamInfo<BadInput>& row) { return row.param.name; });

/// Prints the colour that each of three frames is cleared to, and ends.
class ClearingApplication : public Application
{
public:
    bool handleEvent(Event event) override
    {
        if (event.kind == EV_RENDER) {
            GLfloat colour[4];
            glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
            for (const GLfloat channel : colour)
                std::cout << channel << ' ';
            if (++frames == 3)
                return false;
        }
        return Application::handleEvent(event);
    }

private:
    int frames = 0;
};

TEST(AnEmptyLayoutGLTest, ShowsBlackOnceAndThenBlue)
{
    const WorkingDirectory directory;
    directory.write("my.gui", "");
    {
        Demonstration demo([] {
            ObjectRef<ClearingApplication>(new ClearingApplication)->run();
            return 0;
        });
        EXPECT_EQ(demo.end().status, 0);
        EXPECT_EQ(demo.output(), "0 0 0 0 0 0 1 1 0 0 1 1 ");
    }
    Demonstration demo(directory);

    ASSERT_TRUE(demo.opens());

    EXPECT_EQ(demo.pixel(freePlace), (Pixel{0, 0, 255}));
    demo.holdKey("Escape");
    EXPECT_EQ(demo.end().status, 0);
}
} // namespace
} // namespace tamor::test
