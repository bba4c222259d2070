#include "widgets/Textbox.h"

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Frame.h"
#include "widgets/Optionbox.h"

#include <random>

namespace tamor::test
{
namespace
{
constexpr int keyBackspace = 8;
constexpr int keyReturn = 13;
constexpr int keyDelete = 127;
constexpr int keyUp = 273;
constexpr int keyDown = 274;
constexpr int keyRight = 275;
constexpr int keyLeft = 276;
constexpr int keyHome = 278;
constexpr int keyEnd = 279;

/// A focused box, 20 columns wide and 4 rows high unless a test builds another. Every character is
/// 1/16 wide, the box one font width of 2/16 wider than its columns, and 2/16 are kept free.
template <class Base>
class FocusedBox : public Base
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        build(20, 4);
    }

    void build(std::int32_t columns, std::int32_t rows)
    {
        const CapturedErrors errors;
        box = &this->template make<Textbox>("t", nullptr, Vector(), columns, rows);
        box->hover = true;
    }

    /// Gives the box one frame in which these keys are typed.
    void press(const std::vector<int>& keys)
    {
        const auto pressed = keysDown(keys);
        box->onKeys(pressed.data());
    }

    /// Types characters, each in a frame of its own, and a line end as Return.
    void type(const std::string& characters)
    {
        for (const char character : characters)
            press({character == '\n' ? keyReturn : character});
    }

    void put(const std::string& before, const std::string& after)
    {
        box->beforeCursor = before;
        box->afterCursor = after;
        box->text = before + after;
    }

    /// The text with a bar where the cursor is.
    std::string content() const
    {
        EXPECT_EQ(box->text, box->beforeCursor + box->afterCursor);
        return box->beforeCursor + "|" + box->afterCursor;
    }

    Seen<Textbox>* box = nullptr;
};

using TextboxBuild = GuiTest;
using TextboxFocus = FocusedBox<GuiTest>;
using TextboxKeys = FocusedBox<GuiTest>;
using TextboxUp = FocusedBox<GuiTest>;
using TextboxDown = FocusedBox<GuiTest>;
using TextboxReturn = FocusedBox<GuiTest>;
using TextboxWrap = FocusedBox<GuiTest>;
using TextboxTyping = FocusedBox<GuiTest>;
using TextboxDrawingGLTest = FocusedBox<GuiGLTest>;

TEST_F(TextboxBuild, TellsItsSizeOnTheErrorStream)
{
    const CapturedErrors errors;

    const auto& box = make<Textbox>("t", nullptr, Vector(), 20, 2);

    // 20 letters of 1/16 and a font width of 1/8; 1.3 font heights a row.
    EXPECT_EQ(errors.text(), "textbox 20 2\ndim: (1.375, 0.65, 0, 1)\n");
    EXPECT_EQ(box.typeName(), "Textbox");
    EXPECT_EQ(box.dimensions.x, 1.375F);
    EXPECT_FLOAT_EQ(box.dimensions.y, 0.65F);
    EXPECT_EQ(box.maxRows, 2U);
    EXPECT_EQ(box.text, "");
    EXPECT_TRUE(box.isExclusive());
    EXPECT_FALSE(box.isHovered()) << "no box has the focus after the build";
}

TEST_F(TextboxBuild, StaysInsideItsStorageWithColumnsThatMakeNoSense)
{
    const CapturedErrors errors;

    const auto& narrow = make<Textbox>("t", nullptr, Vector(), -5, -1);
    const auto& wide = make<Textbox>("t", nullptr, Vector(), 2000000000, 1);

    EXPECT_EQ(narrow.dimensions.x, 0.125F);
    EXPECT_EQ(wide.dimensions.x, 32.0625F) << "a text is measured up to 511 characters";
}

// --- Focus ---------------------------------------------------------------------------------------

TEST_F(TextboxFocus, IsTakenByAPressOverTheBox)
{
    box->hover = false;
    box->onPointer(0.1F, 0.1F);
    EXPECT_FALSE(box->hover) << "the pointer alone gives none";
    EXPECT_FALSE(box->onMouseButtons(false, true, true));
    EXPECT_FALSE(box->hover);

    EXPECT_TRUE(box->onMouseButtons(true, false, false));

    EXPECT_TRUE(box->hover);
    EXPECT_FALSE(box->prevLeft) << "it stores no buttons";
}

TEST_F(TextboxFocus, IsTakenByAPressThatBeganOutside)
{
    box->hover = false;
    point(*box, 9.0F, 9.0F, true);
    EXPECT_FALSE(box->hover);

    point(*box, 0.1F, 0.1F, true);

    EXPECT_TRUE(box->hover);
}

TEST_F(TextboxFocus, StaysAfterAPressElsewhere)
{
    box->onPointer(9.0F, 9.0F);

    EXPECT_FALSE(box->onMouseButtons(true, false, false));

    EXPECT_TRUE(box->hover);
}

TEST_F(TextboxFocus, AnswersTrueWhileFocusedUnderThePointer)
{
    box->onPointer(0.1F, 0.1F);

    EXPECT_TRUE(box->onMouseButtons(false, false, false));
}

TEST_F(TextboxFocus, LeavesByTheChoiceOfAnother)
{
    EXPECT_TRUE(box->deselect(box));
    EXPECT_TRUE(box->hover);

    EXPECT_TRUE(box->deselect(nullptr));
    EXPECT_FALSE(box->hover);
}

TEST_F(TextboxFocus, GoesFromBoxToBoxAndUnticksOptions)
{
    const CapturedErrors errors;
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& first = make<Textbox>("t1", &frame, Vector(), 4, 1);
    auto& second = make<Textbox>("t2", &frame, Vector(2.0F, 0.0F), 4, 1);
    auto& option = make<Optionbox>("o", &frame, Vector(4.0F, 0.0F), std::string("a"));
    frame.children = {&first, &second, &option};
    option.active = true;

    point(frame, 0.1F, 0.1F, true);
    EXPECT_TRUE(first.hover);
    EXPECT_FALSE(option.active);

    point(frame, 2.1F, 0.1F, true);
    EXPECT_FALSE(first.hover);
    EXPECT_TRUE(second.hover);

    point(frame, 9.0F, 9.0F, true);
    EXPECT_TRUE(second.hover) << "a press on nothing";
}

TEST_F(TextboxFocus, IsNotGivenByAnAddition)
{
    const CapturedErrors errors;
    auto& frame = make<Frame>("f", nullptr, Vector(), false);
    auto& text = make<Textbox>("t1", &frame, Vector(), 4, 1);

    frame.addChild(&text);

    EXPECT_TRUE(text.active) << "the first of the group";
    EXPECT_FALSE(text.hover);
}

TEST_F(TextboxFocus, KeepsTheBoxLit)
{
    box->onPointer(9.0F, 9.0F);
    box->update(4);
    EXPECT_EQ(box->glow, 1.0F);
    box->update(100);
    EXPECT_EQ(box->glow, 1.0F);
}

TEST_F(TextboxFocus, DropsWhatIsTypedWithoutIt)
{
    put("ab", "cd");
    box->hover = false;

    const auto pressed = keysDown({'x', keyBackspace, keyHome, keyReturn});
    EXPECT_TRUE(box->onKeys(pressed.data()));
    EXPECT_EQ(content(), "ab|cd");

    box->hover = true;
    press({});
    EXPECT_EQ(content(), "ab|cd") << "and nothing of it comes later";
}

// --- Keys ----------------------------------------------------------------------------------------

struct KeyRow
{
    const char* before;
    const char* after;
    int key;
    const char* result;
};

TEST_F(TextboxKeys, EditAndMove)
{
    const KeyRow rows[] = {
        {"ab", "cd", keyBackspace, "a|cd"},
        {"", "cd", keyBackspace, "|cd"},
        {"ab\n", "cd", keyBackspace, "ab|cd"}, // the rows join
        {"ab", "cd", keyDelete, "ab|d"},
        {"ab", "", keyDelete, "ab|"},
        {"ab", "\ncd", keyDelete, "ab|cd"},
        {"ab", "cd", keyLeft, "a|bcd"},
        {"", "cd", keyLeft, "|cd"},
        {"ab\n", "cd", keyLeft, "ab|\ncd"},
        {"ab", "cd", keyRight, "abc|d"},
        {"ab", "", keyRight, "ab|"},
        {"ab", "\ncd", keyRight, "ab\n|cd"},
        {"ab\nc", "d\ne", keyHome, "|ab\ncd\ne"}, // of the whole text
        {"", "ab", keyHome, "|ab"},
        {"ab\nc", "d\ne", keyEnd, "ab\ncd\ne|"},
        {"ab", "", keyEnd, "ab|"},
        {"ab", "cd", keyReturn, "ab\n|cd"},
        {"ab", "cd", 'x', "abx|cd"},
        {"ab", "cd", 27, "ab|cd"},
    };
    for (const KeyRow& row : rows) {
        put(row.before, row.after);
        press({row.key});
        EXPECT_EQ(content(), row.result) << row.key << " in " << row.before << "|" << row.after;
    }
}

TEST_F(TextboxKeys, ApplyTogetherInTheirOwnOrder)
{
    put("abc", "def");
    press({keyBackspace, keyDelete});
    EXPECT_EQ(content(), "ab|ef");

    put("abc", "def");
    press({keyLeft, keyRight, 'x'});
    EXPECT_EQ(content(), "abcx|def");

    put("abc", "def");
    press({keyHome, keyEnd});
    EXPECT_EQ(content(), "abcdef|");

    put("abc", "def");
    press({keyBackspace, keyReturn, 'x'});
    EXPECT_EQ(content(), "ab\nx|def");
}

TEST_F(TextboxKeys, CountOnceAFrame)
{
    put("abc", "");
    press({keyBackspace, keyBackspace});

    EXPECT_EQ(content(), "ab|");
}

// --- Up ------------------------------------------------------------------------------------------

struct RowMove
{
    const char* before;
    const char* after;
    const char* result;
};

TEST_F(TextboxUp, GoesToTheClosestColumnOfTheRowAbove)
{
    const RowMove rows[] = {
        {"abcd\nxy", "z", "ab|cd\nxyz"},
        {"abcd\n", "xyz", "|abcd\nxyz"},
        {"one\nabcd\nxy", "", "one\nab|cd\nxy"},
        {"ab\nwxyz", "", "ab|\nwxyz"}, // a shorter row: its end
        {"\nwxyz", "", "|\nwxyz"},     // an empty one
        {"one\n\nwxyz", "", "one\n|\nwxyz"},
        {"abcd", "ef", "abcd|ef"}, // the first row
    };
    for (const RowMove& row : rows) {
        put(row.before, row.after);
        press({keyUp});
        EXPECT_EQ(content(), row.result) << row.before << "|" << row.after;
    }
}

TEST_F(TextboxUp, StopsAtTheFirstColumnThatComesNoNearer)
{
    // Two narrow letters, one of no width, and the target at two: the third column is as near as
    // the second and ends the search, so the nearer fourth is never seen.
    GLWidget::font.advance['.'] = 0.0F;
    put("a.bcd\nxy", "");

    press({keyUp});

    EXPECT_EQ(content(), "a|.bcd\nxy");
}

TEST_F(TextboxUp, TakesTheColumnBeforeOnATie)
{
    GLWidget::font.advance['W'] = 1.0F; // twice as wide
    put("WWW\nabc", "");

    press({keyUp});

    // The target at 3 lies between the columns at 2 and 4; the later is as near, which is no
    // nearer.
    EXPECT_EQ(content(), "W|WW\nabc");
}

TEST_F(TextboxUp, GoesInFrontOfTheRowsLineEndWhenNothingIsNear)
{
    GLWidget::font.advance['W'] = 10000.0F; // a 1000 units away, nothing counts as near
    put("ab\ncd\nW", "");

    press({keyUp});
    EXPECT_EQ(content(), "ab|\ncd\nW");

    put("cd\nW", "");
    press({keyUp});
    EXPECT_EQ(content(), "|cd\nW");
}

// --- Down ----------------------------------------------------------------------------------------

TEST_F(TextboxDown, GoesToTheClosestColumnOfTheRowBelow)
{
    const RowMove rows[] = {
        {"ab", "cd\nwxyz", "abcd\nwx|yz"},
        {"", "abcd\nxyz", "abcd\n|xyz"},
        {"one\nab", "cd\nwxyz", "one\nabcd\nwx|yz"},
        {"abcd", "\n", "abcd\n|"},
        {"abcd", "", "abcd|"}, // the last row
        {"abcd\n", "ef", "abcd\n|ef"},
    };
    for (const RowMove& row : rows) {
        put(row.before, row.after);
        press({keyDown});
        EXPECT_EQ(content(), row.result) << row.before << "|" << row.after;
    }
}

TEST_F(TextboxDown, LooksNoFurtherThanARowIsMeasured)
{
    GLWidget::font.advance['w'] = 1.0F;
    put(std::string(600, 'w'), "\n" + std::string(600, 'i'));

    press({keyDown});

    // The 511 letters of the row above that are measured are twice as wide as any column.
    EXPECT_EQ(box->beforeCursor.size(), 601U + 511U);
    EXPECT_EQ(box->afterCursor, std::string(89, 'i'));
}

TEST_F(TextboxDown, StopsAtTheEndOfAShorterRow)
{
    put("abcd", "\nxy\nlonger");
    press({keyDown});

    EXPECT_EQ(content(), "abcd\nxy|\nlonger");
}

TEST_F(TextboxDown, StopsAtAnEmptyRow)
{
    put("abcd", "\n\nlonger");
    press({keyDown});

    EXPECT_EQ(content(), "abcd\n|\nlonger");
}

TEST_F(TextboxDown, StaysInsideTheTextWhenNothingIsNear)
{
    GLWidget::font.advance['W'] = 20000.0F;
    put("W", "\nab");

    press({keyDown});

    EXPECT_EQ(content(), "W\n|ab");
}

TEST_F(TextboxDown, GoesUpAndDownTheSameWhereRowsAreLong)
{
    put("abcdef\nuv", "wxyz\nopqrst");

    press({keyUp});
    EXPECT_EQ(content(), "ab|cdef\nuvwxyz\nopqrst");
    press({keyDown});
    press({keyDown});
    EXPECT_EQ(content(), "abcdef\nuvwxyz\nop|qrst");
}

/// The search as it is told: every column measured from the start of the row.
std::ptrdiff_t closestColumnMeasured(const std::string& row, float target)
{
    float best = 1000.0F;
    for (std::size_t n = 0; n <= row.size(); ++n) {
        const float width = GLWidget::font.textWidth(row.substr(0, n).c_str());
        const float distance = std::abs(width - target);
        if (!(distance < best))
            return static_cast<std::ptrdiff_t>(n) - 1;
        best = distance;
    }
    return static_cast<std::ptrdiff_t>(row.size());
}

TEST_F(TextboxDown, FindsTheColumnThatMeasuringEveryColumnFinds)
{
    std::mt19937 random(7);
    const std::string letters = "aaaaabcdeWW .%%d5\n";
    const auto randomText = [&](std::size_t longest) {
        std::string text(random() % longest, ' ');
        for (char& character : text)
            character = letters[random() % letters.size()];
        return text;
    };
    for (const char letter : letters)
        GLWidget::font.advance[static_cast<unsigned char>(letter)] =
            static_cast<float>(random() % 1000) / 777.0F;

    for (int round = 0; round < 2000; ++round) {
        const std::string first = randomText(30) + std::string(round % 4 == 0 ? 600 : 0, 'a');
        const std::string rest = randomText(40) + std::string(round % 3 == 0 ? 700 : 0, 'b');
        const std::size_t lineEnd = first.rfind('\n');
        const float target =
            GLWidget::font.textWidth(first.c_str() + (lineEnd == std::string::npos ? 0 : lineEnd));
        const auto column = static_cast<std::size_t>(closestColumnMeasured(rest, target));
        put(first, "\n" + rest);
        box->maxRows = 0;

        press({keyDown});

        ASSERT_EQ(content(), first + "\n" + rest.substr(0, column) + "|" + rest.substr(column));
    }
}

// --- Return and wrapping -------------------------------------------------------------------------

TEST_F(TextboxReturn, IsRefusedInTheLastRow)
{
    build(20, 1);
    type("ab\n");
    EXPECT_EQ(content(), "ab|");

    build(20, 3);
    type("a\nb\nc\n\n");
    EXPECT_EQ(content(), "a\nb\nc|");
}

TEST_F(TextboxReturn, CountsTheRowsOfTheTextBeforeThisFrame)
{
    build(20, 2);
    put("a\n", "b");

    press({keyBackspace, keyReturn});

    EXPECT_EQ(content(), "a|b") << "there were two rows before the Backspace";
}

TEST_F(TextboxWrap, MovesTheLastWordToANewRow)
{
    // 22/16 less 2/16 are 20 characters; 21 are too many.
    type("one two three four fi");
    EXPECT_EQ(content(), "one two three four fi|");

    type("v");

    EXPECT_EQ(content(), "one two three four \nfi|");
}

TEST_F(TextboxWrap, LosesTheKeyOfTheFrameThatWraps)
{
    type("one two three four fi");
    type("vx");

    EXPECT_EQ(content(), "one two three four \nfix|");
}

TEST_F(TextboxWrap, HappensWithoutAnyKey)
{
    type("one two three four fi");

    press({});

    EXPECT_EQ(content(), "one two three four \nfi|");
}

TEST_F(TextboxWrap, LeavesALineWithoutABlankAsItIsAndRefusesMore)
{
    type("abcdefghijklmnopqrstu");
    EXPECT_EQ(content(), "abcdefghijklmnopqrstu|");

    type("vw");
    EXPECT_EQ(content(), "abcdefghijklmnopqrstu|");

    press({keyBackspace});
    type("v");
    EXPECT_EQ(content(), "abcdefghijklmnopqrstv|") << "20 leave room for one";
}

TEST_F(TextboxWrap, LooksForTheBlankInTheLastRowAlone)
{
    type("a b\nabcdefghijklmnopqrst");
    press({'u'});
    EXPECT_EQ(content(), "a b\nabcdefghijklmnopqrstu|");

    press({'v'});

    EXPECT_EQ(content(), "a b\nabcdefghijklmnopqrstu|");
}

TEST_F(TextboxWrap, MovesNothingBehindATrailingBlank)
{
    type("abcdefghijklmnopqrst ");

    press({'x'});

    EXPECT_EQ(content(), "abcdefghijklmnopqrst \n|");
}

TEST_F(TextboxWrap, StopsTypingInTheLastRow)
{
    build(20, 1);
    type("one two three four five six");

    EXPECT_EQ(content(), "one two three four fi|") << "and nothing scrolls";
}

TEST_F(TextboxWrap, LooksInFrontOfTheCursorOnly)
{
    put("ab", "cdefghijklmnopqrstuvwxyz");

    press({'x'});

    EXPECT_EQ(content(), "abx|cdefghijklmnopqrstuvwxyz");
}

TEST_F(TextboxTyping, TakesTheCharactersFrom32To125)
{
    for (int key = 0; key < 512; ++key) {
        put("", "");
        press({key});
        if (key == keyReturn)
            EXPECT_EQ(content(), "\n|");
        else if (key >= 32 && key <= 125)
            EXPECT_EQ(content(), std::string(1, static_cast<char>(key)) + "|");
        else
            EXPECT_EQ(content(), "|") << key;
    }
}

TEST_F(TextboxTyping, PutsTheKeysOfOneFrameInTheOrderOfTheirCodes)
{
    press({'z', 'A', ' ', 'm', '}'});

    EXPECT_EQ(content(), " Amz}|");
}

TEST_F(TextboxTyping, KeepsATextThatIsLongerThanAnyBuffer)
{
    build(511, 4);
    const std::string words(3000, 'a');
    put(words, words);

    press({keyLeft});
    press({keyHome});
    press({keyDelete});

    EXPECT_EQ(box->text.size(), 5999U);
}

// --- Drawing -------------------------------------------------------------------------------------

TEST_F(TextboxDrawingGLTest, MakesTheseCalls)
{
    build(4, 2);
    put("ab\nc", "d");
    box->hover = false;
    box->position = Vector(1.0F, 2.0F);
    box->dimensions = Vector(0.375F, 0.75F);

    // The cut is 3 * 0.125 * 1.5 * 0.25.
    EXPECT_EQ(callsOfRender(*box), R"(
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glDisable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glColor3f(0.5, 0.25, 1)
glTranslatef(1.1875, 2.375, 0)
glPushMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glColor3f(0.25, 0.125, 0.5)
GL_POLYGON -0.1875,-0.375[0,0] -0.1875,0.234375[0,0.625] -0.046875,0.375[0.375,1] 0.1875,0.375[1,1] 0.1875,-0.234375[1,0.375] 0.046875,-0.375[1,0] -0.1875,-0.375[0,0]
glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)
glColor3f(0.25, 0.125, 0.5)
glDisable(GL_TEXTURE_2D)
GL_POLYGON -0.1875,-0.375[0,0] -0.1875,0.234375[0,0.625] -0.046875,0.375[0.375,1] 0.1875,0.375[1,1] 0.1875,-0.234375[1,0.375] 0.046875,-0.375[1,0] -0.1875,-0.375[0,0]
glPopMatrix()
glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)
glTranslatef(-0.125, -0.291667, 0)
glTranslatef(0, 0.325, 0)
glColor3f(0.5, 0.75, 0)
print "ab/cd"
glTranslatef(0.0625, -0.325, 0)
glPopMatrix()
)");
}

TEST_F(TextboxDrawingGLTest, DrawsACursorWithTheFocus)
{
    put("abc", "d");
    box->glow = 1.0F;

    const std::string calls = callsOfRender(*box);

    EXPECT_NE(calls.find("glColor3f(0.5, 0.75, 0)\nprint \"abcd\"\nglTranslatef(0.1875, 0, 0)\n"
                         "print \"|\"\nglPopMatrix()\n"),
              std::string::npos)
        << calls;
    EXPECT_NE(calls.find("glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)\nglColor3f(0.5, 0.25, 1)\n"),
              std::string::npos)
        << calls;
}

TEST_F(TextboxDrawingGLTest, CutsALongTextInDrawingAlone)
{
    put(std::string(300, 'a') + "%d%s%n", "");

    const std::string calls = callsOfRender(*box);

    EXPECT_NE(calls.find("print \"" + std::string(255, 'a') + "\"\n"), std::string::npos);
    EXPECT_EQ(box->text.size(), 306U);
}
} // namespace
} // namespace tamor::test
