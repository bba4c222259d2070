#include "platform/SDLInput.h"

#include "tests/platform/SDLEvents.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <functional>
#include <vector>

namespace
{
bool startFails = false;
Uint32 startFlags = 0;
} // namespace

/// Stands before SDL's own, which it calls: no other way is known to make it fail.
extern "C" int SDL_Init(Uint32 flags)
{
    startFlags = flags;
    if (startFails) {
        SDL_SetError("no joysticks today");
        return -1;
    }
    return reinterpret_cast<int (*)(Uint32)>(dlsym(RTLD_NEXT, "SDL_Init"))(flags);
}

namespace tamor
{
namespace
{
using test::buttonEvent;
using test::keyEvent;
using test::motionEvent;
using testing::ElementsAre;
using testing::IsEmpty;

/// Keeps the input events that it receives.
class Receiver : public EventCatcher
{
public:
    bool handleEvent(Event event) override
    {
        received.push_back(event);
        return !refuses || !refuses(event);
    }

    std::vector<Event> received;
    std::function<bool(const Event&)> refuses;
};

/// An SDLInput with a window, whose own events are taken out of SDL's queue.
class SDLInputGLTest : public test::WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        makeInput(false);
        test::becomesTrue([] { return test::takeEvents().empty(); });
    }

    void TearDown() override
    {
        WindowTest::TearDown();
        collectAll();
        kernel = nullptr;
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
    }

    void makeInput(bool grabMouse)
    {
        kernel = new Kernel;
        input = new SDLInput(kernel, grabMouse);
        receiver = new Receiver;
        kernel->addCatcher(ObjectRef<EventCatcher>(receiver),
                           1 << CLASS_KEYBOARD | 1 << CLASS_MOUSE, 0);
    }

    bool send(std::int32_t kind, std::int32_t delta = 0)
    {
        Event event;
        event.kind = kind;
        event.delta = delta;
        return input->handleEvent(event);
    }

    /// One frame with these events in the queue. Returns the input events that it sent.
    std::vector<Event> frame(const std::vector<SDL_Event>& events, std::int32_t delta = 10)
    {
        receiver->received.clear();
        test::putEvents(events);
        wasUpdated = send(EV_UPDATE, delta);
        return receiver->received;
    }

    ObjectRef<Kernel> kernel;
    SDLInput* input = nullptr;
    Receiver* receiver = nullptr;
    bool wasUpdated = false;
};

TEST_F(SDLInputGLTest, RegistersForResourcesWindowUpdateAndRenderDone)
{
    EXPECT_EQ(kernel->catchers[0].catcher.get(), input);
    EXPECT_EQ(kernel->catchers[0].mask, 147);
    EXPECT_EQ(kernel->catchers[0].priority, 500);
    EXPECT_EQ(input->kernel.get(), kernel.get());
    EXPECT_EQ(input->lastX, -1);
    EXPECT_EQ(input->lastY, -1);
    EXPECT_FALSE(input->grabMouse);
}

TEST_F(SDLInputGLTest, StartsAndClosesTheJoystickSubsystem)
{
    input->keys[5].state = KeyRecord::HELD;
    input->buttonLeft = true;
    input->buttonMiddle = true;
    input->buttonRight = true;

    EXPECT_TRUE(send(EV_LOAD_RESOURCES));

    EXPECT_EQ(startFlags, 0x100200U);
    EXPECT_NE(SDL_WasInit(SDL_INIT_JOYSTICK), 0U);
    EXPECT_EQ(SDL_EnableUNICODE(-1), 1);
    EXPECT_EQ(input->keys[5].state, 0);
    EXPECT_FALSE(input->buttonLeft);
    EXPECT_FALSE(input->buttonMiddle);
    EXPECT_FALSE(input->buttonRight);

    startFlags = 0;
    EXPECT_TRUE(send(EV_LOAD_RESOURCES));
    EXPECT_EQ(startFlags, 0U) << "what runs is not started again";

    EXPECT_TRUE(send(EV_RELEASE_RESOURCES));
    EXPECT_EQ(SDL_WasInit(SDL_INIT_EVERYTHING), SDL_INIT_VIDEO);
}

TEST_F(SDLInputGLTest, AFailedStartSaysSoAndClosesSDL)
{
    startFails = true;
    const test::CapturedErrors errors;

    EXPECT_FALSE(send(EV_LOAD_RESOURCES));
    startFails = false;

    EXPECT_EQ(errors.text(), "SDL_Init() failed. SDL Error: no joysticks today\n");
    EXPECT_EQ(SDL_WasInit(SDL_INIT_EVERYTHING), 0U);
}

TEST_F(SDLInputGLTest, OtherKindsAreIgnored)
{
    for (const std::int32_t kind : {17, 18, 19, 21, 22, 23, 24, 25, 0})
        EXPECT_TRUE(send(kind)) << kind;
    EXPECT_THAT(receiver->received, IsEmpty());
}

TEST_F(SDLInputGLTest, SendsTheKeyboardEveryFrame)
{
    const std::vector<Event> events = frame({});

    EXPECT_TRUE(wasUpdated);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].kind, EV_KEYBOARD);
    EXPECT_THAT(events[0].keyboard.held, testing::Each(0));
}

TEST_F(SDLInputGLTest, CarriesTheModifiersAsSDLGivesThem)
{
    SDL_SetModState(static_cast<SDLMod>(KMOD_LCTRL | KMOD_LSHIFT));

    const Event event = frame({}).at(0);
    SDL_SetModState(KMOD_NONE);

    EXPECT_EQ(event.keyboard.modifiers, 0x41);
}

TEST_F(SDLInputGLTest, AKeySetsTheRecordsOfItsSymbolAndOfItsCharacter)
{
    const Event event = frame({keyEvent(SDL_KEYDOWN, SDLK_a, 'A')}).at(0);

    EXPECT_EQ(event.keyboard.held[97], 1);
    EXPECT_EQ(event.keyboard.held[65], 1);
    EXPECT_EQ(event.keyboard.pressed[97], 1);
    EXPECT_EQ(event.keyboard.pressed[65], 1);
    EXPECT_EQ(event.keyboard.held[0], 0);
}

TEST_F(SDLInputGLTest, AKeyWithoutACharacterSetsTheFirstRecordToo)
{
    const Event event = frame({keyEvent(SDL_KEYDOWN, SDLK_UP, 0)}).at(0);

    EXPECT_EQ(event.keyboard.held[273], 1);
    EXPECT_EQ(event.keyboard.held[0], 1);
}

TEST_F(SDLInputGLTest, AKeyUpWithoutACharacterLeavesTheRecordOfTheCharacter)
{
    frame({keyEvent(SDL_KEYDOWN, SDLK_a, 'A')});
    const Event released = frame({keyEvent(SDL_KEYUP, SDLK_a, 0)}).at(0);

    EXPECT_EQ(released.keyboard.held[97], 0);
    EXPECT_EQ(released.keyboard.held[65], 1);

    // It stays, and repeats, until a key-up names it.
    EXPECT_EQ(frame({}, 800).at(0).keyboard.pressed[65], 1);
    EXPECT_EQ(frame({keyEvent(SDL_KEYUP, SDLK_b, 'A')}).at(0).keyboard.held[65], 0);
}

TEST_F(SDLInputGLTest, IndicesPastTheTableAreIgnored)
{
    const std::vector<Event> events =
        frame({keyEvent(SDL_KEYDOWN, 512, 0x20AC), keyEvent(SDL_KEYUP, 0x7FFF, 0xFFFF),
               keyEvent(SDL_KEYDOWN, 511, 511)});

    EXPECT_EQ(events.at(0).keyboard.held[511], 1);
    const auto& held = events[0].keyboard.held;
    EXPECT_EQ(std::count(held.begin(), held.end(), 1), 1);
}

TEST_F(SDLInputGLTest, AKeyRepeatsByTheTimeOfFrames)
{
    std::vector<int> framesOfPress;
    frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10);
    framesOfPress.push_back(1);
    for (int number = 2; number <= 90; ++number) {
        const Event event = frame({}, 10).at(0);
        EXPECT_EQ(event.keyboard.held['x'], 1);
        if (event.keyboard.pressed['x'] != 0)
            framesOfPress.push_back(number);
    }

    EXPECT_THAT(framesOfPress, ElementsAre(1, 72, 73, 77, 81, 85, 89));
}

TEST_F(SDLInputGLTest, TheTimesOfAKeyAreKeptAsTheStatesSay)
{
    KeyRecord& key = input->keys['x'];
    frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10);
    EXPECT_EQ(key.state, 2);
    EXPECT_EQ(key.holdTime, 0);
    EXPECT_EQ(key.repeatTime, 10);

    frame({}, 700);
    EXPECT_EQ(key.state, 2);
    EXPECT_EQ(key.holdTime, 700);

    frame({}, 1);
    EXPECT_EQ(key.state, 3);
    EXPECT_EQ(key.repeatTime, 711);

    frame({}, 1);
    EXPECT_EQ(key.repeatTime, 0);
    frame({}, 30);
    EXPECT_EQ(key.repeatTime, 30);
    frame({keyEvent(SDL_KEYUP, SDLK_x, 'x')}, 1);
    EXPECT_EQ(key.state, 0);
    EXPECT_EQ(key.holdTime, 0);
    EXPECT_EQ(key.repeatTime, 0);
}

TEST_F(SDLInputGLTest, AKeyUpClearsTheHoldTimeSoThatThePressBehindItWaitsAnew)
{
    KeyRecord& key = input->keys['x'];
    frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10);
    frame({}, 400);

    frame({keyEvent(SDL_KEYUP, SDLK_x, 'x'), keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10);

    EXPECT_EQ(key.state, 2);
    EXPECT_EQ(key.holdTime, 0);
    EXPECT_EQ(key.repeatTime, 420);
}

TEST_F(SDLInputGLTest, DoesNotReceiveWhatItSends)
{
    class Noticing : public SDLInput
    {
    public:
        using SDLInput::SDLInput;

        bool handleEvent(Event event) override
        {
            kinds.push_back(event.kind);
            return SDLInput::handleEvent(event);
        }

        std::vector<std::int32_t> kinds;
    };
    auto* const noticing = new Noticing(kernel, false);
    kernel->setCatcher(ObjectRef<EventCatcher>(noticing), 0x1FF, 0);
    Event update;
    update.kind = EV_UPDATE;
    for (const Uint16 place : {Uint16{1}, Uint16{2}}) {
        test::putEvents({motionEvent(place, place)});
        noticing->handleEvent(update);
    }

    EXPECT_THAT(noticing->kinds, ElementsAre(EV_UPDATE, EV_UPDATE));
    EXPECT_EQ(receiver->received.size(), 3U);
}

TEST_F(SDLInputGLTest, AKeyDownOfAHeldKeyPressesItAgainAndClearsNothingElse)
{
    KeyRecord& key = input->keys['x'];
    frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10);
    frame({}, 400);

    const Event event = frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x')}, 10).at(0);

    EXPECT_EQ(event.keyboard.pressed['x'], 1);
    EXPECT_EQ(key.state, 2);
    EXPECT_EQ(key.holdTime, 400);
    EXPECT_EQ(key.repeatTime, 420);
}

TEST_F(SDLInputGLTest, APressAndReleaseWithinAFrameIsLost)
{
    const Event event =
        frame({keyEvent(SDL_KEYDOWN, SDLK_x, 'x'), keyEvent(SDL_KEYUP, SDLK_x, 'x')}).at(0);

    EXPECT_EQ(event.keyboard.held['x'], 0);
    EXPECT_EQ(event.keyboard.pressed['x'], 0);
}

TEST_F(SDLInputGLTest, TheFirstMouseActivityOnlySetsTheReference)
{
    EXPECT_EQ(frame({buttonEvent(SDL_MOUSEBUTTONDOWN, 1, 30, 40)}).size(), 1U);
    EXPECT_EQ(input->lastX, 30);
    EXPECT_EQ(input->lastY, 40);
    EXPECT_TRUE(input->buttonLeft);

    const std::vector<Event> events = frame({motionEvent(35, 30)});

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].kind, EV_MOUSE);
    EXPECT_EQ(events[1].mouse.x, 35);
    EXPECT_EQ(events[1].mouse.y, 30);
    EXPECT_EQ(events[1].mouse.z, 0);
    EXPECT_EQ(events[1].mouse.dx, 5);
    EXPECT_EQ(events[1].mouse.dy, 10);
    EXPECT_EQ(events[1].mouse.dz, 0);
    EXPECT_EQ(events[1].mouse.left, 1);
    EXPECT_EQ(events[1].mouse.middle, 0);
    EXPECT_EQ(events[1].mouse.right, 0);
}

TEST_F(SDLInputGLTest, TheFirstMouseActivityIsToldByTheReferencesY)
{
    input->lastX = -1;
    input->lastY = 40;
    EXPECT_EQ(frame({motionEvent(30, 40)}).size(), 2U);

    input->lastX = 30;
    input->lastY = -1;
    EXPECT_EQ(frame({motionEvent(35, 30)}).size(), 1U);
}

TEST_F(SDLInputGLTest, AFrameWithAButtonAloneHasNoMotion)
{
    frame({motionEvent(30, 40)});

    const std::vector<Event> events = frame({buttonEvent(SDL_MOUSEBUTTONDOWN, 3, 30, 40)});

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].mouse.dx, 0);
    EXPECT_EQ(events[1].mouse.dy, 0);
    EXPECT_EQ(events[1].mouse.right, 1);
}

TEST_F(SDLInputGLTest, ButtonsOneToThreeAreHeldUntilReleased)
{
    frame({motionEvent(0, 0)});
    const std::vector<SDL_Event> presses = {buttonEvent(SDL_MOUSEBUTTONDOWN, 1, 0, 0),
                                            buttonEvent(SDL_MOUSEBUTTONDOWN, 2, 0, 0),
                                            buttonEvent(SDL_MOUSEBUTTONDOWN, 3, 0, 0)};
    const Event pressed = frame(presses).at(1);
    EXPECT_EQ(pressed.mouse.left, 1);
    EXPECT_EQ(pressed.mouse.middle, 1);
    EXPECT_EQ(pressed.mouse.right, 1);

    const Event released = frame({buttonEvent(SDL_MOUSEBUTTONUP, 2, 0, 0)}).at(1);
    EXPECT_EQ(released.mouse.left, 1);
    EXPECT_EQ(released.mouse.middle, 0);
    EXPECT_EQ(released.mouse.right, 1);
}

TEST_F(SDLInputGLTest, AButtonIsHeldByTheStateOfItsEventWhateverItsType)
{
    frame({motionEvent(0, 0)});
    SDL_Event pressed = buttonEvent(SDL_MOUSEBUTTONUP, 1, 0, 0);
    pressed.button.state = SDL_PRESSED;
    SDL_Event released = buttonEvent(SDL_MOUSEBUTTONDOWN, 1, 0, 0);
    released.button.state = SDL_RELEASED;

    EXPECT_EQ(frame({pressed}).at(1).mouse.left, 1);
    EXPECT_EQ(frame({released}).at(1).mouse.left, 0);
}

TEST_F(SDLInputGLTest, TheWheelIsMouseActivityAndNoButton)
{
    frame({motionEvent(0, 0)});

    const std::vector<Event> events = frame({buttonEvent(SDL_MOUSEBUTTONDOWN, 4, 7, 8)});

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].mouse.x, 7);
    EXPECT_EQ(events[1].mouse.left, 0);
    EXPECT_EQ(events[1].mouse.middle, 0);
    EXPECT_EQ(events[1].mouse.right, 0);
}

TEST_F(SDLInputGLTest, TheMouseEventCarriesTheKeysOfItsFrame)
{
    frame({motionEvent(0, 0)});

    const std::vector<Event> events =
        frame({motionEvent(1, 1), keyEvent(SDL_KEYDOWN, SDLK_x, 'x')});

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].keyboard.held, events[0].keyboard.held);
    EXPECT_EQ(events[1].keyboard.pressed, events[0].keyboard.pressed);
    EXPECT_EQ(events[1].keyboard.pressed['x'], 1);
}

TEST_F(SDLInputGLTest, ARefusedKeyboardEventEndsTheUpdateBeforeTheMouse)
{
    frame({motionEvent(0, 0)});
    receiver->refuses = [](const Event& event) { return event.kind == EV_KEYBOARD; };

    const std::vector<Event> events = frame({motionEvent(5, 5)});

    EXPECT_FALSE(wasUpdated);
    EXPECT_EQ(events.size(), 1U);
    EXPECT_EQ(input->lastX, 0);
}

TEST_F(SDLInputGLTest, ARefusedMouseEventEndsTheUpdate)
{
    frame({motionEvent(0, 0)});
    receiver->refuses = [](const Event& event) { return event.kind == EV_MOUSE; };

    frame({motionEvent(5, 5)});

    EXPECT_FALSE(wasUpdated);
}

TEST_F(SDLInputGLTest, OtherEventsStayInTheQueueFromFrameToFrame)
{
    frame({test::focusEvent(), motionEvent(1, 1), test::plainEvent(SDL_QUIT)});
    frame({});

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_ACTIVEEVENT, SDL_QUIT));
}

TEST_F(SDLInputGLTest, AnExposeThatComesLastDropsTheOthers)
{
    frame({test::focusEvent(), test::plainEvent(SDL_VIDEOEXPOSE)});

    EXPECT_THAT(test::takeEvents(), IsEmpty());
}

TEST_F(SDLInputGLTest, AnExposeBeforeAKeyIsPutBackAsTheKeyWasPolledLast)
{
    frame({test::plainEvent(SDL_VIDEOEXPOSE), keyEvent(SDL_KEYDOWN, SDLK_x, 'x')});

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_VIDEOEXPOSE));
}

TEST_F(SDLInputGLTest, WithoutTheGrabThePointerIsFree)
{
    const test::GLRecorder recorder;

    frame({motionEvent(30, 40)});
    frame({});

    EXPECT_EQ(input->lastX, 30);
    EXPECT_EQ(input->lastY, 40);
    EXPECT_THAT(recorder.calls({"SDL_WarpMouse", "SDL_ShowCursor"}), IsEmpty());
}

TEST_F(SDLInputGLTest, WithTheGrabThePointerReturnsEachFrame)
{
    makeInput(true);
    const test::GLRecorder recorder;

    EXPECT_EQ(frame({}).size(), 1U);

    EXPECT_THAT(recorder.calls({"SDL_WarpMouse", "SDL_ShowCursor"}),
                ElementsAre("SDL_WarpMouse(200, 200)", "SDL_ShowCursor(0)"));
    EXPECT_EQ(input->lastX, 200);
    EXPECT_EQ(input->lastY, 200);
}

TEST_F(SDLInputGLTest, WithTheGrabMotionCountsFromItsPlace)
{
    makeInput(true);
    frame({});

    // The grab gave the reference, so this is not the first activity any more. Where the warp's own
    // motion stands in the queue too, the injected one comes behind it.
    const std::vector<Event> events = frame({motionEvent(210, 190)});

    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].mouse.dx, events[1].mouse.x - 200);
    EXPECT_EQ(events[1].mouse.dy, 200 - events[1].mouse.y);
    EXPECT_EQ(input->lastX, 200);
    EXPECT_EQ(input->lastY, 200);
}

TEST_F(SDLInputGLTest, ARefusedKeyboardEventSkipsTheGrab)
{
    makeInput(true);
    receiver->refuses = [](const Event&) { return true; };
    const test::GLRecorder recorder;

    frame({});

    EXPECT_FALSE(wasUpdated);
    EXPECT_THAT(recorder.calls({"SDL_WarpMouse"}), IsEmpty());
}
} // namespace
} // namespace tamor
