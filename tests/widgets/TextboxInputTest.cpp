// What a keyboard does to a text box, from SDL's events on. SDL reports no characters with the keys
// of the running program (docs/text-entry.md tells why); the events here carry them where a test
// says so.

#include "kernel/Kernel.h"
#include "platform/SDLInput.h"
#include "tests/gui/GuiTest.h"
#include "tests/platform/SDLEvents.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "widgets/Textbox.h"

namespace tamor::test
{
namespace
{
/// Gives the box what the application gives the GUI.
class Typist : public EventCatcher
{
public:
    explicit Typist(Textbox& newBox) : box(newBox) {}

    bool handleEvent(Event event) override
    {
        if (event.kind == EV_KEYBOARD)
            box.onKeys(event.keyboard.pressed.data());
        return true;
    }

private:
    Textbox& box;
};

class TextboxInputGLTest : public GuiGLTest
{
protected:
    void SetUp() override
    {
        GuiGLTest::SetUp();
        becomesTrue([] { return takeEvents().empty(); });
        const CapturedErrors errors;
        box = &make<Textbox>("t", nullptr, Vector(), 40, 3);
        box->hover = true;
        kernel = new Kernel;
        input = new SDLInput(kernel, false);
        kernel->addCatcher(ObjectRef<EventCatcher>(new Typist(*box)), 1 << CLASS_KEYBOARD, 0);
    }

    void TearDown() override
    {
        collectAll();
        kernel = nullptr;
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
        GuiGLTest::TearDown();
    }

    /// One frame with these events in the queue.
    void frame(const std::vector<SDL_Event>& events, std::int32_t delta = 10)
    {
        putEvents(events);
        Event event;
        event.kind = EV_UPDATE;
        event.delta = delta;
        input->handleEvent(event);
    }

    /// A key goes down in one frame and up in the next, as SDL tells it: without a character the
    /// second time.
    void strike(int symbol, Uint16 character)
    {
        frame({keyEvent(SDL_KEYDOWN, symbol, character)});
        frame({keyEvent(SDL_KEYUP, symbol, 0)});
    }

    Seen<Textbox>* box = nullptr;
    ObjectRef<Kernel> kernel;
    SDLInput* input = nullptr;
};

TEST_F(TextboxInputGLTest, TypesTheSymbolOfAKeyWithoutACharacter)
{
    strike('a', 0);
    SDL_SetModState(KMOD_LSHIFT);
    strike('a', 0);
    strike('1', 0);
    SDL_SetModState(KMOD_NONE);
    strike(' ', 0);
    strike(SDLK_COMMA, 0);

    EXPECT_EQ(box->text, "aa1 ,") << "Shift changes nothing";
}

TEST_F(TextboxInputGLTest, TypesOneOfAKeyWhoseCharacterIsItsSymbol)
{
    strike('a', 'a');

    EXPECT_EQ(box->text, "a");
}

TEST_F(TextboxInputGLTest, TypesTheCharacterAndTheSymbolOfAShiftedKey)
{
    strike('a', 'A');
    EXPECT_EQ(box->text, "Aa");

    strike('1', '!');
    EXPECT_EQ(box->text, "Aa!1") << "in the order of their codes";
}

TEST_F(TextboxInputGLTest, RepeatsForEverACharacterThatNoKeyUpNames)
{
    strike('a', 'A');
    ASSERT_EQ(box->text, "Aa");

    for (int i = 0; i < 75; ++i)
        frame({});
    EXPECT_EQ(box->text, "AaAAA") << "the record of 'A' is still down after more than 700 ms";

    frame({keyEvent(SDL_KEYUP, 'a', 'A')});
    for (int i = 0; i < 200; ++i)
        frame({});
    EXPECT_EQ(box->text, "AaAAA") << "a key-up that names it ends it";
}

TEST_F(TextboxInputGLTest, RepeatsAHeldKeyInFrameTime)
{
    frame({keyEvent(SDL_KEYDOWN, 'x', 0)});
    for (int i = 2; i <= 71; ++i)
        frame({});
    EXPECT_EQ(box->text, "x");

    frame({}); // the 72nd frame of 10 ms
    frame({});
    EXPECT_EQ(box->text, "xxx");
}

TEST_F(TextboxInputGLTest, EditsWithTheKeysThatHaveNoCharacter)
{
    for (const char symbol : {'o', 'n', 'e'})
        strike(symbol, 0);
    strike(SDLK_RETURN, 0);
    for (const char symbol : {'t', 'w', 'o'})
        strike(symbol, 0);
    EXPECT_EQ(box->text, "one\ntwo");

    strike(SDLK_LEFT, 0);
    strike(SDLK_UP, 0);
    strike(SDLK_DELETE, 0);
    EXPECT_EQ(box->text, "on\ntwo");
    strike(SDLK_HOME, 0);
    strike(SDLK_RIGHT, 0);
    strike(SDLK_BACKSPACE, 0);
    EXPECT_EQ(box->text, "n\ntwo");
    strike(SDLK_DOWN, 0);
    strike('x', 0);
    EXPECT_EQ(box->text, "n\nxtwo");
    strike(SDLK_END, 0);
    strike(SDLK_BACKSPACE, 0);
    EXPECT_EQ(box->text, "n\nxtw");
}

TEST_F(TextboxInputGLTest, LosesAKeyThatComesAndGoesWithinOneFrame)
{
    frame({keyEvent(SDL_KEYDOWN, 'a', 0), keyEvent(SDL_KEYUP, 'a', 0)});

    EXPECT_EQ(box->text, "");
}
} // namespace
} // namespace tamor::test
