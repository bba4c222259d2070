#include "gui/GLWidget.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"
#include "widgets/TabWindow.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// Numbers that floats hold exactly: margins of 1/16, letters of 1/16 by 1/4.
constexpr std::string_view themeFile = "1 1 1\n1 0.5 0.25\n0.75 0.75 0.75\n0 0 0\n1\n1\n2\n0.0625\n"
                                       "0.125\n0\n0.125 0.25\n0.5 1\n0 0 0\n0.5\nNULL\n1\n";

template <class Base>
class MessageBoxOf : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        directory.write("messagebox.theme", themeFile);
    }

    /// Opens a box without the lines that reading its theme prints.
    static bool open(const std::string& text, std::int32_t flags)
    {
        const CapturedErrors errors;
        return GLWidget::messageBox(text, flags);
    }

    static GLWidget* named(const std::string& name) { return GLWidget::find("__msgbox" + name); }

    /// Presses the button of this name, and lets the GUI look.
    static void press(const std::string& name)
    {
        GLWidget* button = named(name);
        const Vector rect = button->getRect();
        point(*button, (rect.x + rect.z) / 2.0F, (rect.y + rect.w) / 2.0F, true);
        GLWidget::updateAll(1);
    }

    TemporaryDirectory directory;
};

using MessageBox = MessageBoxOf<GuiTest>;
using MessageBoxGLTest = MessageBoxOf<GuiGLTest>;

TEST_F(MessageBox, HasATextAndAnOkayButtonInTheMiddleOfTheWindow)
{
    EXPECT_TRUE(open("Hi", 1));

    GLWidget& box = *named("");
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&box));
    EXPECT_EQ(box.typeName(), "GLWindow");
    EXPECT_EQ(seen(box).text, "Message box");
    EXPECT_THAT(namesOfChildren(box), ElementsAre("__msgbox_message", "__msgbox_ok"));
    EXPECT_EQ(seen(*named("_message")).text, "Hi");
    EXPECT_EQ(named("_message")->typeName(), "Label");
    EXPECT_EQ(seen(*named("_ok")).text, "OK");
    // As wide as its title, 11/16 and 2/8; as high as the label's top at 0.575, 6 margins of 1/16
    // and the strip of 0.5.
    const Vector rect = box.getRect();
    EXPECT_FLOAT_EQ(rect.x, -0.46875F);
    EXPECT_FLOAT_EQ(rect.y, -0.725F);
    EXPECT_FLOAT_EQ(rect.z, 0.46875F);
    EXPECT_FLOAT_EQ(rect.w, 0.725F);
    // (0.9375 - 0.375) / 2 - 0.25 / 2.
    EXPECT_EQ(seen(*named("_ok")).position.x, 0.15625F);
    EXPECT_EQ(seen(*named("_ok")).position.y, 0.0F);
    EXPECT_EQ(seen(*named("_message")).position.x, 0.15625F);
    EXPECT_EQ(seen(*named("_message")).position.y, 0.2F);
}

struct BoxButtons
{
    std::int32_t flags;
    std::vector<std::string> names;
    std::vector<std::string> captions;
};

TEST_F(MessageBox, HasTheButtonsThatItsFlagsAskForInAFrame)
{
    const BoxButtons rows[] = {
        {3, {"__msgbox_ok", "__msgbox_cancel"}, {"OK", "Cancel"}},
        {12, {"__msgbox_yes", "__msgbox_no"}, {"Yes", "No"}},
        {14, {"__msgbox_yes", "__msgbox_no", "__msgbox_cancel"}, {"Yes", "No", "Cancel"}},
        {0, {}, {}},
        {2, {}, {}},
        {15, {}, {}},
        {-1, {}, {}},
    };
    const float places[] = {0.0F, 0.2F, 0.4F};
    for (const BoxButtons& row : rows) {
        GLWidget::widgets.clear();
        open("Hi", row.flags);

        EXPECT_THAT(namesOfChildren(*named("")), ElementsAre("__msgbox_message", "__msgbox_frm"));
        GLWidget& frame = *named("_frm");
        EXPECT_EQ(frame.typeName(), "Frame");
        EXPECT_EQ(namesOfChildren(frame), row.names) << row.flags;
        for (std::size_t i = 0; i < row.names.size(); ++i) {
            GLWidget& button = *GLWidget::find(row.names[i]);
            EXPECT_EQ(seen(button).text, row.captions[i]);
            EXPECT_EQ(seen(button).position.x, places[i]);
            EXPECT_EQ(seen(button).position.y, 0.0F);
            EXPECT_EQ(seen(button).parent, &frame);
        }
    }
}

TEST_F(MessageBox, FitsItsFrameAndCentresIt)
{
    open("Hi", 3);

    // "Cancel" ends at 0.2 + 0.5; the frame adds 0.375, and so does the box.
    const Vector rect = named("")->getRect();
    EXPECT_FLOAT_EQ(rect.z, 0.725F);
    EXPECT_FLOAT_EQ(rect.w, 0.8125F);
    EXPECT_FLOAT_EQ(seen(*named("_frm")).position.x, 0.0F);
    EXPECT_FLOAT_EQ(seen(*named("_message")).position.x, 0.4125F);
}

TEST_F(MessageBox, IsDraggedByItsStrip)
{
    open("Hi", 1);
    GLWidget& box = *named("");
    point(box, 0.0F, 0.7F, true);

    box.onPointer(0.5F, 0.7F);

    EXPECT_FLOAT_EQ(box.getRect().x, 0.03125F);
}

struct BoxAnswer
{
    std::int32_t flags;
    const char* button;
    std::int32_t result;
};

TEST_F(MessageBox, GivesTheValueOfItsButtonOnce)
{
    const BoxAnswer rows[] = {
        {1, "_ok", 1},  {3, "_ok", 1},  {3, "_cancel", 2},  {12, "_yes", 4},
        {12, "_no", 8}, {14, "_no", 8}, {14, "_cancel", 2}, {14, "_yes", 4},
    };
    for (const BoxAnswer& row : rows) {
        open("Hi", row.flags);
        EXPECT_EQ(GLWidget::takeMessageResult(), 0);

        press(row.button);

        EXPECT_EQ(GLWidget::takeMessageResult(), row.result) << row.flags << row.button;
        EXPECT_EQ(GLWidget::takeMessageResult(), 0);
    }
}

TEST_F(MessageBox, ClosesAtTheUpdateAfterThePress)
{
    open("Hi", 12);
    point(*named("_yes"), 0.1F, 0.1F, true);
    EXPECT_NE(named(""), nullptr);
    EXPECT_EQ(GLWidget::messageResult, 0);

    GLWidget::updateAll(1);

    EXPECT_THAT(GLWidget::topLevel, IsEmpty());
    EXPECT_EQ(GLWidget::messageResult, 4);
    for (const char* name : {"", "_ok", "_cancel", "_yes", "_no", "_msg"})
        EXPECT_EQ(named(name), nullptr) << name;
}

TEST_F(MessageBox, LeavesItsLabelAndItsFrameInTheRegistry)
{
    open("Hi", 12);
    GLWidget* const label = named("_message");
    GLWidget* const frame = named("_frm");

    press("_no");

    EXPECT_EQ(named("_message"), label);
    EXPECT_EQ(named("_frm"), frame);
    EXPECT_EQ(seen(*label).text, "Hi");
    EXPECT_THAT(seen(*frame).children, IsEmpty()) << "its buttons are deleted";
    EXPECT_EQ(seen(*frame).parent, nullptr) << "and so is its window";
    EXPECT_EQ(seen(*label).parent, nullptr);

    open("again", 12);
    EXPECT_NE(named("_message"), label);
    EXPECT_NE(named("_frm"), frame);
}

TEST_F(MessageBox, TakesOutNoOtherWidget)
{
    auto& other = make<Frame>("other", nullptr, Vector(), false);
    auto& later = make<Frame>("later", nullptr, Vector(), false);
    GLWidget::topLevel = {&other};
    open("Hi", 1);
    GLWidget::topLevel.push_back(&later);

    press("_ok");

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&other, &later));
    EXPECT_EQ(GLWidget::find("other"), &other);
}

TEST_F(MessageBox, KeepsTheLaterOfTwoAnswersInOneFrame)
{
    open("Hi", 14);
    point(*named("_no"), 0.3F, 0.1F, true);
    point(*named("_cancel"), 0.5F, 0.1F, true);

    GLWidget::updateAll(1);

    EXPECT_EQ(GLWidget::takeMessageResult(), 8) << "OK, Cancel, Yes, No is the order";
}

TEST_F(MessageBox, StaysOpenWithoutAButtonWhateverIsPressed)
{
    open("Hi", 2);

    for (int i = 0; i < 3; ++i) {
        GLWidget::mouseMoved(Vector(400.0F, 300.0F));
        GLWidget::mouseButtons(i % 2 == 0, false, false);
        GLWidget::updateAll(1);
    }

    EXPECT_NE(named(""), nullptr);
    EXPECT_EQ(GLWidget::takeMessageResult(), 0);
}

TEST_F(MessageBox, ChangesNothingButTheThemeWhileOneIsOpen)
{
    open("Hi", 1);
    GLWidget* const box = named("");
    GLWidget* const label = named("_message");
    Theme* const first = GLWidget::themes["messagebox"];

    EXPECT_TRUE(open("Other", 14));

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(box));
    EXPECT_EQ(named("_message"), label);
    EXPECT_EQ(seen(*label).text, "Hi");
    EXPECT_EQ(named("_yes"), nullptr);
    EXPECT_NE(GLWidget::themes["messagebox"], first);
    EXPECT_EQ(seen(*box).theme, first) << "the open box keeps its own";
}

TEST_F(MessageBox, ReadsTheThemeOnEveryCall)
{
    const CapturedErrors errors;
    GLWidget::messageBox("Hi", 1);
    const std::string once = errors.text();
    GLWidget::messageBox("Hi", 1);

    EXPECT_EQ(once.substr(0, 31), "reading theme messagebox.theme\n");
    EXPECT_EQ(errors.text(), once + once);
}

TEST_F(MessageBox, ClearsAResultThatNobodyTookAndSetsTheFontsScale)
{
    GLWidget::messageResult = 4;
    GLWidget::font.setScale(3.0F, 3.0F);

    open("Hi", 1);

    EXPECT_EQ(GLWidget::takeMessageResult(), 0);
    EXPECT_EQ(GLWidget::font.scaleX, 0.125F);
    EXPECT_EQ(GLWidget::font.scaleY, 0.25F);
}

TEST_F(MessageBoxGLTest, IsBuiltWithoutALookWhenItsThemeIsMissing)
{
    std::filesystem::remove(directory.path() / "messagebox.theme");

    EXPECT_TRUE(open("Hi", 1));

    const Vector rect = named("")->getRect();
    EXPECT_EQ(rect.z - rect.x, 0.0F);
    EXPECT_NE(named("_ok"), nullptr);
}

// --- What an answer takes away ----------------------------------------------------------------------

/// A widget that tells when it is destroyed.
class Mortal : public Seen<Frame>
{
public:
    Mortal(const std::string& newName, GLWidget* newParent, Theme* newTheme)
        : Seen(newName, newParent, Vector(), newTheme, false)
    {}
    ~Mortal() override { died.push_back(name); }

    static inline std::vector<std::string> died;
};

/// A box that a host has put together, since what it is made of counts by name alone, and a
/// bystander of each kind. What is not destroyed by the GUI, the fixture destroys.
class MessageBoxTeardown : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        Mortal::died.clear();
    }

    void TearDown() override
    {
        GLWidget::widgets.clear();
        const std::vector<std::string> dead = Mortal::died;
        for (const auto& [name, widget] : all) {
            if (std::find(dead.begin(), dead.end(), name) == dead.end())
                delete widget;
        }
        GuiTest::TearDown();
    }

    Mortal& add(const std::string& name, Mortal* parent)
    {
        auto* const widget = new Mortal(name, parent, &theme);
        all.emplace_back(name, widget);
        if (parent != nullptr)
            parent->children.push_back(widget);
        return *widget;
    }

    static std::vector<std::string> nullEntries()
    {
        std::vector<std::string> names;
        for (const auto& [name, widget] : GLWidget::widgets) {
            if (widget == nullptr)
                names.push_back(name);
        }
        return names;
    }

    std::vector<std::pair<std::string, Mortal*>> all;
};

TEST_F(MessageBoxTeardown, DestroysTheWindowAndWhatHoldsTheNamesOfItsButtons)
{
    Mortal& box = add("__msgbox", nullptr);
    Mortal& label = add("__msgbox_message", &box);
    Mortal& frame = add("__msgbox_frm", &box);
    Mortal& yes = add("__msgbox_yes", &frame);
    add("__msgbox_no", &frame);
    Mortal& other = add("other", nullptr);
    GLWidget::topLevel = {&other, &box};
    yes.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox", "__msgbox_yes", "__msgbox_no"));
    EXPECT_THAT(nullEntries(), ElementsAre("__msgbox", "__msgbox_cancel", "__msgbox_msg",
                                           "__msgbox_no", "__msgbox_ok", "__msgbox_yes"));
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&other));
    EXPECT_EQ(label.parent, nullptr);
    EXPECT_EQ(frame.parent, nullptr);
    EXPECT_THAT(frame.children, IsEmpty());
}

TEST_F(MessageBoxTeardown, LeavesAWindowThatIsNotAtTheTopLevel)
{
    Mortal& host = add("host", nullptr);
    Mortal& box = add("__msgbox", &host);
    Mortal& inside = add("inside", &box);
    Mortal& okay = add("__msgbox_ok", &box);
    GLWidget::topLevel = {&host};
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox_ok"));
    EXPECT_THAT(host.children, ElementsAre(&box));
    EXPECT_THAT(box.children, ElementsAre(&inside));
    EXPECT_EQ(inside.parent, &box);
    EXPECT_EQ(GLWidget::find("__msgbox"), nullptr) << "the entry alone is cleared";
}

TEST_F(MessageBoxTeardown, LeavesAHostsOwnChildrenOfTheBoxTheirChildren)
{
    Mortal& box = add("__msgbox", nullptr);
    Mortal& okay = add("__msgbox_ok", &box);
    Mortal& own = add("own", &box);
    Mortal& below = add("below", &own);
    own.children.push_back(&okay);
    // A child whose name is not its own any more is reached through the tree.
    Mortal& nameless = add("twin", &box);
    Mortal& twin = add("twin", nullptr);
    GLWidget::topLevel = {&box, &twin};
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox", "__msgbox_ok"));
    EXPECT_EQ(own.parent, nullptr);
    EXPECT_THAT(own.children, ElementsAre(&below)) << "without the button";
    EXPECT_EQ(below.parent, &own);
    EXPECT_EQ(nameless.parent, nullptr);
    EXPECT_EQ(GLWidget::find("own"), &own);
}

TEST_F(MessageBoxTeardown, TakesAButtonOfALayoutsOwnOutOfTheTopLevel)
{
    Mortal& okay = add("__msgbox_ok", nullptr);
    Mortal& other = add("other", nullptr);
    GLWidget::widgets["alias"] = &okay;
    GLWidget::topLevel = {&okay, &other};
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox_ok"));
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&other));
    EXPECT_EQ(GLWidget::find("alias"), nullptr);
    EXPECT_EQ(GLWidget::messageResult, 1);
    GLWidget::updateAll(1);
}

TEST_F(MessageBoxTeardown, TakesAButtonOutOfTheTabsThatHoldIt)
{
    auto& pages = make<TabWindow>("pages", nullptr, Vector());
    pages.addTab(0, "A");
    pages.addTab(1, "B");
    auto& label = make<Label>("l", &pages, Vector(), std::string("ab"));
    Mortal& okay = add("__msgbox_ok", nullptr);
    pages.addToTab(1, &okay);
    pages.addToTab(1, &label);
    pages.fitChildren();
    GLWidget::topLevel = {&pages};
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox_ok"));
    EXPECT_THAT(pages.tabs[1].widgets, ElementsAre(&label));
    EXPECT_THAT(pages.tabs[0].widgets, IsEmpty());
}

TEST_F(MessageBoxTeardown, LeavesATabWithoutTheButtonThatAHostGaveANameOfTheBox)
{
    auto& pages = make<TabWindow>("pages", nullptr, Vector());
    pages.addTab(0, "A");
    pages.addTab(1, "B");
    Button* const other = pages.tabs[0].button;
    GLWidget::widgets["__msgbox_yes"] = pages.tabs[1].button;
    GLWidget::topLevel = {&pages};
    seen(*pages.tabs[1].button).clicked = true;

    GLWidget::updateAll(1);

    EXPECT_EQ(pages.tabs[0].button, other);
    EXPECT_EQ(pages.tabs[1].button, nullptr);
    EXPECT_EQ(GLWidget::find("__pagestab1B"), nullptr);
}

TEST_F(MessageBoxTeardown, DestroysAWidgetThatHoldsTwoOfTheNamesOnce)
{
    Mortal& okay = add("__msgbox_ok", nullptr);
    GLWidget::widgets["__msgbox_cancel"] = &okay;
    GLWidget::widgets["__msgbox"] = &okay;
    GLWidget::topLevel = {&okay, &okay};
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox_ok"));
    EXPECT_THAT(GLWidget::topLevel, IsEmpty());
}

TEST_F(MessageBoxTeardown, DestroysWhatHoldsTheNameThatNothingOfTheBoxHas)
{
    Mortal& okay = add("__msgbox_ok", nullptr);
    add("__msgbox_msg", nullptr);
    okay.clicked = true;

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, ElementsAre("__msgbox_ok", "__msgbox_msg"));
}

TEST_F(MessageBoxTeardown, WaitsForAClick)
{
    Mortal& box = add("__msgbox", nullptr);
    Mortal& okay = add("__msgbox_ok", &box);
    GLWidget::topLevel = {&box};

    GLWidget::updateAll(1);

    EXPECT_THAT(Mortal::died, IsEmpty());
    EXPECT_EQ(okay.parent, &box);
    EXPECT_THAT(nullEntries(), ElementsAre("__msgbox_cancel", "__msgbox_no", "__msgbox_yes"));
}
} // namespace
} // namespace tamor::test
