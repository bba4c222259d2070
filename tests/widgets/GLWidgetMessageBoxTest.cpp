#include "gui/GLWidget.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/widgets/WidgetTest.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"

#include <gmock/gmock.h>

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

using MessageBox = MessageBoxOf<WidgetTest>;
using MessageBoxGLTest = MessageBoxOf<WidgetGLTest>;

TEST_F(MessageBox, HasATextAndAnOkayButtonInTheMiddleOfTheWindow)
{
    EXPECT_TRUE(open("Hi", 1));

    GLWidget& box = *named("");
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&box));
    EXPECT_EQ(box.typeName(), "GLWindow");
    EXPECT_EQ(Fields::textOf(box), "Message box");
    EXPECT_THAT(Fields::namesOfChildren(box), ElementsAre("__msgbox_message", "__msgbox_ok"));
    EXPECT_EQ(Fields::textOf(*named("_message")), "Hi");
    EXPECT_EQ(named("_message")->typeName(), "Label");
    EXPECT_EQ(Fields::textOf(*named("_ok")), "OK");
    // As wide as its title, 11/16 and 2/8; as high as the label's top at 0.575, 6 margins of 1/16
    // and the strip of 0.5.
    const Vector rect = box.getRect();
    EXPECT_FLOAT_EQ(rect.x, -0.46875F);
    EXPECT_FLOAT_EQ(rect.y, -0.725F);
    EXPECT_FLOAT_EQ(rect.z, 0.46875F);
    EXPECT_FLOAT_EQ(rect.w, 0.725F);
    // (0.9375 - 0.375) / 2 - 0.25 / 2.
    EXPECT_EQ(Fields::positionOf(*named("_ok")).x, 0.15625F);
    EXPECT_EQ(Fields::positionOf(*named("_ok")).y, 0.0F);
    EXPECT_EQ(Fields::positionOf(*named("_message")).x, 0.15625F);
    EXPECT_EQ(Fields::positionOf(*named("_message")).y, 0.2F);
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

        EXPECT_THAT(Fields::namesOfChildren(*named("")),
                    ElementsAre("__msgbox_message", "__msgbox_frm"));
        GLWidget& frame = *named("_frm");
        EXPECT_EQ(frame.typeName(), "Frame");
        EXPECT_EQ(Fields::namesOfChildren(frame), row.names) << row.flags;
        for (std::size_t i = 0; i < row.names.size(); ++i) {
            GLWidget& button = *GLWidget::find(row.names[i]);
            EXPECT_EQ(Fields::textOf(button), row.captions[i]);
            EXPECT_EQ(Fields::positionOf(button).x, places[i]);
            EXPECT_EQ(Fields::positionOf(button).y, 0.0F);
            EXPECT_EQ(Fields::parentOf(button), &frame);
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
    EXPECT_FLOAT_EQ(Fields::positionOf(*named("_frm")).x, 0.0F);
    EXPECT_FLOAT_EQ(Fields::positionOf(*named("_message")).x, 0.4125F);
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
    EXPECT_EQ(Fields::textOf(*label), "Hi");
    EXPECT_THAT(Fields::childrenOf(*frame), IsEmpty()) << "its buttons are deleted";
    EXPECT_EQ(Fields::parentOf(*frame), nullptr) << "and so is its window";
    EXPECT_EQ(Fields::parentOf(*label), nullptr);

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
    EXPECT_EQ(Fields::textOf(*label), "Hi");
    EXPECT_EQ(named("_yes"), nullptr);
    EXPECT_NE(GLWidget::themes["messagebox"], first);
    EXPECT_EQ(Fields::themeOf(*box), first) << "the open box keeps its own";
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
} // namespace
} // namespace tamor::test
