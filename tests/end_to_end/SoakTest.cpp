#include "app/Application.h"
#include "gui/GLWidget.h"
#include "maths/Utilities.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"
#include "tests/support/HeldBytes.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <random>
#include <string>

namespace tamor::test
{
namespace
{
/// The demonstration for a number of frames, which says by how much its heap was larger in the
/// second half of them than in the first, at the most. Its first frames do not count.
class MeasuredApplication : public Application
{
public:
    explicit MeasuredApplication(int lastFrame) : endAt(lastFrame) {}

    bool handleEvent(Event event) override
    {
        const bool goesOn = Application::handleEvent(event);
        if (event.kind != EV_RENDER)
            return goesOn;
        frame++;
        if (frame > framesToSettle) {
            std::int64_t& most = frame <= endAt / 2 ? mostBefore : mostAfter;
            most = std::max(most, heldBytes());
        }
        betweenFrames();
        if (frame < endAt)
            return goesOn;
        std::cout << "grown by " << mostAfter - mostBefore << '\n';
        return false;
    }

protected:
    virtual void betweenFrames() {}

    int frame = 0;

private:
    static constexpr int framesToSettle = 100;

    int endAt;
    std::int64_t mostBefore = 0;
    std::int64_t mostAfter = 0;
};

std::int64_t growth(const std::string& output)
{
    const std::size_t words = output.find("grown by ");
    return words == std::string::npos ? INT64_MAX : std::stoll(output.substr(words + 9));
}

TEST(AThousandFramesGLTest, AllocateNothingThatGrows)
{
    const WorkingDirectory directory;
    // Digits that were not drawn before cost the driver a quarter of a megabyte once.
    std::string layout = directory.read("my.gui");
    layout.replace(layout.find(" fps "), 5, " rate ");
    directory.write("my.gui", layout);
    Demonstration demo([] {
        ObjectRef<MeasuredApplication>(new MeasuredApplication(1200))->run();
        return 0;
    });

    const ProcessEnd end = demo.end(std::chrono::seconds(200));

    EXPECT_EQ(end.status, 0) << demo.errors();
    // The driver's own buffers come and go by 8 kilobytes; 32 bytes a frame would be too many.
    EXPECT_LE(growth(demo.output()), 16 << 10);
}

constexpr int eventsInAll = 100000;
constexpr int eventsInAFrame = 50;
// A few more frames than it takes: the window library's queue is full now and then.
constexpr int framesOfEvents = eventsInAll / eventsInAFrame * 11 / 10;

/// Puts random input into the window library's queue, as if it came from the window.
class RandomlyUsedApplication : public MeasuredApplication
{
public:
    RandomlyUsedApplication() : MeasuredApplication(framesOfEvents) {}

protected:
    void betweenFrames() override
    {
        for (int i = 0; i < eventsInAFrame; i++) {
            SDL_Event event = randomEvent();
            accepted += SDL_PushEvent(&event) == 0 ? 1 : 0;
        }
        if (frame == framesOfEvents)
            std::cout << "accepted " << accepted << '\n';
        checkState();
    }

private:
    template <typename Integer>
    int below(Integer limit)
    {
        return std::uniform_int_distribution<int>(0, static_cast<int>(limit) - 1)(random);
    }

    SDL_Event randomEvent()
    {
        SDL_Event event{};
        const int kind = below(100);
        if (kind < 40)
            return motion();
        if (kind < 65) {
            const bool down = below(2) == 0;
            event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
            event.button.button = static_cast<Uint8>(1 + below(5));
            event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
            event.button.x = lastX;
            event.button.y = lastY;
            return event;
        }
        if (kind < 97) {
            event.type = below(2) == 0 ? SDL_KEYDOWN : SDL_KEYUP;
            // A symbol is one of an enumeration, a character any of 16 bits.
            event.key.keysym.sym = static_cast<SDLKey>(keyOtherThanEscape(512));
            event.key.keysym.unicode = static_cast<Uint16>(keyOtherThanEscape(65536));
            return event;
        }
        // What is of no interest waits in the queue until an expose event comes last.
        event.type = kind == 97 && below(10) == 0 ? SDL_ACTIVEEVENT : SDL_VIDEOEXPOSE;
        return event;
    }

    SDL_Event motion()
    {
        // Mostly a little way on, so that drags happen; now and then to a button or to anywhere,
        // outside as well.
        const int way = below(16);
        if (way == 0) {
            const Place buttons[] = {redButton,  greenButton,  blueButton,  quillButton,
                                     onlyOk,     noOfThree,    cancelOfTwo, yesOfTwo,
                                     optionsTab, slidersTab,   checksTab,   listBox,
                                     notebook,   iconOfRow(1), iconOfRow(2)};
            const Place to = buttons[below(std::size(buttons))];
            lastX = static_cast<Uint16>(to.x);
            lastY = static_cast<Uint16>(to.y);
        } else {
            const bool jumps = way == 1;
            lastX =
                static_cast<Uint16>(jumps ? below(1000) : (lastX + 1000 + below(21) - 10) % 1000);
            lastY = static_cast<Uint16>(jumps ? below(700) : (lastY + 700 + below(21) - 10) % 700);
        }
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = lastX;
        event.motion.y = lastY;
        return event;
    }

    int keyOtherThanEscape(int limit)
    {
        const int key = below(10) == 0 ? below(limit) : below(300);
        return key == 27 ? 0 : key;
    }

    /// Ends the process with the status 3 when a widget stands outside what it may be.
    static void checkState()
    {
        for (const char* name : {"red", "green", "blue", "horz1", "horz2"}) {
            const float value = GLWidget::find(name)->getValue();
            if (!(value > 0.0F && value < 1.0F))
                fail(name);
        }
        if (GLWidget::find("choice")->getSelection() > 3)
            fail("choice");
        int chosen = 0;
        for (const char* name : {"quillpen", "pencil", "brush", "chalk"})
            chosen += GLWidget::find(name)->isActive() ? 1 : 0;
        if (chosen != 1)
            fail("the options");
    }

    static void fail(const char* name)
    {
        std::cerr << name << " is outside what it may be\n";
        std::cerr.flush();
        _exit(3);
    }

    std::mt19937 random{20260101};
    Uint16 lastX = 400;
    Uint16 lastY = 300;
    int accepted = 0;
};

TEST(AHundredThousandRandomEventsGLTest, LeaveTheDemonstrationWithinItsStates)
{
    const WorkingDirectory directory;
    // Neither button nor list ends the run, and the windows stay where they are found again.
    std::string layout = directory.read("my.gui");
    layout.replace(layout.find(" exitbut "), 9, " nothing ");
    for (std::size_t at = layout.find(" combo1"); at != std::string::npos;
         at = layout.find(" combo1"))
        layout.replace(at, 7, " choice");
    for (const char* name : {"main", "choices", "notes"}) {
        const std::size_t line = layout.find(std::string("CADD Win ") + name);
        layout.replace(layout.find(" 1 ", line), 3, " 0 ");
    }
    directory.write("my.gui", layout);
    Demonstration demo([] {
        ObjectRef<RandomlyUsedApplication>(new RandomlyUsedApplication)->run();
        return 0;
    });

    const ProcessEnd end = demo.end(std::chrono::seconds(280));

    EXPECT_EQ(end.status, 0) << demo.errors();
    const std::size_t words = demo.output().find("accepted ");
    ASSERT_NE(words, std::string::npos);
    EXPECT_GE(std::stoi(demo.output().substr(words + 9)), eventsInAll);
    // Boxes were opened and answered; each leaves a theme, a label and a frame, some 1,200 bytes.
    // The driver takes and gives back megabytes by what is drawn.
    EXPECT_GE(countOccurrences(demo.errors(), "reading theme messagebox.theme"), 40);
    EXPECT_LE(growth(demo.output()), 4 << 20);
}
} // namespace
} // namespace tamor::test
