#include "platform/InputPlayer.h"

#include "platform/InputRecorder.h"
#include "tests/platform/SDLEvents.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <locale>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// An event as text: its kind and every field that its receivers may read.
std::string textOf(const Event& event)
{
    static const char* const kinds[] = {"load",   "open",         "load graphics", "set up",
                                        "update", "render",       "render done",   "mouse",
                                        "keys",   "asked to end", "release"};
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << kinds[event.kind - EV_LOAD_RESOURCES];
    if (event.kind == EV_OPEN_WINDOW)
        text << " \"" << event.window.title << '"';
    if (event.kind == EV_UPDATE || event.kind == EV_RENDER)
        text << ' ' << event.delta;
    if (event.kind == EV_MOUSE) {
        const MouseState& mouse = event.mouse;
        text << " at " << mouse.x << ' ' << mouse.y << ' ' << mouse.z << " by " << mouse.dx << ' '
             << mouse.dy << ' ' << mouse.dz << " buttons " << int{mouse.left} << int{mouse.middle}
             << int{mouse.right};
    }
    if (event.kind == EV_MOUSE || event.kind == EV_KEYBOARD) {
        text << " modifiers " << event.keyboard.modifiers;
        for (std::size_t key = 0; key < keyCount; ++key) {
            if (event.keyboard.held[key] != 0)
                text << " +" << key;
            if (event.keyboard.pressed[key] != 0)
                text << " !" << key;
        }
    }
    return text.str();
}

/// A host's catcher, which writes down what it receives.
class Host : public EventCatcher
{
public:
    bool handleEvent(Event event) override
    {
        received.push_back(textOf(event));
        return !answer || answer(event);
    }

    std::vector<std::string> received;
    std::function<bool(const Event&)> answer;
};

/// A kernel with a host, to be run by a player or by itself.
class InputPlayerTest : public testing::Test
{
protected:
    InputPlayerTest() { kernel->addCatcher(host, 0x1FF, 0); }

    ~InputPlayerTest() override
    {
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
        SDL_QuitSubSystem(SDL_INIT_TIMER); // a timer started it
    }

    /// Plays a file of this text. The host has registered for everything.
    bool play(const std::string& text)
    {
        return (new InputPlayer(kernel, directory.write("run.input", text)))->run();
    }

    const test::TemporaryDirectory directory;
    Kernel* kernel = new Kernel;
    Host* host = new Host;
};

TEST_F(InputPlayerTest, GivesTheHostTheWholeLifeCycleWithTheRecordedInputAndTimes)
{
    EXPECT_TRUE(play("tamor input 1\n"
                     "keyboard 0\n"
                     "update 5\n"
                     "keyboard 4160 held 0 511 pressed 97\n"
                     "mouse 400 300 1 -2 2147483647 3 1 0 1\n"
                     "update 123456\n"));

    EXPECT_THAT(host->received,
                ElementsAre("load", "open \"Tamor Application\"", "load graphics", "set up",
                            "keys modifiers 0", "update 5", "render 5",
                            "keys modifiers 4160 +0 !97 +511",
                            "mouse at 400 300 1 by -2 2147483647 3 buttons 101 "
                            "modifiers 4160 +0 !97 +511",
                            "update 123456", "render 123456", "release", "release"));
}

TEST_F(InputPlayerTest, LeavesNoKeyOfAKeyboardLineInTheNext)
{
    EXPECT_TRUE(play("tamor input 1\nkeyboard 1 held 97 pressed 97\nkeyboard 0 held 98\n"));

    EXPECT_EQ(host->received[5], "keys modifiers 0 +98");
}

TEST_F(InputPlayerTest, EndsAFrameWithoutAnUpdateWhereTheRecordedOneEnded)
{
    EXPECT_TRUE(play("tamor input 1\nupdate 5\nkeyboard 0\n"));

    EXPECT_THAT(host->received,
                ElementsAre("load", "open \"Tamor Application\"", "load graphics", "set up",
                            "update 5", "render 5", "keys modifiers 0", "release", "release"));
}

TEST_F(InputPlayerTest, EndsWhenTheHostRefusesInput)
{
    host->answer = [](const Event& event) { return event.keyboard.held[27] == 0; };

    EXPECT_TRUE(play("tamor input 1\nkeyboard 0 held 27\nmouse 1 2 0 0 0 0 0 0 0\nupdate 5\n"));

    EXPECT_THAT(host->received,
                ElementsAre("load", "open \"Tamor Application\"", "load graphics", "set up",
                            "keys modifiers 0 +27", "release", "release"));
}

TEST_F(InputPlayerTest, EndsWhenTheHostRefusesToDraw)
{
    host->answer = [](const Event& event) { return event.kind != EV_RENDER; };

    EXPECT_TRUE(play("tamor input 1\nupdate 5\nupdate 6\n"));

    EXPECT_THAT(host->received,
                ElementsAre("load", "open \"Tamor Application\"", "load graphics", "set up",
                            "update 5", "render 5", "release", "release"));
}

TEST_F(InputPlayerTest, PassesOnThatTheHostDoesNotStart)
{
    host->answer = [](const Event& event) { return event.kind != EV_INITIAL_SETUP; };
    const test::CapturedErrors errors;

    EXPECT_FALSE(play("tamor input 1\nupdate 5\n"));

    EXPECT_EQ(errors.text(), "Error sending initial setup event\n");
}

TEST_F(InputPlayerTest, GivesTheHostsKernelItsTimer)
{
    EXPECT_TRUE(play("tamor input 1\n"));

    EXPECT_FALSE(kernel->timer.isEmpty());
}

TEST_F(InputPlayerTest, ReadsNumbersAlikeInEveryLocale)
{
    const test::CommaLocale locale;

    EXPECT_TRUE(play("tamor input 1\nupdate 12345\n"));

    EXPECT_EQ(host->received[4], "update 12345");
}

TEST_F(InputPlayerTest, SaysThatAFileIsMissing)
{
    auto* const player = new InputPlayer(kernel, "nowhere/run.input");
    const test::CapturedErrors errors;

    EXPECT_FALSE(player->run());

    EXPECT_EQ(errors.text(), "Error reading input file 'nowhere/run.input'\n"
                             "Error sending load resources event\n");
    EXPECT_THAT(host->received, IsEmpty());
}

/// What every recording of a run of random events becomes when it is played.
TEST_F(InputPlayerTest, GivesTheHostWhatTheRecordedRunGaveIt)
{
    // A source of input like `SDLInput`: the keys each frame, the mouse at times, and random times.
    class RandomInput : public EventCatcher
    {
    public:
        explicit RandomInput(Kernel* newKernel) : kernel(newKernel)
        {
            kernel->addCatcher(this, 1 << CLASS_UPDATE, 0);
        }

        bool handleEvent(Event) override
        {
            Event event;
            event.kind = EV_KEYBOARD;
            event.keyboard.modifiers = number();
            for (std::size_t key = 0; key < keyCount; ++key) {
                event.keyboard.held[key] = random() % 50 == 0 ? 1 : 0;
                event.keyboard.pressed[key] = random() % 50 == 0 ? 1 : 0;
            }
            kernel->sendEvent(this, event);
            if (random() % 2 == 0)
                return ++frame < 200;
            event.kind = EV_MOUSE;
            event.mouse = {number(), number(), number(), number(), number(),
                           number(), button(), button(), button()};
            kernel->sendEvent(this, event);
            return ++frame < 200;
        }

    private:
        std::int32_t number() { return static_cast<std::int32_t>(random()); }
        std::uint8_t button() { return random() % 2; }

        Kernel* kernel;
        std::mt19937 random{20260501};
        int frame = 0;
    };
    auto* const recorded = new Kernel;
    new RandomInput(recorded);
    new InputRecorder(recorded, "run.input");
    auto* const recordedHost = new Host;
    recorded->addCatcher(recordedHost, 0x1FF, 0);
    EXPECT_TRUE(recorded->run());
    auto* const player = new InputPlayer(kernel, "run.input");

    EXPECT_TRUE(player->run());

    EXPECT_GT(recordedHost->received.size(), 199U * 3);
    EXPECT_EQ(host->received, recordedHost->received);
}

struct Damage
{
    const char* name;
    std::string text;
    std::string words;

    friend void PrintTo(const Damage& row, std::ostream* stream) { *stream << row.name; }
};

class InputPlayerRefuses : public InputPlayerTest, public testing::WithParamInterface<Damage>
{};

TEST_P(InputPlayerRefuses, AndSaysWhereAndWhy)
{
    const test::CapturedErrors errors;

    EXPECT_FALSE(play(GetParam().text));

    EXPECT_EQ(errors.text(), "Error reading input file '" +
                                 (directory.path() / "run.input").string() + "', line " +
                                 GetParam().words + "\nError sending load resources event\n");
    EXPECT_THAT(host->received, IsEmpty());
}

constexpr const char* noKey = ": a key is a number below 512, behind \"held\" or \"pressed\"";
constexpr const char* noNumber = ": a number is missing or damaged";
constexpr const char* noEvent = ": an event is \"keyboard\", \"mouse\" or \"update\"";
constexpr const char* goesOn = ": the line goes on behind its last number";
const std::string good = "tamor input 1\nkeyboard 0\nupdate 5\n";

INSTANTIATE_TEST_SUITE_P(
    Rows, InputPlayerRefuses,
    testing::Values(
        Damage{"AnEmptyFile", "", "1: this is no recorded input"},
        Damage{"AnotherFile", "CONF gui.conf\n", "1: this is no recorded input"},
        Damage{"ATitleOfAnotherVersion", "tamor input 2\n", "1: this is no recorded input"},
        Damage{"ATitleThatIsCut", "tamor input 1", "1: the line is cut short"},
        Damage{"AnUnknownEvent", good + "render 5\n", std::string("4") + noEvent},
        Damage{"AnEmptyLine", good + "\n", std::string("4") + noEvent},
        Damage{"ALineThatIsCut", good + "update 1", "4: the line is cut short"},
        Damage{"AnUpdateWithoutATime", good + "update\n", std::string("4") + noNumber},
        Damage{"ATimeWithAFraction", good + "update 1.5\n", std::string("4") + noNumber},
        Damage{"ATimeOfMoreThan32Bits", good + "update 2147483648\n", std::string("4") + noNumber},
        Damage{"AnUpdateWithTwoTimes", good + "update 1 2\n", std::string("4") + goesOn},
        Damage{"AKeyboardWithoutModifiers", good + "keyboard\n", std::string("4") + noNumber},
        Damage{"AKeyWithoutAWord", good + "keyboard 0 97\n", std::string("4") + noKey},
        Damage{"AKeyThatIsNoNumber", good + "keyboard 0 held a\n", std::string("4") + noKey},
        Damage{"AKeyBehindTheTable", good + "keyboard 0 held 512\n", std::string("4") + noKey},
        Damage{"AKeyBeforeTheTable", good + "keyboard 0 held -1\n", std::string("4") + noKey},
        Damage{"TwoSpaces", good + "keyboard 0 held  97\n", std::string("4") + noKey},
        Damage{"AMouseWithTooFewNumbers", good + "mouse 1 2 3 4 5 6 1 0\n",
               std::string("4") + noNumber},
        Damage{"AMouseWithTooManyNumbers", good + "mouse 1 2 3 4 5 6 1 0 0 0\n",
               std::string("4") + goesOn},
        Damage{"AButtonOfMoreThanAByte", good + "mouse 1 2 3 4 5 6 1 0 256\n",
               std::string("4") + noNumber},
        Damage{"ZerosInTheText", good + std::string("update \0\n", 9),
               std::string("4") + noNumber}),
    [](const auto& row) { return row.param.name; });

/// Whatever a byte of a good file is changed to, and wherever the file is cut, the player plays it
/// or says what is wrong.
TEST_F(InputPlayerTest, EndsOrderlyWithEveryByteChangedAndAtEveryLength)
{
    const std::string text = "tamor input 1\nkeyboard 64 held 97 pressed 98\n"
                             "mouse 400 300 0 -5 2 0 1 0 0\nupdate 16\nkeyboard 0\nupdate 17\n";
    const auto playsOrSaysWhy = [this](const std::string& damaged) {
        const test::CapturedErrors errors;
        const bool hasPlayed = play(damaged);
        return hasPlayed == errors.text().empty();
    };

    for (std::size_t place = 0; place < text.size(); ++place) {
        EXPECT_TRUE(playsOrSaysWhy(text.substr(0, place))) << "cut at " << place;
        for (const char byte : {'\0', '\n', ' ', '-', '9', 'h', '\x7f', '\xff'}) {
            std::string damaged = text;
            damaged[place] = byte;
            EXPECT_TRUE(playsOrSaysWhy(damaged)) << "byte " << place << " is " << int{byte};
        }
    }
}

/// A player beside a window, whose own events are taken out of SDL's queue.
class InputPlayerGLTest : public test::WindowTest
{
protected:
    void TearDown() override
    {
        WindowTest::TearDown();
        collectAll();
        shuttingDown = false;
    }
};

TEST_F(InputPlayerGLTest, ForgetsWhatTheUserDoesAndLeavesOtherEventsInTheQueue)
{
    const test::TemporaryDirectory directory;
    auto* const player =
        new InputPlayer(new Kernel, directory.write("run.input", "tamor input 1\nupdate 5\n"));
    Event event;
    event.kind = EV_LOAD_RESOURCES;
    player->handleEvent(event);
    test::becomesTrue([] { return test::takeEvents().empty(); });
    test::putEvents({test::keyEvent(SDL_KEYDOWN, 'a', 'a'), test::motionEvent(1, 2),
                     test::focusEvent(), test::buttonEvent(SDL_MOUSEBUTTONDOWN, 1, 1, 2),
                     test::keyEvent(SDL_KEYUP, 'a', 'a')});

    event.kind = EV_UPDATE;
    EXPECT_TRUE(player->handleEvent(event));

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_ACTIVEEVENT));
}
} // namespace
} // namespace tamor
