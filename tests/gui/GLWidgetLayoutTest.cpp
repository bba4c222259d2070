#include "gui/GLWidget.h"

#include "tests/gui/CommaLocale.h"
#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/TextureRegistry.h"

#include <gmock/gmock.h>

namespace tamor::test
{
namespace
{
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

// No texture and no glow; margin 0.0625, font 0.125 by 0.25, icons of 0.5.
constexpr const char* testTheme =
    "1 1 1\n1 1 1\n1 1 1\n1 1 1\n1\n1\n1\n0.0625\n0.1\n1\n0.125 0.25\n"
    "1 1\n0 0 0\n0.5\nNULL\n0\n";

// Loads layouts in a directory of its own that holds "default.theme". There is no font, so every
// text measures 0.
class LoadLayout : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        clearGui();
        directory.write("default.theme", testTheme);
    }

    // Returns what was printed behind the reading of the default theme.
    std::string load(const std::string& text) const
    {
        directory.write("my.gui", text);
        const CapturedErrors errors;
        EXPECT_TRUE(GLWidget::loadLayout("my.gui"));
        const std::string log = errors.text();
        const std::string themeEnd = "read theme default.theme\n";
        const std::size_t place = log.find(themeEnd);
        return place == std::string::npos ? log : log.substr(place + themeEnd.size());
    }

    static GLWidget& widget(const std::string& name)
    {
        GLWidget* found = GLWidget::find(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    TemporaryDirectory directory;
};

class LoadLayoutGLTest : public GuiGLTest
{
protected:
    TemporaryDirectory directory;
};

// --- The file and its lines ----------------------------------------------------------------------

TEST_F(LoadLayout, MakesNothingButTheDefaultThemeOfAnEmptyFile)
{
    EXPECT_EQ(load(""), "");

    EXPECT_THAT(GLWidget::themes, ElementsAre(Key("default")));
    EXPECT_THAT(GLWidget::widgets, IsEmpty());
    EXPECT_THAT(GLWidget::topLevel, IsEmpty());
}

TEST_F(LoadLayout, ReadsDefaultThemeFirst)
{
    directory.write("my.gui", "");
    const CapturedErrors errors;

    GLWidget::loadLayout("my.gui");

    EXPECT_THAT(errors.text(), testing::StartsWith("reading theme default.theme\n"));
    EXPECT_EQ(GLWidget::themes["default"]->margin, 0.0625F);
}

TEST_F(LoadLayoutGLTest, TakesTheBuiltInValuesWithoutADefaultTheme)
{
    textureRegistry.clear();
    directory.write("my.gui", "");

    EXPECT_TRUE(GLWidget::loadLayout("my.gui"));

    EXPECT_EQ(GLWidget::themes["default"]->margin, 0.005F);
    EXPECT_TRUE(GLWidget::themes["default"]->glowEnabled);
    EXPECT_THAT(textureRegistry, SizeIs(1));
    EXPECT_EQ(textureRegistry[0].key.path, "gui.tga");
}

TEST_F(LoadLayout, ReadsALastLineWithoutALineEnd)
{
    EXPECT_EQ(load("CADD Label a NULL 0 0 first\nCADD Label b NULL 0 0 last"),
              "adding a 'Label' - a\nadding a 'Label' - b\n");

    EXPECT_EQ(seen(widget("b")).text, "last");
}

TEST_F(LoadLayout, MeetsAnEmptyWordBehindTheLastLineEndAndDoesNothing)
{
    EXPECT_EQ(load("CADD Label a NULL 0 0 first\n"), "adding a 'Label' - a\n");

    EXPECT_THAT(GLWidget::topLevel, SizeIs(1));
}

TEST_F(LoadLayout, SkipsCommentsUnknownWordsAndWordsInOtherLetters)
{
    EXPECT_EQ(load("// CADD Label a NULL 0 0 a\n"
                   "//CADD Label b NULL 0 0 b\n"
                   "cadd Label c NULL 0 0 c\n"
                   "CADDY Label d NULL 0 0 d\n"
                   "WIDGET Label e NULL 0 0 e\n"),
              "");

    EXPECT_THAT(GLWidget::widgets, IsEmpty());
}

TEST_F(LoadLayout, SkipsARemarkBehindTheFieldsOfALine)
{
    load("THEM default.theme x // the look\n"
         "CADD Frame a NULL 0 0 1 // a frame\n"
         "CENTRE a // in the middle\n");

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(GLWidget::find("a")));
}

TEST_F(LoadLayout, TakesARemarkBehindATextAsText)
{
    load("CADD Label a NULL 0 0 words // and more\n");

    EXPECT_EQ(seen(widget("a")).text, "words // and more");
}

TEST_F(LoadLayout, ReadsFieldsOverSeveralLines)
{
    load("CADD\nLabel\n\na NULL\n0.5\n0.25 text\n");

    EXPECT_EQ(seen(widget("a")).position.x, 0.5F);
    EXPECT_EQ(seen(widget("a")).position.y, 0.25F);
    EXPECT_EQ(seen(widget("a")).text, "text");
}

TEST_F(LoadLayout, TakesAMissingFieldFromTheNextLine)
{
    EXPECT_EQ(load("CADD Butt a NULL 0 0\nCHLD\nCHLD\n"), "adding a 'Butt' - a\nadding a '' - \n");

    EXPECT_EQ(seen(widget("a")).text, "CHLD");
}

TEST_F(LoadLayout, LosesTheTailOfALongText)
{
    load("CADD Label a NULL 0 0 " + std::string(600, 'x') + "\nCADD Label b NULL 0 0 next\n");

    EXPECT_EQ(seen(widget("a")).text, std::string(510, 'x'));
    EXPECT_EQ(seen(widget("b")).text, "next");
}

TEST_F(LoadLayout, ReadsOnBehindTenThousandSkippedCharacters)
{
    EXPECT_EQ(load("// " + std::string(9999, 'x') + "\nCHLD\n"), "adding a '' - \n");
    EXPECT_EQ(load("// " + std::string(9999, 'x') + "CHLD\n"), "adding a '' - \n");
}

TEST_F(LoadLayout, AddsToWhatIsThereWhenLoadedAgain)
{
    load("CADD Label a NULL 0 0 old\n");
    GLWidget* old = GLWidget::find("a");
    Theme* oldTheme = GLWidget::themes["default"];

    load("CADD Label a NULL 0 0 new\n");

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(old, GLWidget::find("a")));
    EXPECT_EQ(seen(widget("a")).text, "new");
    EXPECT_EQ(seen(*old).text, "old");
    EXPECT_NE(GLWidget::themes["default"], oldTheme);
}

// --- CADD and TADD -------------------------------------------------------------------------------

TEST_F(LoadLayout, BuildsAWidgetOfItsKindAtItsPosition)
{
    EXPECT_EQ(load("CADD Label a NULL -1.25 0.5 one\\ntwo\n"), "adding a 'Label' - a\n");

    GLWidget& label = widget("a");
    EXPECT_EQ(label.typeName(), "Label");
    EXPECT_EQ(seen(label).text, "one\ntwo");
    EXPECT_EQ(seen(label).parent, nullptr);
    EXPECT_EQ(seen(label).theme, GLWidget::themes["default"]);
    EXPECT_EQ(seen(label).position.x, -1.25F);
    EXPECT_EQ(seen(label).position.y, 0.5F);
    EXPECT_EQ(seen(label).position.z, 0.0F);
    EXPECT_EQ(seen(label).position.w, 1.0F);
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(&label));
}

TEST_F(LoadLayout, ReadsAndPrintsInTheCLocaleWhateverTheHostHasSet)
{
    directory.write("tabwin_button.theme", testTheme);
    const CommaLocale commas;

    const std::string log = load("CADD Text a NULL -1.25 0.5 1000 2000\n"
                                 "CADD TWin t NULL 0.5 1234\nNTAB t 1000 title\n");

    EXPECT_EQ(seen(widget("a")).position.x, -1.25F);
    EXPECT_EQ(seen(widget("a")).position.y, 0.5F);
    EXPECT_THAT(log, testing::StartsWith("adding a 'Text' - a\ntextbox 1000 2000\n"
                                         "dim: (0.125, 650, 0, 1)\nadding a 'TWin' - t\n"
                                         "adding tabwindow t 0 (0.5, 1234, 0, 1) 0x"));
    EXPECT_NE(GLWidget::find("__ttab1000title"), nullptr);
}

TEST_F(LoadLayout, BuildsAButtonOfATextWithoutBlanks)
{
    load("CADD Butt a NULL 0 0 Red button\n");

    EXPECT_EQ(seen(widget("a")).text, "Red");
}

TEST_F(LoadLayout, BuildsAButtonOfExactlyTheSizeOfItsPicture)
{
    load("CADD Butt a NULL 0 0 TEX 0.2 0.1\n");

    EXPECT_EQ(seen(widget("a")).text, "");
    EXPECT_EQ(seen(widget("a")).dimensions.x, 0.2F);
    EXPECT_EQ(seen(widget("a")).dimensions.y, 0.1F);
}

TEST_F(LoadLayout, SaysMoreOfAWindow)
{
    EXPECT_EQ(load("CADD Win a NULL 0 0 1 A title\nCADD Win b NULL 0 0 0 Another\n"),
              "adding a 'Win' - a\nadding window a 1\nadding a 'Win' - b\nadding window b 0\n");

    EXPECT_EQ(seen(widget("a")).text, "A title");
}

TEST_F(LoadLayout, BuildsNothingOfAnUnknownKindAndSkipsTheLine)
{
    EXPECT_EQ(load("CADD Dial a NULL 0 0 CHLD\nCADD label b NULL 0 0 text\nCHLD\n"),
              "adding a 'Dial' - a\nadding a 'label' - b\nadding a '' - \n");

    EXPECT_THAT(GLWidget::widgets, IsEmpty());
}

TEST_F(LoadLayout, TakesAnUnknownParentAsNone)
{
    load("CADD Label a nobody 0 0 text\n");

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(GLWidget::find("a")));
    EXPECT_EQ(seen(widget("a")).parent, nullptr);
    EXPECT_EQ(GLWidget::widgets.at("nobody"), nullptr);
}

TEST_F(LoadLayout, AddsALeafToItsParentAtOnce)
{
    load("CADD Frame f NULL 0 0 0\nCADD Label a f 0 0 one\nCADD Label b f 0 0 two\nSOLID\n"
         "CADD Label c f 0 0 three\n");

    EXPECT_THAT(seen(widget("f")).children,
                ElementsAre(GLWidget::find("a"), GLWidget::find("b"), GLWidget::find("c")));
    EXPECT_EQ(seen(widget("a")).parent, GLWidget::find("f"));
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(GLWidget::find("f")));
}

TEST_F(LoadLayout, PutsContainersBehindLeavesInTheOrderOfTheFile)
{
    load("CADD Frame f NULL 0 0 0\n"
         "CADD Frame inner1 f 0 0 0\n"
         "CADD Label leaf1 f 0 0 one\n"
         "CADD Win inner2 f 0 0 0 title\n"
         "CADD Label leaf2 f 0 0 two\n"
         "CADD Label deep inner1 0 0 three\n"
         "SOLID\n");

    EXPECT_THAT(seen(widget("f")).children,
                ElementsAre(GLWidget::find("leaf1"), GLWidget::find("leaf2"),
                            GLWidget::find("inner1"), GLWidget::find("inner2")));
    EXPECT_THAT(seen(widget("inner1")).children, ElementsAre(GLWidget::find("deep")));
}

TEST_F(LoadLayout, GivesANameUsedTwiceToTheLaterWidget)
{
    load("CADD Label a NULL 0 0 one\nCADD Label a NULL 0 0 two\n");

    EXPECT_THAT(GLWidget::topLevel, SizeIs(2));
    EXPECT_EQ(seen(widget("a")).text, "two");
    EXPECT_EQ(seen(*GLWidget::topLevel[0]).text, "one");
}

TEST_F(LoadLayout, MakesATopLevelWidgetOfATabLineWithoutAParent)
{
    EXPECT_EQ(load("TADD 7 NULL Label a 0.5 0.25 text\n"), "adding a 'Label' - a\n");

    EXPECT_THAT(GLWidget::topLevel, ElementsAre(GLWidget::find("a")));
    EXPECT_EQ(seen(widget("a")).position.x, 0.5F);
}

TEST_F(LoadLayout, DropsALeafForATabOfAWidgetWithoutTabs)
{
    load("CADD Frame f NULL 0 0 0\nTADD 0 f Label a 0 0 text\n");

    EXPECT_EQ(seen(widget("a")).parent, GLWidget::find("f"));
    EXPECT_THAT(seen(widget("f")).children, IsEmpty());
    EXPECT_THAT(GLWidget::topLevel, ElementsAre(GLWidget::find("f")));
}

TEST_F(LoadLayout, DropsAContainerForATabOfAWidgetWithoutTabs)
{
    load("CADD Frame f NULL 0 0 0\nTADD 0 f Frame inner 0 0 0\n");

    EXPECT_THAT(seen(widget("f")).children, IsEmpty());
}

TEST_F(LoadLayout, DropsAContainerForAnyTabBelowMinusOne)
{
    load("CADD Frame f NULL 0 0 0\nTADD -2 f Frame inner 0 0 0\n");

    EXPECT_THAT(seen(widget("f")).children, IsEmpty());
}

TEST_F(LoadLayout, AddsAContainerForTabMinusOneToTheParentItself)
{
    load("CADD Frame f NULL 0 0 0\nTADD -1 f Frame inner 0 0 0\nTADD -1 f Label leaf 0 0 text\n");

    EXPECT_THAT(seen(widget("f")).children, ElementsAre(GLWidget::find("inner")));
}

TEST_F(LoadLayout, LogsAnEmptyAddForChldAndSkipsItsLine)
{
    EXPECT_EQ(load("CHLD Label a NULL 0 0 text\n"), "adding a '' - \n");

    EXPECT_THAT(GLWidget::widgets, IsEmpty());
}

// --- SOLID ---------------------------------------------------------------------------------------

TEST_F(LoadLayout, FitsTheTreeAtSolid)
{
    load("CADD Frame f NULL 0 0 0\nCADD Butt a f 0.5 0.25 TEX 1 2\nSOLID\n");

    EXPECT_EQ(seen(widget("f")).dimensions.x, 1.875F);
    EXPECT_EQ(seen(widget("f")).dimensions.y, 2.625F);
}

TEST_F(LoadLayout, AttachesAndFitsAtTheEndWithoutSolid)
{
    load("CADD Frame f NULL 0 0 0\nCADD Frame inner f 0 0 0\nCADD Butt a inner 0 0 TEX 1 2\n");

    EXPECT_THAT(seen(widget("f")).children, ElementsAre(GLWidget::find("inner")));
    EXPECT_EQ(seen(widget("inner")).dimensions.x, 1.375F);
    EXPECT_EQ(seen(widget("f")).dimensions.x, 1.75F);
}

TEST_F(LoadLayout, AttachesOnceWithOneSolid)
{
    load("CADD Frame f NULL 0 0 0\nCADD Frame inner f 0 0 0\nSOLID\nCENTRE f\n");

    EXPECT_THAT(seen(widget("f")).children, SizeIs(1));
}

TEST_F(LoadLayout, AttachesAgainAtASecondSolid)
{
    load("CADD Frame f NULL 0 0 0\nCADD Frame inner f 0 0 0\nSOLID\nSOLID\n");

    EXPECT_THAT(seen(widget("f")).children,
                ElementsAre(GLWidget::find("inner"), GLWidget::find("inner")));
}

TEST_F(LoadLayout, LeavesAContainerBehindTheOnlySolidUnattached)
{
    load("CADD Frame f NULL 0 0 0\nSOLID\nCADD Frame inner f 0 0 0\n");

    EXPECT_THAT(seen(widget("f")).children, IsEmpty());
    EXPECT_EQ(seen(widget("inner")).parent, GLWidget::find("f"));
}

// --- Centring ------------------------------------------------------------------------------------

struct CentreCase
{
    const char* word;
    // Where a top-level widget of 1 by 2 that stood at (0.25, 0.5) comes to stand.
    float x;
    float y;
    // Where a child of 1 by 2 that stood at (0, 0) comes to stand in a frame of 3 by 4.
    float childX;
    float childY;
};

class LoadLayoutCentres : public LoadLayout, public testing::WithParamInterface<CentreCase>
{};

TEST_P(LoadLayoutCentres, ATopLevelWidgetOnItsPosition)
{
    load(std::string("CADD Butt a NULL 0.25 0.5 TEX 1 2\n") + GetParam().word + " a\n");

    EXPECT_EQ(seen(widget("a")).position.x, GetParam().x);
    EXPECT_EQ(seen(widget("a")).position.y, GetParam().y);
}

TEST_P(LoadLayoutCentres, AChildInItsParent)
{
    // The frame is as large as its second child and 6 margins of 0.0625.
    load(std::string("CADD Frame f NULL 5 5 0\nCADD Butt a f 0 0 TEX 1 2\n"
                     "CADD Butt large f 0 0 TEX 2.625 3.625\nSOLID\n") +
         GetParam().word + " a\n");

    EXPECT_EQ(seen(widget("a")).position.x, GetParam().childX);
    EXPECT_EQ(seen(widget("a")).position.y, GetParam().childY);
}

TEST_P(LoadLayoutCentres, NothingOfAnUnknownName)
{
    EXPECT_EQ(load(std::string(GetParam().word) + " nobody\nCHLD\n"), "adding a '' - \n");
}

INSTANTIATE_TEST_SUITE_P(Words, LoadLayoutCentres,
                         testing::Values(CentreCase{"CENTREX", -0.25F, 0.5F, 0.8125F, 0.0F},
                                         CentreCase{"CENTREY", 0.25F, -0.5F, 0.0F, 0.5625F},
                                         CentreCase{"CENTRE", -0.25F, -0.5F, 0.8125F, 0.5625F}),
                         [](const auto& test) { return std::string(test.param.word); });

// --- THEM, CONF, TEXT, NTAB ----------------------------------------------------------------------

TEST_F(LoadLayout, GivesTheSelectedThemeToTheWidgetsBehindIt)
{
    directory.write("other.theme", testTheme);

    load("CADD Label a NULL 0 0 text\nTHEM other.theme x\nCADD Label b NULL 0 0 text\n");

    EXPECT_EQ(seen(widget("a")).theme, GLWidget::themes["default"]);
    EXPECT_EQ(seen(widget("b")).theme, GLWidget::themes["other.theme"]);
    EXPECT_EQ(seen(widget("b")).theme->margin, 0.0625F);
}

TEST_F(LoadLayout, ReadsAThemeOnceUnderTheNameOfItsFile)
{
    const std::string log = load("THEM default.theme x\nTHEM default.theme x\n");

    EXPECT_THAT(GLWidget::themes, ElementsAre(Key("default"), Key("default.theme")));
    EXPECT_NE(GLWidget::themes["default"], GLWidget::themes["default.theme"]);
    EXPECT_EQ(log.find("reading theme default.theme\n"), 0U);
    EXPECT_EQ(log.rfind("reading theme default.theme\n"), 0U);
}

TEST_F(LoadLayout, GoesBackToAThemeThatWasReadBefore)
{
    directory.write("other.theme", testTheme);

    load("THEM default.theme x\nTHEM other.theme x\nTHEM default.theme x\n"
         "CADD Label a NULL 0 0 text\n");

    EXPECT_EQ(seen(widget("a")).theme, GLWidget::themes["default.theme"]);
}

TEST_F(LoadLayout, TakesTheSecondWordOfAThemeFromTheNextLineWhereItIsMissing)
{
    EXPECT_THAT(load("THEM default.theme\nCHLD\nCHLD\n"),
                EndsWith("\nread theme default.theme\nadding a '' - \n"));
}

TEST_F(LoadLayoutGLTest, KeepsAThemeOfAMissingFileAsItWasMade)
{
    directory.write("default.theme", testTheme);
    directory.write("my.gui", "THEM missing.theme x\nCADD Label a NULL 0 0 text\n");
    const CapturedErrors errors;

    EXPECT_TRUE(GLWidget::loadLayout("my.gui"));

    EXPECT_THAT(errors.text(), HasSubstr("reading theme missing.theme\n(0, 0, 0, 1)\n"));
    EXPECT_EQ(GLWidget::themes["missing.theme"]->margin, 0.0F);
    EXPECT_EQ(seen(*GLWidget::find("a")).theme, GLWidget::themes["missing.theme"]);
}

TEST_F(LoadLayout, ReadsTheConfigurationThatConfNames)
{
    directory.write("gui.conf", "missing.ttf\nx\n0 0 0 0\n0 0 0 0\n0 0 0 0\n0 0 0 0\n"
                                "0.125 0.25 0.5 0.75\n0.5\n");

    EXPECT_EQ(load("CONF gui.conf\n"), "Loading missing.ttf\nError loading the font\nLoaded.\n");

    EXPECT_EQ(GLWidget::sliderKnob.z, 0.5F);
    EXPECT_EQ(GLWidget::glowRate, 0.5F);
}

TEST_F(LoadLayout, MeasuresAndGlowsNothingWithoutAConfiguration)
{
    load("CADD Label a NULL 0 0 some text\n");

    EXPECT_EQ(seen(widget("a")).dimensions.x, 0.125F) << "one font width and no text";
    EXPECT_EQ(GLWidget::glowRate, 0.0F);
}

TEST_F(LoadLayout, AddsTextLinesToAWidget)
{
    load("CADD Frame f NULL 0 0 0\nTEXT f one two\nTEXT f three\\nfour\n");

    EXPECT_THAT(seen(widget("f")).lines, ElementsAre("one two", "three\nfour"));
}

TEST_F(LoadLayout, SkipsTextLinesForNoWidget)
{
    EXPECT_EQ(load("TEXT NULL some text\nTEXT NULL\nCHLD\n"), "adding a '' - \n");

    EXPECT_THAT(GLWidget::widgets, IsEmpty());
}

TEST_F(LoadLayout, IsHarmlessWithTextAndTabsForAnUnknownWidget)
{
    EXPECT_EQ(load("TEXT nobody some text\nNTAB nobody 0 title\nNTAB NULL 0 title\nCHLD\n"),
              "adding a '' - \n");
}

TEST_F(LoadLayout, IgnoresATabForAWidgetWithoutTabs)
{
    EXPECT_EQ(load("CADD Frame f NULL 0 0 0\nNTAB f 0 title\nCHLD\n"),
              "adding a 'Frame' - f\nadding a '' - \n");
}

// --- From pixels to a widget of a layout ---------------------------------------------------------

using RoutingThroughALayout = LoadLayout;

// Pixels of a window of 800 by 600, where 300 are one unit.
void press(float pixelX, float pixelY)
{
    GLWidget::viewport = {0, 0, 800, 600};
    GLWidget::mouseMoved({pixelX, pixelY});
    GLWidget::mouseButtons(true, false, false);
}

// A button of 0.1 by 0.1 in a frame at (0.05, 0.1) in a window at (0.1, 0.2). Each of the two adds
// 3 margins of 0.0625, so the button reaches from (0.525, 0.675) to (0.625, 0.775).
constexpr const char* nestedButton = "CADD Win w NULL 0.1 0.2 1 title\n"
                                     "CADD Frame f w 0.05 0.1 1\n"
                                     "CADD Butt b f 0 0 TEX 0.1 0.1\n";

TEST_F(RoutingThroughALayout, FindsAButtonBelowTwoContainersAndTheirMargins)
{
    load(nestedButton);

    press(400.0F + 300.0F * 0.53F, 300.0F - 300.0F * 0.68F);

    EXPECT_TRUE(widget("b").wasClicked());
}

TEST_F(RoutingThroughALayout, MissesAButtonByALittle)
{
    load(nestedButton);

    press(400.0F + 300.0F * 0.52F, 300.0F - 300.0F * 0.68F);
    EXPECT_FALSE(widget("b").wasClicked());

    press(400.0F + 300.0F * 0.53F, 300.0F - 300.0F * 0.67F);
    EXPECT_FALSE(widget("b").wasClicked());
}

TEST_F(RoutingThroughALayout, ReachesTheButtonOfAWindowThatLiesBelowAnother)
{
    load("CADD Win lower NULL 0 0 0 title\nCADD Butt low lower 0 0 TEX 0.5 0.5\n"
         "CADD Win upper NULL 0 0 0 title\nCADD Butt high upper 0 0 TEX 0.5 0.5\n");

    press(400.0F + 300.0F * 0.4F, 300.0F - 300.0F * 0.4F);

    EXPECT_TRUE(widget("low").wasClicked());
    EXPECT_TRUE(widget("high").wasClicked());
}

TEST_F(RoutingThroughALayout, TicksTheFirstOptionAndMovesTheTickByAPress)
{
    load("CADD Frame f NULL 0 0 0\nCADD Opt one f 0 0 one\nCADD Opt two f 0 0.5 two\n"
         "CADD Opt three f 0 1 three\n");
    EXPECT_TRUE(widget("one").isActive());

    press(400.0F + 300.0F * 0.1F, 300.0F - 300.0F * 0.6F);

    EXPECT_FALSE(widget("one").isActive());
    EXPECT_TRUE(widget("two").isActive());
    EXPECT_FALSE(widget("three").isActive());
}

TEST_F(RoutingThroughALayout, PutsAWidgetAtTheTopLeftOfTheWindow)
{
    load("CADD Butt a NULL -1.3333 0.9 TEX 0.1 0.1\n");

    press(1.0F, 1.0F);

    EXPECT_TRUE(widget("a").wasClicked());
}

// --- What never returns --------------------------------------------------------------------------

struct EndlessCase
{
    const char* name;
    const char* text; ///< null for no file at all
    const char* log;  ///< all that is ever printed behind the default theme
};

class LoadLayoutNeverReturns : public LoadLayout, public testing::WithParamInterface<EndlessCase>
{};

TEST_P(LoadLayoutNeverReturns, AndDoesNothingMore)
{
    if (GetParam().text != nullptr)
        directory.write("my.gui", GetParam().text);
    const std::string expected = std::string("read theme default.theme\n") + GetParam().log;

    ChildProcess child([] { return GLWidget::loadLayout("my.gui") ? 0 : 1; });

    EXPECT_TRUE(becomesTrue([&] { return child.errors().ends_with(expected); }));
    // Long against the microseconds that a load takes, once its last line is printed.
    EXPECT_TRUE(child.wait(std::chrono::milliseconds(500)).timedOut);
    EXPECT_THAT(child.errors(), EndsWith(expected));
}

INSTANTIATE_TEST_SUITE_P(
    From, LoadLayoutNeverReturns,
    testing::Values(
        EndlessCase{"AMissingFile", nullptr, ""},
        EndlessCase{"AnEmptyText", "CADD Label a NULL 0 0\nCADD Label b NULL 0 0 text\n",
                    "adding a 'Label' - a\n"},
        EndlessCase{"AnEmptyTitle", "CADD Win a NULL 0 0 1\nCHLD\n",
                    "adding a 'Win' - a\nadding window a 1\n"},
        EndlessCase{"AnEmptyTextLine", "CADD Frame f NULL 0 0 0\nTEXT f\nCHLD\n",
                    "adding a 'Frame' - f\n"},
        EndlessCase{"AWordInANumbersPlace", "CADD Frame f NULL left 0 0\nCHLD\n",
                    "adding a 'Frame' - f\n"},
        EndlessCase{"AWordInATabsPlace", "TADD first NULL Frame f 0 0 0\nCHLD\n",
                    "adding a '' - \n"},
        EndlessCase{"ATruthValueOf2", "CADD Frame f NULL 0 0 2\nCHLD\n", "adding a 'Frame' - f\n"}),
    [](const auto& test) { return test.param.name; });

// A field that fails at the very end of the file does end the load: the end was seen.
TEST_F(LoadLayout, ReturnsFromALineThatEndsWithTheFile)
{
    EXPECT_EQ(load("CADD Label a NULL 0 0"), "adding a 'Label' - a\n");

    EXPECT_EQ(seen(widget("a")).text, "");
}
} // namespace
} // namespace tamor::test
