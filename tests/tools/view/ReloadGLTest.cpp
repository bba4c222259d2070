#include "tests/tools/view/View.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tamor::test
{
namespace
{
// Where things of the demonstration's layout are, in pixels.
constexpr Place nothing{400, 320};
constexpr Place redKnob{36, 215};
constexpr Place checksTab{336, 21};
constexpr Place lampBox{172, 84};
constexpr Place optionsTab{258, 21};
constexpr Place pencilOption{172, 122};
constexpr Place list{600, 90};
constexpr Place secondRow{600, 140};
constexpr Place notebook{300, 500};

/// The layout with one line replaced.
std::string replaced(std::string layout, const std::string& line, const std::string& by)
{
    const std::size_t at = layout.find(line);
    EXPECT_NE(at, std::string::npos) << line;
    return layout.replace(at, line.size(), by);
}

TEST(ViewReloadGLTest, ShowsAChangedLayoutInPlace)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture button = view.picture({730, 560}, 50, 25);

    directory.write("my.gui", replaced(directory.read("my.gui"), "CADD Butt exitbut program 0.8033",
                                       "CADD Butt exitbut program 0.1033"));

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_EQ(view.picture({520, 560}, 50, 25).bytes, button.bytes);
    EXPECT_NE(view.picture({730, 560}, 50, 25).bytes, button.bytes);
}

TEST(ViewReloadGLTest, NoticesALayoutThatAnEditorPutInThePlaceOfTheOld)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));

    directory.write("my.gui.new", directory.read("my.gui"));
    std::filesystem::rename("my.gui.new", "my.gui");

    EXPECT_TRUE(view.saysTimes("my.gui: read in", 2));
}

TEST(ViewReloadGLTest, ShowsAChangedTheme)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));

    directory.write("lower.theme",
                    replaced(directory.read("lower.theme"), "0.13 0.17 0.22", "0.60 0.20 0.20"));

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_GT(view.pixel({600, 560})[0], 100);
}

TEST(ViewReloadGLTest, ShowsAChangedTexture)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture before = view.whole();

    directory.write("quill.tga", directory.read("gui.tga"));

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_NE(before.bytes, view.whole().bytes);
}

TEST(ViewReloadGLTest, TellsWhatEarlierReadingsLeaveInMemory)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));

    directory.write("my.gui", directory.read("my.gui"));

    EXPECT_TRUE(
        view.says("41 widgets; 41 widgets and 13 themes of earlier readings stay in memory\n"));
}

TEST(ViewReloadGLTest, ReadsOnceIfItIsToldNotToReload)
{
    const WorkingDirectory directory;
    View view({"--no-reload", "my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));

    directory.write("my.gui", "THEM default.theme -\n");
    view.type("F5");

    // The key asks for the only second reading there is.
    ASSERT_TRUE(view.says("0 widgets; 41"));
    const std::string output = view.output();
    EXPECT_EQ(output.find("read in", output.find("read in", output.find("read in") + 1) + 1),
              std::string::npos)
        << output;
}

TEST(ViewReloadGLTest, KeepsASliderWhereItWasDragged)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    view.drag(redKnob, {redKnob.x, 115});
    view.moveTo(nothing);
    view.rest();
    const Picture before = view.picture({15, 60}, 110, 310);

    directory.write("my.gui", directory.read("my.gui") + "// changed\n");

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_EQ(before.bytes, view.picture({15, 60}, 110, 310).bytes);
    EXPECT_NE(before.at(redKnob.x - 15 + 8, 115 - 60), before.at(redKnob.x - 15 + 8, 215 - 60));
}

TEST(ViewReloadGLTest, KeepsTheTabThatWasChosenAndTheTicks)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    view.click(checksTab);
    view.click(lampBox);
    view.moveTo(nothing);
    directory.write("my.gui", directory.read("my.gui") + "// first change\n");
    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    const Picture ticked = view.picture({140, 10}, 330, 200);
    view.click(lampBox);
    view.moveTo(nothing);

    directory.write("my.gui", directory.read("my.gui") + "// second change\n");

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 3));
    const Picture unticked = view.picture({140, 10}, 330, 200);
    EXPECT_NE(ticked.bytes, unticked.bytes) << "the tick went with the first change";
    EXPECT_TRUE(matchesGolden(ticked, TAMOR_VIEW_GOLDENS "/ticked.png"));
}

TEST(ViewReloadGLTest, KeepsTheOptionThatWasChosen)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    view.click(optionsTab);
    view.click(pencilOption);
    view.moveTo(nothing);
    view.rest();
    const Picture chosen = view.picture({140, 10}, 330, 200);

    directory.write("my.gui", directory.read("my.gui") + "// changed\n");

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_EQ(view.picture({140, 10}, 330, 200).bytes, chosen.bytes);
}

TEST(ViewReloadGLTest, KeepsTheChoiceOfAList)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    const Picture before = view.picture({490, 60}, 290, 160);
    view.click(list);
    view.click(secondRow);
    view.moveTo(nothing);
    view.rest();
    const Picture chosen = view.picture({490, 60}, 290, 160);
    ASSERT_NE(chosen.bytes, before.bytes);

    directory.write("my.gui", directory.read("my.gui") + "// changed\n");

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    EXPECT_EQ(view.picture({490, 60}, 290, 160).bytes, chosen.bytes);
}

TEST(ViewReloadGLTest, KeepsATypedTextAndItsFocus)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    view.click(notebook);
    for (const char* key : {"d", "e", "a", "r"})
        view.type(key);
    view.moveTo(nothing);

    directory.write("my.gui", directory.read("my.gui") + "// changed\n");

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));
    view.type("s");
    // The page's light may not have faded to its end.
    EXPECT_TRUE(matchesGolden(view.picture({140, 440}, 335, 145), TAMOR_VIEW_GOLDENS "/typed.png",
                              {.channel = 8}));
}

TEST(ViewReloadGLTest, GivesNothingToAWidgetOfAnotherKind)
{
    const WorkingDirectory directory;
    View view({"my.gui"});
    ASSERT_TRUE(view.opensWithPointerAt(nothing));
    view.drag(redKnob, {redKnob.x, 115});
    const std::string layout = directory.read("my.gui");
    const std::string slider = "CADD Slide red main 0.0567 0.6867 0 1.0267";
    directory.write("my.gui", replaced(layout, slider, "CADD Label red main 0.0567 0.6867 red"));
    ASSERT_TRUE(view.saysTimes("my.gui: read in", 2));

    directory.write("my.gui", layout);

    ASSERT_TRUE(view.saysTimes("my.gui: read in", 3));
    view.moveTo(nothing);
    // The knob is in the middle again, as in a new slider.
    EXPECT_NE(view.pixel({redKnob.x + 8, redKnob.y}), view.pixel({redKnob.x + 8, 115}));
    EXPECT_EQ(view.pixel({redKnob.x + 20, 115}), view.pixel({redKnob.x + 8, 115}));
}
} // namespace
} // namespace tamor::test
