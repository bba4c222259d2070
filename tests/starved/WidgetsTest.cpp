// The GUI, when memory runs out while it is read, built and used: it is drawn and used on with what
// it has, and nobody points to a widget that could not be made.
#include "gui/GLWidget.h"
#include "tests/gui/Seen.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/starved/Shortage.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/FuzzFile.h"
#include "textures/Font.h"
#include "widgets/Textbox.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>

namespace tamor::test
{
namespace
{
/// Every kind of widget and every directive, with names and texts too long for their own record.
constexpr const char* layout =
    "CONF gui.conf\n"
    "THEM default.theme with-a-word-that-does-not-fit-its-record\n"
    "CADD Win the-window-of-the-layout NULL -1 -0.9 1 A title that is long enough for the heap\n"
    "CADD Slide the-slider-of-the-layout the-window-of-the-layout 0 0.6 0 1\n"
    "CADD Butt the-button-of-the-layout the-window-of-the-layout 0 0.5 Go\n"
    "CADD Butt picture the-window-of-the-layout 0 0 TEX 0.3 0.3\n"
    "CADD Combo the-combobox-of-the-layout the-window-of-the-layout 0 0.2\n"
    "TEXT the-combobox-of-the-layout The first line of the list, which is long\n"
    "TEXT the-combobox-of-the-layout The second\n"
    "CADD Text the-textbox-of-the-layout the-window-of-the-layout 0.4 0.2 20 3\n"
    "CADD Frame the-frame-of-the-layout the-window-of-the-layout 0.3 1.8 1\n"
    "CADD Opt one the-frame-of-the-layout 0 0 One\n"
    "CADD Opt two the-frame-of-the-layout 0 0.2 Two\n"
    "CADD TWin the-pages-of-the-layout NULL -0.8 0.2\n"
    "NTAB the-pages-of-the-layout 0 The title of a page, which is long\n"
    "NTAB the-pages-of-the-layout 1 Second\n"
    "TADD 0 the-pages-of-the-layout Label label 0 0.4 A caption that is\\nlong\n"
    "TADD 1 the-pages-of-the-layout Check check 0 0.4 A caption\n"
    "TADD 2 the-pages-of-the-layout Win inner 0 0.4 0 Inner\n"
    "CHLD\n"
    "SOLID\n"
    "CENTRE the-button-of-the-layout\n"
    "CENTREX the-window-of-the-layout\n";

/// What a user does, everywhere, and what a frame does.
void useGui()
{
    GLWidget::viewport = {0, 0, 800, 600};
    std::array<std::uint8_t, 512> pressed{};
    pressed['x'] = 1;
    for (int x = 0; x < 800; x += 100) {
        for (int y = 0; y < 600; y += 100) {
            GLWidget::mouseMoved(Vector(static_cast<float>(x), static_cast<float>(y)));
            GLWidget::mouseButtons(true, false, false);
            GLWidget::keysChanged(pressed.data());
            GLWidget::mouseButtons(false, false, false);
            GLWidget::updateAll(20);
        }
        GLWidget::renderAll();
    }
}

/// The GUI of a program without a window, which draws into nothing.
class StarvedGui : public testing::Test
{
protected:
    void SetUp() override { enterGuiFolder(); }

    /// A GUI for one attempt, which is deleted behind it.
    template <class Attempt>
    int starveGui(const Attempt& attempt)
    {
        const CapturedErrors errors;
        const int descriptors = openDescriptors();
        const int refused = starve([&](Shortage& shortage) {
            attempt(shortage);
            deleteGui();
        });
        EXPECT_EQ(openDescriptors(), descriptors);
        return refused;
    }
};

/// All widgets with a name: their class, their text and how many lines and children they have.
std::string describeGui()
{
    std::ostringstream text;
    for (const auto& [name, widget] : GLWidget::widgets) {
        if (widget == nullptr)
            continue;
        const SeenFields fields = seen(*widget);
        text << name << ": " << widget->typeName() << " '" << fields.text << "' "
             << fields.lines.size() << " " << fields.children.size() << '\n';
    }
    return text.str();
}

TEST_F(StarvedGui, LaysOutAllWidgets)
{
    const FuzzFile file(layout);
    std::string whole;
    {
        const CapturedErrors errors;
        GLWidget::loadLayout(file.path());
        whole = describeGui();
        deleteGui();
    }
    const int refused = starveGui([&](Shortage& shortage) {
        const bool isThrough = shortage.during([&] { GLWidget::loadLayout(file.path()); });

        // Only what is printed may get lost without a word.
        EXPECT_TRUE(!isThrough || describeGui() == whole) << describeGui();
        useGui();
    });
    EXPECT_GE(refused, 400);
}

TEST_F(StarvedGui, ReadsThemesAndConfigurations)
{
    const std::string longName = "a name that no string keeps in itself";
    const std::string here = "././././././././././";
    const int refused = starveGui([&](Shortage& shortage) {
        const auto readBoth = [&] {
            GLWidget::createTheme(longName)->read(here + "other.theme");
            GLWidget::readConfig(here + "gui.conf");
        };
        const auto areRead = [&] {
            return GLWidget::themes[longName]->iconSize == 0.08F && GLWidget::glowRate == 0.004F;
        };

        const bool isThrough = shortage.during(readBoth);

        EXPECT_TRUE(!isThrough || areRead());
        readBoth();
        EXPECT_TRUE(areRead());
    });
    EXPECT_GE(refused, 20);
}

TEST_F(StarvedGui, IsUsed)
{
    const FuzzFile file(layout);
    // How many letters are typed depends on when the memory runs out.
    const auto describeUntyped = [] {
        std::string text = describeGui();
        std::erase(text, 'x');
        return text;
    };
    std::string untyped;
    const int refused = starveGui([&](Shortage& shortage) {
        GLWidget::loadLayout(file.path());
        // As much as a string's own record holds: one letter more needs memory.
        auto* const box = static_cast<Textbox*>(GLWidget::find("the-textbox-of-the-layout"));
        box->beforeCursor = "Fifteen letters";
        const auto type = [&](std::uint8_t isDown) {
            std::array<std::uint8_t, 512> pressed{};
            pressed['x'] = isDown;
            seen(*box).hover = true;
            GLWidget::keysChanged(pressed.data());
        };
        type(0);
        if (untyped.empty())
            untyped = describeUntyped();
        shortage.during([&] {
            type(1);
            useGui();
        });
        type(0);
        useGui();
        EXPECT_EQ(describeUntyped(), untyped);
    });
    EXPECT_GE(refused, 4);
}

/// Opens a box and answers it as a user does.
void answerBox(std::int32_t flags, const std::string& button)
{
    GLWidget::messageBox("A message that is long enough for the heap", flags);
    GLWidget* const answer = GLWidget::find(button);
    ASSERT_NE(answer, nullptr);
    seen(*answer).clicked = true;
    GLWidget::updateAll(20);
}

TEST_F(StarvedGui, OpensABoxWholeOrNotAtAll)
{
    const std::string text = "A message that is long enough for the heap";
    for (const std::int32_t flags : {1, 3, 14}) {
        const int refused = starveGui([&](Shortage& shortage) {
            const bool isThrough = shortage.during([&] { GLWidget::messageBox(text, flags); });

            EXPECT_EQ(GLWidget::topLevel.size(), isThrough ? 1U : 0U);
            EXPECT_EQ(GLWidget::find("__msgbox") != nullptr, isThrough);
            useGui();
            answerBox(flags, flags == 14 ? "__msgbox_no" : "__msgbox_ok");
            EXPECT_EQ(GLWidget::takeMessageResult(), flags == 14 ? 8 : 1);
            EXPECT_EQ(GLWidget::topLevel.size(), 0U);
        });
        EXPECT_GE(refused, 30) << flags;
    }
}

TEST_F(StarvedGui, TakesAnAnswerAndOpensTheNextBox)
{
    const int refused = starveGui([](Shortage& shortage) {
        GLWidget::messageBox("A message that is long enough for the heap", 14);
        seen(*GLWidget::find("__msgbox_yes")).clicked = true;

        const bool isThrough = shortage.during([] { GLWidget::updateAll(20); });

        EXPECT_EQ(GLWidget::messageResult, isThrough ? 4 : 0);
        GLWidget::updateAll(20);
        EXPECT_EQ(GLWidget::takeMessageResult(), 4);
        useGui();
        answerBox(1, "__msgbox_ok");
        EXPECT_EQ(GLWidget::takeMessageResult(), 1);
        EXPECT_EQ(GLWidget::topLevel.size(), 0U);
    });
    EXPECT_GE(refused, 8);
}

TEST_F(StarvedGui, TakesTypedText)
{
    const std::string typed = "A long line that was typed before";
    const int refused = starveGui([&](Shortage& shortage) {
        GLWidget::createTheme("default");
        Textbox box("box", nullptr, Vector(), nullptr, 40, 3);
        auto& fields = static_cast<Seen<Textbox>&>(box);
        box.beforeCursor = typed;
        fields.hover = true;
        std::array<std::uint8_t, 512> pressed{};

        shortage.during([&] {
            for (const std::size_t key : {std::size_t{'x'}, std::size_t{276}, std::size_t{276},
                                          std::size_t{13}, std::size_t{278}, std::size_t{279}}) {
                pressed.fill(0);
                pressed[key] = 1;
                for (int frame = 0; frame < 20; ++frame)
                    box.onKeys(pressed.data());
            }
        });

        // Whatever was added, what was typed before is there.
        pressed.fill(0);
        box.onKeys(pressed.data());
        std::erase_if(fields.text, [](char each) { return each == 'x' || each == '\n'; });
        EXPECT_EQ(fields.text, typed);
        GLWidget::widgets.clear();
    });
    EXPECT_GE(refused, 3);
}
} // namespace
} // namespace tamor::test
