#include "widgets/TabWindow.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Button.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"
#include "widgets/Textbox.h"

#include <gmock/gmock.h>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

using TabWindowBuild = GuiTest;
using TabWindowFit = GuiTest;

// A tab's button is a 16th a character wide and an 8th more; between two is an 8th.

/// What a test builds most often: two tabs, "First" and "Second", with a label each.
template <class Base>
class TwoTabs : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        window = &this->template make<TabWindow>("pages", nullptr, Vector(1.0F, 2.0F));
        window->addTab(0, "First");
        window->addTab(1, "Second");
        one = &this->template make<Label>("one", window, Vector(), std::string("ab"));
        two = &this->template make<Label>("two", window, Vector(0.0F, 1.0F), std::string("ab"));
        window->addToTab(0, one);
        window->addToTab(1, two);
        window->fitChildren();
    }

    /// Presses or releases the left button on the button of a tab.
    void onButton(std::size_t tab, bool left)
    {
        const Vector rect = window->tabs[tab].button->getRect();
        point(*window, (rect.x + rect.z) / 2.0F, (rect.y + rect.w) / 2.0F, left);
    }

    Seen<TabWindow>* window = nullptr;
    Seen<Label>* one = nullptr;
    Seen<Label>* two = nullptr;
};

using TabWindowSwitch = TwoTabs<GuiTest>;
using TabWindowDrawingGLTest = TwoTabs<GuiGLTest>;

TEST_F(TabWindowBuild, BeginsWithoutTabsTitleAndDragging)
{
    const auto& window = make<TabWindow>("pages", nullptr, Vector());

    EXPECT_EQ(window.typeName(), "TabWindow");
    EXPECT_THAT(window.tabs, IsEmpty());
    EXPECT_EQ(window.currentTab, 0);
    EXPECT_EQ(window.text, "");
    EXPECT_FALSE(window.draggable);
    EXPECT_FALSE(window.isExclusive());
    const Tab tab;
    EXPECT_EQ(tab.title, "");
    EXPECT_THAT(tab.widgets, IsEmpty());
    EXPECT_EQ(tab.button, nullptr);
}

TEST_F(TabWindowBuild, PutsAButtonForEachTabInARow)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector(1.0F, 2.0F));

    EXPECT_TRUE(window.addTab(0, "First"));
    EXPECT_TRUE(window.addTab(1, "Second"));

    ASSERT_EQ(window.tabs.size(), 2U);
    EXPECT_EQ(window.tabs[1].title, "Second");
    EXPECT_EQ(GLWidget::find("__pagestab0First"), window.tabs[0].button);
    EXPECT_EQ(GLWidget::find("__pagestab1Second"), window.tabs[1].button);
    EXPECT_EQ(seen(*window.tabs[1].button).text, "Second");
    EXPECT_EQ(seen(*window.tabs[1].button).parent, &window);
    EXPECT_EQ(seen(*window.tabs[0].button).position.x, 0.0F);
    EXPECT_EQ(seen(*window.tabs[1].button).position.x, 0.5625F);
    EXPECT_EQ(seen(*window.tabs[1].button).position.y, 0.0F);
    EXPECT_THAT(window.children, IsEmpty());
}

TEST_F(TabWindowBuild, GivesTabsThatNobodyNamedAButtonToo)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());

    window.addTab(2, "Third");

    ASSERT_EQ(window.tabs.size(), 3U);
    EXPECT_EQ(window.tabs[0].title, "");
    EXPECT_EQ(GLWidget::find("__pagestab0"), window.tabs[0].button);
    const Vector empty = window.tabs[0].button->getRect();
    EXPECT_EQ(empty.z - empty.x, 0.125F) << "a font width";
    EXPECT_EQ(seen(*window.tabs[2].button).position.x, 0.5F);
}

TEST_F(TabWindowBuild, EmptiesATabThatIsNamedAgainAndRebuildsTheRow)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.addTab(0, "A");
    window.addTab(1, "B");
    window.addToTab(0, &label);
    window.addToTab(1, &label);

    window.addTab(0, "Longer");

    EXPECT_EQ(window.tabs.size(), 2U);
    EXPECT_THAT(window.tabs[0].widgets, IsEmpty());
    EXPECT_THAT(window.tabs[1].widgets, ElementsAre(&label));
    EXPECT_EQ(GLWidget::find("__pagestab0Longer"), window.tabs[0].button);
    EXPECT_EQ(GLWidget::find("__pagestab0A"), nullptr) << "that button is deleted";
    EXPECT_EQ(seen(*window.tabs[1].button).position.x, 0.625F);
    EXPECT_EQ(window.children.size(), 2U) << "the tree is not told";
}

TEST_F(TabWindowBuild, ReadsTheButtonsThemeOnceForAllWindows)
{
    const TemporaryDirectory directory;
    directory.write(
        "tabwin_button.theme",
        "1 1 1\n1 1 1\n1 1 1\n0 0 0\n1\n1\n2\n0\n0.1\n0\n1 1\n1 1\n0 0 0\n1\nNULL\n1\n");
    GLWidget::themes.erase("tabwin_button.theme");
    const CapturedErrors errors;
    auto& first = make<TabWindow>("a", nullptr, Vector());
    auto& second = make<TabWindow>("b", nullptr, Vector());
    EXPECT_EQ(errors.text(), "");

    first.addTab(0, "A");
    const std::string once = errors.text();
    first.addTab(1, "B");
    second.addTab(0, "C");

    EXPECT_EQ(once.substr(0, 34), "reading theme tabwin_button.theme\n");
    EXPECT_EQ(errors.text(), once);
    EXPECT_EQ(seen(*second.tabs[0].button).theme, GLWidget::themes["tabwin_button.theme"]);
}

TEST_F(TabWindowBuild, CollectsTheWidgetsOfAllTabs)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& first = make<Label>("a", &window, Vector(), std::string("ab"));
    auto& second = make<Label>("b", &window, Vector(), std::string("ab"));
    window.addTab(0, "A");
    window.addTab(1, "B");

    EXPECT_TRUE(window.addToTab(1, &first));
    EXPECT_TRUE(window.addToTab(0, &second));

    EXPECT_THAT(window.children, ElementsAre(&first, &second));
    EXPECT_THAT(window.tabs[0].widgets, ElementsAre(&second));
    EXPECT_THAT(window.tabs[1].widgets, ElementsAre(&first));
}

TEST_F(TabWindowBuild, CallsATabThatNobodyNamedUnnamedAndLeavesItsButton)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.addTab(1, "B");

    window.addToTab(0, &label);

    EXPECT_EQ(window.tabs[0].title, "unnamed");
    EXPECT_EQ(seen(*window.tabs[0].button).text, "");

    window.addToTab(1, &label);
    EXPECT_EQ(window.tabs[1].title, "B") << "a name that was given stays";
}

TEST_F(TabWindowBuild, IsAsWideAsTheRowOfButtons)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.addTab(0, "First");
    window.addTab(1, "Second");
    window.dimensions = Vector(0.0F, 4.0F);

    window.addToTab(0, &label);

    // 4 * 0.125, and 0.4375 and 0.5 with an 8th each.
    EXPECT_EQ(window.dimensions.x, 1.6875F);
}

TEST_F(TabWindowBuild, StaysInsideItsStorageWhateverItIsAsked)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));

    EXPECT_TRUE(window.addTab(-1, "minus"));
    EXPECT_TRUE(window.addToTab(-1, &label));
    EXPECT_TRUE(window.fitChildren());
    EXPECT_THAT(window.tabs, IsEmpty());

    EXPECT_TRUE(window.addToTab(1, &label));
    EXPECT_EQ(window.tabs[1].button, nullptr);
    EXPECT_TRUE(window.fitChildren());
    point(window, 0.1F, 0.1F, true);
    window.update(1);
    window.move(Vector(1.0F, 1.0F));
    EXPECT_EQ(window.currentTab, 0);
}

TEST_F(TabWindowBuild, RefusesMoreTabsThanMemoryHolds)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& label = make<Label>("l", &window, Vector(), std::string("ab"));
    window.addTab(0, "A");
    Button* const button = window.tabs[0].button;
    const CapturedErrors errors;

    EXPECT_FALSE(window.addTab(2000000000, "far"));
    EXPECT_FALSE(window.addTab(2147483647, "farther"));
    EXPECT_FALSE(window.addToTab(2000000000, &label));

    EXPECT_EQ(errors.text(), "Error adding tab 2000000000 to 'pages': too many for the memory\n"
                             "Error adding tab 2147483647 to 'pages': too many for the memory\n"
                             "Error adding tab 2000000000 to 'pages': too many for the memory\n");
    ASSERT_EQ(window.tabs.size(), 1U);
    EXPECT_EQ(window.tabs[0].button, button);
    EXPECT_THAT(window.children, IsEmpty());
}

TEST_F(TabWindowBuild, ClearsTheNameOfAButtonThatItDeletesAndNoOther)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    window.addTab(0, "A");
    window.addTab(1, "B");
    // Another widget has taken the second button's name over.
    auto& other = make<Label>("__pagestab1B", nullptr, Vector(), std::string("ab"));

    window.addTab(0, "C");
    window.tabs[1].title = "D";
    window.addTab(0, "C");

    EXPECT_EQ(GLWidget::find("__pagestab0A"), nullptr);
    EXPECT_EQ(GLWidget::find("__pagestab0C"), window.tabs[0].button);
    EXPECT_EQ(GLWidget::find("__pagestab1D"), window.tabs[1].button);
    EXPECT_EQ(GLWidget::find("__pagestab1B"), nullptr) << "the button took its name back first";
    EXPECT_EQ(other.text, "ab");
}

TEST_F(TabWindowBuild, LeavesAButtonInMemoryThatIsAParent)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    window.addTab(0, "First");
    const std::unique_ptr<Button> button(window.tabs[0].button);
    auto& label = make<Label>("label", button.get(), Vector(), std::string("ab"));

    window.addTab(1, "Second");

    EXPECT_NE(window.tabs[0].button, button.get());
    EXPECT_EQ(GLWidget::find("__pagestab0First"), window.tabs[0].button);
    EXPECT_EQ(label.parent, button.get());
    EXPECT_EQ(button->typeName(), "Button");
}

TEST_F(TabWindowBuild, LeavesANameThatAnotherWidgetHasTakenOver)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    window.addTab(0, "A");
    auto& other = make<Label>("__pagestab0A", nullptr, Vector(), std::string("ab"));

    window.addTab(0, "B");

    EXPECT_EQ(GLWidget::find("__pagestab0A"), &other);
}

TEST_F(TabWindowBuild, MakesOneGroupOfTheOptionsOfAllTabs)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector());
    auto& first = make<Optionbox>("a", &window, Vector(), std::string("a"));
    auto& second = make<Optionbox>("b", &window, Vector(), std::string("b"));
    window.addTab(0, "A");
    window.addTab(1, "B");

    window.addToTab(0, &first);
    window.addToTab(1, &second);

    EXPECT_TRUE(first.active);
    EXPECT_FALSE(second.active) << "the second tab begins without a tick";

    window.fitChildren();
    window.children = window.tabs[1].widgets;
    window.onPointer(1.0F, 1.0F);
    second.onPointer(0.1F, 0.1F);
    window.onMouseButtons(true, false, false);
    EXPECT_TRUE(second.active);
    EXPECT_TRUE(first.active) << "and now each tab is a group of its own";
}

TEST_F(TabWindowFit, TakesTheHeightOfTheTallestTabAndPlacesTheButtons)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector(1.0F, 2.0F));
    auto& low = make<Label>("low", &window, Vector(), std::string("ab"));
    auto& high = make<Label>("high", &window, Vector(0.0F, 2.75F), std::string("ab"));
    window.addTab(0, "First");
    window.addTab(1, "Second");
    window.addToTab(0, &low);
    window.addToTab(1, &high);

    EXPECT_TRUE(window.fitChildren());

    // The label's top at 3.125, 6 margins and two font heights.
    EXPECT_EQ(window.dimensions.y, 4.0F);
    EXPECT_THAT(window.children, ElementsAre(&low)) << "the first tab is shown";
    // (1, 2) and (4 * 0.125, 4 - 1.75 * 0.25).
    EXPECT_EQ(seen(*window.tabs[0].button).position.x, 1.5F);
    EXPECT_EQ(seen(*window.tabs[0].button).position.y, 5.5625F);
    EXPECT_EQ(seen(*window.tabs[1].button).position.x, 2.0625F);
    EXPECT_EQ(window.dimensions.x, 1.6875F) << "0.5 and the row of 1.1875";
}

TEST_F(TabWindowFit, ShowsTheFirstTabWhicheverWasChosenBefore)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector(1.0F, 2.0F));
    auto& one = make<Label>("one", &window, Vector(), std::string("ab"));
    auto& two = make<Label>("two", &window, Vector(), std::string("ab"));
    window.addTab(0, "First");
    window.addTab(1, "Second");
    window.addToTab(0, &one);
    window.addToTab(1, &two);
    window.currentTab = 1;

    window.fitChildren();

    EXPECT_THAT(window.children, ElementsAre(&one));
    EXPECT_EQ(window.currentTab, 1) << "the index is not told";
}

TEST_F(TabWindowFit, MovesTheButtonsAgainWhenCalledAgain)
{
    auto& window = make<TabWindow>("pages", nullptr, Vector(1.0F, 2.0F));
    window.addTab(0, "First");
    window.dimensions = Vector(4.0F, 4.0F);
    window.fitChildren();
    const float once = seen(*window.tabs[0].button).position.x;
    EXPECT_EQ(once, 1.5F);

    window.fitChildren();

    EXPECT_EQ(seen(*window.tabs[0].button).position.x, 3.0F);
}

TEST_F(TabWindowSwitch, ShowsTheTabWhoseButtonIsPressed)
{
    onButton(1, true);

    EXPECT_EQ(window->currentTab, 1);
    EXPECT_THAT(window->children, ElementsAre(two));

    onButton(1, false);
    EXPECT_EQ(window->currentTab, 1);
    onButton(0, true);
    EXPECT_EQ(window->currentTab, 0);
    EXPECT_THAT(window->children, ElementsAre(one));
}

TEST_F(TabWindowSwitch, TakesTheLaterOfTwoHeldButtons)
{
    onButton(0, true);
    window->tabs[1].button->setActive();

    window->onMouseButtons(true, false, false);

    EXPECT_EQ(window->currentTab, 1);
}

TEST_F(TabWindowSwitch, TellsNothingToTheWidgetsThatLeave)
{
    const CapturedErrors errors;
    auto& option = make<Optionbox>("o", window, Vector(), std::string("a"));
    auto& text = make<Textbox>("t", window, Vector(), 4, 1);
    window->tabs[0].widgets = {&option, &text};
    window->children = window->tabs[0].widgets;
    option.active = true;
    text.hover = true;

    onButton(1, true);

    EXPECT_TRUE(option.active);
    EXPECT_TRUE(text.hover);
    EXPECT_EQ(option.fade, 0.0F);
}

TEST_F(TabWindowSwitch, GivesInputAndTimeToTheCurrentTabAlone)
{
    EXPECT_TRUE(window->onPointer(1.5F, 2.5F));

    EXPECT_EQ(one->mouse.x, 0.3125F);
    EXPECT_EQ(two->mouse.x, 0.0F);

    EXPECT_TRUE(window->update(2));
    one->hover = true;
    two->hover = true;
    window->update(2);
    EXPECT_EQ(one->glow, 0.5F);
    EXPECT_EQ(two->glow, 0.0F);
}

TEST_F(TabWindowSwitch, GivesTheButtonsThePointerAsItIsAndTime)
{
    Button& button = *window->tabs[1].button;
    const Vector rect = button.getRect();

    window->onPointer(rect.x + 0.1F, rect.y + 0.1F);
    EXPECT_TRUE(button.isHovered());

    EXPECT_EQ(callsOfRender(button).find("glColor3f(0.1875, 0.5625, 0.75)"), std::string::npos);
    window->update(4);
    EXPECT_NE(callsOfRender(button).find("glColor3f(0.1875, 0.5625, 0.75)"), std::string::npos);
}

TEST_F(TabWindowSwitch, MovesItsButtonsAlong)
{
    const float before = seen(*window->tabs[1].button).position.x;

    const Vector moved = window->move(Vector(0.5F, 0.25F));

    EXPECT_EQ(moved.x, 1.5F);
    EXPECT_EQ(moved.y, 2.25F);
    EXPECT_EQ(seen(*window->tabs[1].button).position.x, before + 0.5F);
}

TEST_F(TabWindowSwitch, CannotBeDragged)
{
    window->onPointer(window->position.x + 0.01F, window->getRect().w - 0.01F);
    EXPECT_FALSE(window->hover);

    window->onMouseButtons(true, false, false);

    EXPECT_FALSE(window->dragging);
}

TEST_F(TabWindowSwitch, PassesDeselectionToTheCurrentTab)
{
    auto& option = make<Optionbox>("o", window, Vector(), std::string("a"));
    window->children = {&option};
    option.active = true;

    EXPECT_TRUE(window->deselect(nullptr));

    EXPECT_FALSE(option.active);
}

TEST_F(TabWindowDrawingGLTest, MakesTheseCalls)
{
    window->dimensions = Vector(2.0F, 4.0F);
    window->backdrop = 3;
    window->tabs[0].button = nullptr;
    window->currentTab = 1;

    EXPECT_EQ(callsOfRender(*window), R"(
glDisable(GL_DEPTH_TEST)
glDisable(GL_TEXTURE_2D)
glEnable(GL_BLEND)
glPushMatrix()
glTranslatef(2, 4, 0)
glLineWidth(2)
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor4f(0.375, 0.25, 0.125, 0.5)
GL_POLYGON -1,-2[0,0] -1,1.5[0,0.875] -0.5,2[0.125,1] 1,2[1,1] 1,-1.5[1,0.125] 0.5,-2[1,0] -1,-2[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor4f(0.5, 0.25, 0.125, 0.5)
glDisable(GL_TEXTURE_2D)
glEnable(GL_BLEND)
GL_POLYGON -1,-2[0,0] -1,1.5[0,0.875] -0.5,2[0.125,1] 1,2[1,1] 1,-1.5[1,0.125] 0.5,-2[1,0] -1,-2[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor4f(0.5, 0.25, 0.125, 0.5)
glDisable(GL_TEXTURE_2D)
GL_LINES -1,1.5 1,1.5
glPopMatrix()
glPushMatrix()
glColor3f(0.5, 0.25, 1)
glLineWidth(3)
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glTranslatef(2.09375, 4, 0)
glPushMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.1875, 0.5625, 0.75)
GL_POLYGON -0.25,-0.1875[0,0] -0.25,0.117188[0,0.8125] -0.179688,0.1875[0.1875,1] 0.25,0.1875[1,1] 0.25,-0.117188[1,0.1875] 0.179688,-0.1875[1,0] -0.25,-0.1875[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor3f(0.1875, 0.75, 0.375)
glDisable(GL_TEXTURE_2D)
GL_POLYGON -0.25,-0.1875[0,0] -0.25,0.117188[0,0.8125] -0.179688,0.1875[0.1875,1] 0.25,0.1875[1,1] 0.25,-0.117188[1,0.1875] 0.179688,-0.1875[1,0] -0.25,-0.1875[0,0]
glPopMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.125, 0.5, 0.75)
glTranslatef(-0.1875, -0.104167, 0)
print "Second"
glPopMatrix()
glPopMatrix()
glPushMatrix()
glTranslatef(1.1875, 2.1875, 0)
)" + std::string(callsOfChildLabel) + "glPopMatrix()\n");
    EXPECT_EQ(window->backdrop, 0U);
}

TEST_F(TabWindowDrawingGLTest, KeepsTheCurrentTabsButtonLitAndHovered)
{
    callsOfRender(*window);
    EXPECT_TRUE(window->tabs[0].button->isHovered());
    EXPECT_FALSE(window->tabs[1].button->isHovered());

    window->onPointer(-9.0F, -9.0F);
    EXPECT_FALSE(window->tabs[0].button->isHovered());
    const std::string calls = callsOfRender(*window);
    const std::size_t lit = calls.find("glColor3f(0.1875, 0.5625, 0.75)");
    ASSERT_NE(lit, std::string::npos);
    EXPECT_LT(lit, calls.find("print \"First\""));
    EXPECT_EQ(calls.find("glColor3f(0.1875, 0.5625, 0.75)", lit + 1), std::string::npos);
}
} // namespace
} // namespace tamor::test
