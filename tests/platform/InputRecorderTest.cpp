#include "platform/InputRecorder.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryDirectory.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <string>

namespace tamor
{
namespace
{
std::string textOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// Behind the recorder, as a host's catcher is.
class Host : public EventCatcher
{
public:
    bool handleEvent(Event event) override { return !answer || answer(event); }

    std::function<bool(const Event&)> answer;
};

/// A kernel with a recorder to "run.input" and a host behind it.
class InputRecorderTest : public testing::Test
{
protected:
    ~InputRecorderTest() override
    {
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
        SDL_QuitSubSystem(SDL_INIT_TIMER); // a timer started it
    }

    void record(const std::string& path)
    {
        new InputRecorder(kernel, path);
        kernel->addCatcher(host, 0x1FF, 0);
    }

    bool send(const Event& event) { return kernel->sendEvent(ObjectRef<EventCatcher>(), event); }

    bool send(std::int32_t kind)
    {
        Event event;
        event.kind = kind;
        return send(event);
    }

    const test::TemporaryDirectory directory;
    Kernel* kernel = new Kernel;
    Host* host = new Host;
};

TEST_F(InputRecorderTest, WritesTheFramesOfARunALineAnEvent)
{
    Event keyboard;
    keyboard.kind = EV_KEYBOARD;
    keyboard.keyboard.modifiers = 4160;
    keyboard.keyboard.held[0] = 1;
    keyboard.keyboard.held[511] = 1;
    keyboard.keyboard.pressed[97] = 1;
    Event mouse = keyboard;
    mouse.kind = EV_MOUSE;
    mouse.mouse = {400, 300, 1, -2, 2147483647, 3, 1, 0, 1};
    Event update;
    update.kind = EV_UPDATE;
    update.delta = 16;
    record("run.input");

    EXPECT_TRUE(send(EV_LOAD_RESOURCES));
    EXPECT_TRUE(send(EV_KEYBOARD));
    EXPECT_TRUE(send(EV_UPDATE));
    EXPECT_TRUE(send(EV_RENDER));
    EXPECT_TRUE(send(keyboard));
    EXPECT_TRUE(send(mouse));
    EXPECT_TRUE(send(update));
    EXPECT_TRUE(send(EV_RELEASE_RESOURCES));

    EXPECT_EQ(textOf("run.input"), "tamor input 1\n"
                                   "keyboard 0\n"
                                   "update 0\n"
                                   "keyboard 4160 held 0 511 pressed 97\n"
                                   "mouse 400 300 1 -2 2147483647 3 1 0 1\n"
                                   "update 16\n");
}

TEST_F(InputRecorderTest, WritesNumbersAlikeInEveryLocale)
{
    const test::CommaLocale locale;
    Event update;
    update.kind = EV_UPDATE;
    update.delta = 12345;
    record("run.input");

    send(EV_LOAD_RESOURCES);
    send(update);

    EXPECT_EQ(textOf("run.input"), "tamor input 1\nupdate 12345\n");
}

TEST_F(InputRecorderTest, HasWrittenAnEventBeforeTheHostReceivesIt)
{
    std::string seen;
    record("run.input");
    send(EV_LOAD_RESOURCES);
    host->answer = [&](const Event&) {
        seen = textOf("run.input");
        return false;
    };

    EXPECT_FALSE(send(EV_KEYBOARD));

    EXPECT_EQ(seen, "tamor input 1\nkeyboard 0\n");
}

TEST_F(InputRecorderTest, EmptiesAFileThatIsThere)
{
    static_cast<void>(directory.write("run.input", "much that was written before"));
    record("run.input");

    send(EV_LOAD_RESOURCES);
    send(EV_RELEASE_RESOURCES);

    EXPECT_EQ(textOf("run.input"), "tamor input 1\n");
}

TEST_F(InputRecorderTest, SaysThatAFileCannotBeWrittenAndEndsTheRun)
{
    record("nowhere/run.input");
    const test::CapturedErrors errors;

    EXPECT_FALSE(kernel->run());

    EXPECT_EQ(errors.text(), "Error writing input file 'nowhere/run.input'\n"
                             "Error sending load resources event\n");
}

TEST_F(InputRecorderTest, SaysThatTheDiskIsFullAndEndsTheRun)
{
    record("/dev/full");
    const test::CapturedErrors errors;

    EXPECT_FALSE(kernel->run());

    EXPECT_EQ(errors.text(), "Error writing input file '/dev/full'\n"
                             "Error sending load resources event\n");
}
} // namespace
} // namespace tamor
