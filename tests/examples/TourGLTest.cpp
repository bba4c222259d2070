#include "platform/GLee.h"

#include "examples/tour/Tour.h"
#include "gui/GLWidget.h"
#include "platform/SDLInput.h"
#include "tests/examples/Example.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/SDLWords.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/support/VirtualDisplay.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tour::Source;
using tour::Tour;
using tour::Way;

/// A place in the window's pixels.
struct Place
{
    int x;
    int y;
};

constexpr int halfHeight = 300;
constexpr Place besideThePanel = {600, 300};

Place pixelOf(float x, float y)
{
    return {400 + static_cast<int>(std::lround(halfHeight * x)),
            halfHeight - static_cast<int>(std::lround(halfHeight * y))};
}

/// A place on a page of the panel, as examples/tour/data/panel.gui counts it: from the corner of the
/// pages, within three margins.
Place onPage(float x, float y)
{
    return pixelOf(-1.30F + 0.03F + x, -0.50F + 0.03F + y);
}

/// The same of the window below the pages.
Place below(float x, float y)
{
    return pixelOf(-1.30F + 0.03F + x, -0.96F + 0.03F + y);
}

const std::array tabs = {Place{38, 41}, Place{100, 41}, Place{159, 41}, Place{212, 41}};

/// The tour in a window of 800 by 600, in a copy of its directory, with somebody at the pointer and
/// the keys: what they do goes through SDL's queue and the engine's input.
class TourTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        GLWidget::themes.clear();
        std::filesystem::copy(TOUR_DATA, ".", std::filesystem::copy_options::recursive);
    }

    void TearDown() override
    {
        tour = nullptr;
        catcher = ObjectRef<EventCatcher>();
        input = ObjectRef<EventCatcher>();
        kernel = ObjectRef<Kernel>();
        collectAll();
        WindowTest::TearDown();
    }

    void start()
    {
        kernel = new Kernel;
        input = new SDLInput(kernel, false);
        tour = new Tour(kernel);
        catcher = tour;
        send(EV_LOAD_RESOURCES);
        send(EV_LOAD_GRAPHICS_RESOURCES);
        moveTo(besideThePanel); // the first motion only says where the pointer is
        moveTo(besideThePanel);
    }

    bool send(std::int32_t kind, std::int32_t delta = 0)
    {
        Event event;
        event.kind = kind;
        event.delta = delta;
        return kernel->sendEvent(ObjectRef<EventCatcher>(), event);
    }

    bool step(std::int32_t milliseconds = 16) { return send(EV_UPDATE, milliseconds); }

    bool moveTo(Place place)
    {
        pointer = place;
        SDL_Event event{};
        event.type = SDL_MOUSEMOTION;
        event.motion.x = static_cast<Uint16>(place.x);
        event.motion.y = static_cast<Uint16>(place.y);
        SDL_PushEvent(&event);
        return step();
    }

    bool button(bool isDown)
    {
        SDL_Event event{};
        event.type = isDown ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.state = isDown ? SDL_PRESSED : SDL_RELEASED;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = static_cast<Uint16>(pointer.x);
        event.button.y = static_cast<Uint16>(pointer.y);
        SDL_PushEvent(&event);
        return step();
    }

    bool click(Place place)
    {
        moveTo(place);
        return button(true) && button(false);
    }

    void drag(Place from, Place to)
    {
        moveTo(from);
        button(true);
        for (int part = 1; part <= 8; part++)
            moveTo({from.x + (to.x - from.x) * part / 8, from.y + (to.y - from.y) * part / 8});
        button(false);
    }

    bool key(SDLKey symbol, bool isDown)
    {
        SDL_Event event{};
        event.type = isDown ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.keysym.sym = symbol;
        SDL_PushEvent(&event);
        return step();
    }

    bool type(SDLKey symbol)
    {
        const bool goesOn = key(symbol, true);
        key(symbol, false);
        return goesOn;
    }

    /// Chooses a row of a list on the page that is shown.
    void choose(Place list, int row)
    {
        click(list);
        // Rows are two font heights apart, the first right below the box.
        click({list.x, list.y + 15 + 23 * row + 11});
    }

    Picture sceneAlone()
    {
        tour->seconds = 1.0F; // of the waves
        tour->drawScene();
        tour->drawScene(); // buffers hold the pose of the drawing before
        return picture();
    }

    const TemporaryDirectory directory;
    ObjectRef<Kernel> kernel;
    ObjectRef<EventCatcher> input;
    ObjectRef<EventCatcher> catcher;
    Tour* tour = nullptr;
    Place pointer = {0, 0};
};

class TourPanelGLTest : public TourTest
{};

TEST_F(TourPanelGLTest, TheLandIsMadeFromWhatIsChosen)
{
    start();
    const Place list = onPage(0.2F, 1.10F);

    choose(list, 1);
    EXPECT_EQ(tour->settings.land.source, Source::noise);
    choose(list, 2);
    EXPECT_EQ(tour->settings.land.source, Source::picture);
    choose(list, 0);
    EXPECT_EQ(tour->settings.land.source, Source::fractal);
}

TEST_F(TourPanelGLTest, SlidersChangeTheLandWhenTheyAreLetGo)
{
    start();
    const float before = tour->land.size();

    drag(onPage(0.415F, 0.83F), onPage(0.595F, 0.83F));
    drag(onPage(0.415F, 0.61F), onPage(0.235F, 0.61F));
    drag(onPage(0.415F, 0.39F), onPage(0.595F, 0.39F));

    EXPECT_EQ(before, 240.0F);
    EXPECT_NEAR(tour->land.size(), 290.0F, 3.0F); // a pixel is a little less than a unit
    EXPECT_NEAR(tour->settings.land.height, 21.0F, 1.0F);
    EXPECT_NEAR(tour->settings.land.roughness, 0.75F, 0.02F);
}

TEST_F(TourPanelGLTest, AnotherFractalHasOtherHeights)
{
    start();
    const float before = tour->land.heightAt(10.0F, 10.0F);

    click(onPage(0.08F, 0.25F));

    EXPECT_NE(tour->land.heightAt(10.0F, 10.0F), before);
}

TEST_F(TourPanelGLTest, ThingsAreDrawnAsIsChosen)
{
    start();
    click(tabs[1]);
    const Place list = onPage(0.2F, 1.10F);

    choose(list, 2);
    EXPECT_EQ(tour->settings.way, Way::immediate);
    choose(list, 1);
    EXPECT_EQ(tour->settings.way, Way::arrays);
    for (const float y : {0.78F, 0.66F, 0.54F, 0.42F})
        click(onPage(0.05F, y + 0.03F));

    EXPECT_TRUE(tour->settings.showsWires);
    EXPECT_TRUE(tour->settings.showsBones);
    EXPECT_TRUE(tour->settings.showsBounds);
    EXPECT_TRUE(tour->settings.usesToon);
}

TEST_F(TourPanelGLTest, TheHourAndTheLightsAreSet)
{
    start();
    click(tabs[2]);

    drag(onPage(0.415F, 1.11F), onPage(0.655F, 1.11F));
    drag(onPage(0.415F, 0.89F), onPage(0.655F, 0.89F));
    click(onPage(0.05F, 0.75F));
    click(onPage(0.05F, 0.63F));

    EXPECT_NEAR(tour->settings.hour, 17.5F, 0.3F);
    EXPECT_NEAR(tour->settings.fog, 0.667F, 0.02F);
    EXPECT_FALSE(tour->settings.usesWaves);
    EXPECT_FALSE(tour->settings.hasLantern);
}

TEST_F(TourPanelGLTest, ResetAsksFirst)
{
    start();
    drag(onPage(0.415F, 0.61F), onPage(0.235F, 0.61F));
    const Place no = {421, 341};
    const Place yes = {363, 341};

    click(below(0.27F, 0.03F));
    click(no);
    EXPECT_NEAR(tour->settings.land.height, 21.0F, 1.0F);
    click(below(0.27F, 0.03F));
    click(yes);

    EXPECT_EQ(tour->settings.land.height, 34.0F);
    EXPECT_EQ(GLWidget::find("height")->getValue(), 0.5F);
}

TEST_F(TourPanelGLTest, ShowsTheTimeOfItsFirstFrame)
{
    start(); // with steps of 16 milliseconds

    const GLRecorder recorder;
    tour->drawPanel();

    EXPECT_THAT(recorder.calls({"glCallLists"}), Contains(HasSubstr("\"16.0 ms a frame\"")));
}

TEST_F(TourPanelGLTest, LeaveEndsTheProgram)
{
    start();
    moveTo(below(0.50F, 0.03F));

    EXPECT_FALSE(button(true));
}

TEST_F(TourPanelGLTest, TabHidesThePanelAndShowsItAgain)
{
    start();

    type(SDLK_TAB);
    click(onPage(0.08F, 0.25F)); // where a button was
    EXPECT_TRUE(tour->panel.isHidden);
    EXPECT_EQ(tour->settings.land.seed, 16U);
    type(SDLK_TAB);

    EXPECT_FALSE(tour->panel.isHidden);
}

TEST_F(TourPanelGLTest, FindsItsEdgeInAWiderWindow)
{
    closeTestWindow();
    openTestWindow(960, 600);

    start();

    // 1.6 units to the left of the middle, of which the panel keeps 0.033 free.
    EXPECT_NEAR(GLWidget::find("pages")->getRect().x, -1.6F + 0.0333F, 0.001F);
}

class TourFlightGLTest : public TourTest
{};

TEST_F(TourFlightGLTest, KeysFlyUnlessTheyAreTyped)
{
    start();
    const Vector atFirst = tour->flight.eye();
    click(tabs[3]);
    click(onPage(0.3F, 0.6F));

    type(SDLK_w);

    EXPECT_THAT(tour->panel.scriptText(), StartsWith("whour"));
    EXPECT_EQ(tour->flight.eye().z, atFirst.z);

    // A press beside the box takes the keyboard away.
    click(besideThePanel);
    type(SDLK_w);

    EXPECT_THAT(tour->panel.scriptText(), StartsWith("whour"));
    EXPECT_LT(tour->flight.eye().z, atFirst.z);
}

TEST_F(TourFlightGLTest, EscapeEndsTheTypingAndThenTheProgram)
{
    start();
    click(tabs[3]);
    click(onPage(0.3F, 0.6F));

    EXPECT_TRUE(type(SDLK_ESCAPE));
    EXPECT_FALSE(type(SDLK_ESCAPE));
}

TEST_F(TourFlightGLTest, AnEscapeThatStaysDownEndsTheTypingAlone)
{
    start();
    click(tabs[3]);
    click(onPage(0.3F, 0.6F));

    EXPECT_TRUE(key(SDLK_ESCAPE, true));
    for (int n = 0; n < 20; n++)
        EXPECT_TRUE(step(100)) << n; // meanwhile the input says again that it is pressed
    EXPECT_TRUE(key(SDLK_ESCAPE, false));

    EXPECT_FALSE(type(SDLK_ESCAPE));
}

TEST_F(TourFlightGLTest, TheKeyboardDoesNotStayOnAHiddenPage)
{
    start();
    click(tabs[3]);
    click(onPage(0.3F, 0.6F));
    click(tabs[0]);

    type(SDLK_w);

    EXPECT_THAT(tour->panel.scriptText(), StartsWith("hour"));
}

TEST_F(TourFlightGLTest, ADragBesideThePanelLooksRound)
{
    start();
    step();
    const Picture before = sceneAlone();

    drag(onPage(0.4F, 0.05F), {500, 300});
    EXPECT_TRUE(sceneAlone().bytes == before.bytes) << "a drag that began on the panel";
    drag({500, 300}, {560, 300});

    EXPECT_FALSE(sceneAlone().bytes == before.bytes);
}

TEST_F(TourFlightGLTest, TheTripBeginsWhenNothingIsTouchedAndEndsAtATouch)
{
    start();

    for (int second = 0; second < 29; second++)
        step(1000);
    EXPECT_FALSE(tour->flight.isOnTrip());
    step(2000);
    EXPECT_TRUE(tour->flight.isOnTrip());
    type(SDLK_w);

    EXPECT_FALSE(tour->flight.isOnTrip());
}

TEST_F(TourFlightGLTest, NoTripBeginsAtOnceWhenAllBeginsAgain)
{
    start();
    step(31000);
    ASSERT_TRUE(tour->flight.isOnTrip());

    tour->beginAgain();
    step(1000);

    EXPECT_FALSE(tour->flight.isOnTrip());
}

TEST_F(TourFlightGLTest, TheTripComesRoundAboveGroundAndSea)
{
    start();
    click(below(0.07F, 0.03F));
    ASSERT_TRUE(tour->flight.isOnTrip());
    step(16);
    const Vector first = tour->flight.eye();

    for (int part = 0; part < 400; part++) {
        step(100);
        const Vector eye = tour->flight.eye();
        ASSERT_GE(eye.y, std::max(tour->land.heightAt(eye.x, eye.z), 0.0F) + 2.0F) << part;
    }

    // Eight stops of five seconds.
    EXPECT_NEAR(tour->flight.eye().x, first.x, 0.01F);
    EXPECT_NEAR(tour->flight.eye().y, first.y, 0.01F);
    EXPECT_NEAR(tour->flight.eye().z, first.z, 0.01F);
}

class TourScriptGLTest : public TourTest
{
protected:
    /// Chooses a sample and runs it.
    void run(int sample)
    {
        click(tabs[3]);
        choose(onPage(0.2F, 1.19F), sample);
        click(onPage(0.07F, 0.28F));
    }
};

TEST_F(TourScriptGLTest, AWoodGrows)
{
    start();
    const std::size_t before = tour->things.all.size();

    run(3);

    EXPECT_GT(tour->things.all.size(), before + 15);
}

TEST_F(TourScriptGLTest, AFlockCirclesUntilItIsStopped)
{
    start();
    const std::size_t before = tour->things.all.size();

    run(2);
    ASSERT_EQ(tour->things.all.size(), before + 13);
    const Vector there = tour->things.all.back().place;
    step(100);
    const Vector further = tour->things.all.back().place;
    EXPECT_NE(further.x, there.x);
    click(onPage(0.26F, 0.28F));
    const Vector stopped = tour->things.all.back().place;
    step(100);

    EXPECT_EQ(tour->things.all.back().place.x, stopped.x);
}

TEST_F(TourScriptGLTest, ADayGoesByUntilItIsStopped)
{
    start();

    run(1);
    step(100);
    const float later = tour->settings.hour;
    EXPECT_GT(later, 18.04F);
    click(onPage(0.26F, 0.28F));
    const float stopped = tour->settings.hour;
    step(100);

    EXPECT_EQ(tour->settings.hour, stopped);
}

TEST_F(TourScriptGLTest, WhatAReaderChangesIsRun)
{
    start();
    const std::size_t before = tour->things.all.size();
    click(tabs[3]);
    choose(onPage(0.2F, 1.19F), 0);
    ASSERT_THAT(tour->panel.scriptText(), HasSubstr("n < 8"));
    click(onPage(0.3F, 0.6F));
    // Behind "hour(7);", "n = 0;" and "while (n < 8": there stands the number.
    for (int n = 0; n < 28; n++)
        type(SDLK_RIGHT);
    type(SDLK_BACKSPACE);
    type(SDLK_3);

    click(onPage(0.07F, 0.28F));

    EXPECT_EQ(tour->things.all.size(), before + 3);
    EXPECT_EQ(tour->settings.hour, 7.0F);
    EXPECT_EQ(tour->flight.eye().x, 15.0F);
}

TEST_F(TourScriptGLTest, AScriptWithAnErrorIsNotRun)
{
    start();
    const std::size_t before = tour->things.all.size();

    const std::string words = tour->scripting.run("spawn(\"tree\", 0, 0);\nx = \"open;\n");

    EXPECT_EQ(words, "2:5: error: the string is not finished: the program ends [script-string]");
    EXPECT_EQ(tour->things.all.size(), before);
}

TEST_F(TourScriptGLTest, WhatTheCheckerSaysFitsThePanel)
{
    start();
    click(tabs[3]);
    tour->panel.tell("2:5: error: 100 % of the string is not finished: the program ends [script]");

    const GLRecorder recorder;
    tour->drawPanel();

    // Row by row, at most 34 characters each.
    EXPECT_THAT(recorder.calls({"glCallLists"}),
                testing::IsSupersetOf({HasSubstr("\"2:5: error: 100 % of the string is\""),
                                       HasSubstr("\"not finished: the program ends\""),
                                       HasSubstr("\"[script]\"")}));
}

TEST_F(TourScriptGLTest, AWordThatIsLongerThanARowIsBroken)
{
    start();
    click(tabs[3]);
    tour->panel.tell("no abcdefghijklmnopqrstuvwxyzabcdefghijklmn");

    const GLRecorder recorder;
    tour->drawPanel();

    EXPECT_THAT(recorder.calls({"glCallLists"}),
                testing::IsSupersetOf({HasSubstr("\"no\""),
                                       HasSubstr("\"abcdefghijklmnopqrstuvwxyzabcdefgh\""),
                                       HasSubstr("\"ijklmn\"")}));
}

TEST_F(TourScriptGLTest, AScriptThatDoesNotEndIsEnded)
{
    start();

    for (const char* script : {"while (1 == 1) { hour(5); }\n", "while (1 == 1) { n = 2; }\n",
                               "func f() { f(); }\nf();\n"}) {
        EXPECT_EQ(tour->scripting.run(script), "the script did not end, and was ended") << script;
    }
    EXPECT_EQ(tour->scripting.run("hour(5);\n"), "");
}

TEST_F(TourScriptGLTest, WhatIsNoFunctionIsNotCalledLater)
{
    start();

    EXPECT_EQ(tour->scripting.run("after(1, \"nobody\");\n"), "");
    EXPECT_EQ(tour->scripting.update(500.0F), "");

    EXPECT_EQ(tour->scripting.update(600.0F), "there is no function \"nobody\"");
}

TEST_F(TourScriptGLTest, WordsWithSenselessArgumentsDoNothing)
{
    start();
    const std::size_t before = tour->things.all.size();

    tour->scripting.run("spawn(1, 2, 3); spawn(\"dragon\", 2, 3); move(-1, 1); move(9999, 1);"
                        "turn(\"a\", 1); colour(1, 2); camera(1); ground(\"x\"); random(1);"
                        "after(\"x\", 1); hour(\"x\");\n");

    EXPECT_EQ(tour->things.all.size(), before);
    EXPECT_EQ(tour->settings.hour, 9.5F);
}

class TourStateGLTest : public TourTest
{
protected:
    /// Draws with every facility.
    void drawAll()
    {
        for (const Way way : {Way::buffers, Way::arrays, Way::immediate}) {
            const bool isOn = way == Way::immediate;
            tour->settings.way = way;
            tour->settings.showsWires = isOn;
            tour->settings.showsBones = isOn;
            tour->settings.showsBounds = isOn;
            tour->settings.usesToon = way == Way::arrays;
            tour->settings.usesWaves = !isOn;
            tour->settings.hour = isOn ? 23.0F : 9.5F;
            tour->settings.fog = 1.0F;
            tour->drawScene();
        }
        tour->settings = tour::Settings();
    }

    Picture panelAlone()
    {
        glClearColor(0.5F, 0.5F, 0.5F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        tour->drawPanel();
        return picture();
    }
};

TEST_F(TourStateGLTest, ThePanelMakesTheSameCallsWithAndWithoutTheScene)
{
    start();
    const auto calls = [&] {
        const GLRecorder recorder;
        tour->drawPanel();
        return recorder.calls();
    };

    const std::vector<std::string> without = calls();
    drawAll();

    EXPECT_GT(without.size(), 200U);
    EXPECT_EQ(calls(), without);
}

TEST_F(TourStateGLTest, ThePanelLooksTheSameWithAndWithoutTheScene)
{
    start();

    const Picture without = panelAlone();
    drawAll();

    EXPECT_TRUE(panelAlone().bytes == without.bytes);
}

TEST_F(TourStateGLTest, TheSceneLooksTheSameWithAndWithoutThePanel)
{
    start();

    const Picture without = sceneAlone();
    drawAll();
    for (int page = 0; page < 4; page++) {
        tour->panel.turnTo(page);
        tour->drawPanel();
    }

    EXPECT_TRUE(sceneAlone().bytes == without.bytes);
}

TEST_F(TourStateGLTest, EveryWayDrawsTheSameButForTheNormals)
{
    start();

    const Picture buffers = sceneAlone();
    tour->settings.way = Way::arrays;

    // The two round differently where edges meet.
    const Picture arrays = sceneAlone();
    int different = 0;
    for (std::size_t n = 0; n < arrays.bytes.size(); n++)
        different += std::abs(arrays.bytes[n] - buffers.bytes[n]) > 8 ? 1 : 0;
    EXPECT_LT(different, 400);
}

TEST_F(TourStateGLTest, NewLandscapesGiveBackTexturesAndBuffers)
{
    start();
    const auto objects = [] {
        int count = 0;
        for (GLuint name = 1; name < 2000; name++)
            count += glIsTexture(name) + glIsBuffer(name);
        return count;
    };
    tour->drawScene();
    const int before = objects();

    for (int n = 0; n < 3; n++) {
        click(onPage(0.08F, 0.25F));
        tour->drawScene();
    }

    EXPECT_EQ(tour->settings.land.seed, 19U);
    EXPECT_EQ(objects(), before);
}

#ifndef __SANITIZE_ADDRESS__
/// How many of something a test makes: a few, or as many as the environment asks for.
int countFrom(const char* variable, int few)
{
    const char* const wanted = std::getenv(variable);
    return wanted == nullptr ? few : std::stoi(wanted);
}

/// Says how much memory there is, too. With TOUR_TERRAINS=100 TOUR_FRAMES=10000 it measures for
/// minutes.
TEST_F(TourStateGLTest, NewLandscapesAndFramesLeaveNoMemoryBehind)
{
    const int terrains = countFrom("TOUR_TERRAINS", 6);
    const int frames = countFrom("TOUR_FRAMES", 12);
    closeTestWindow();
    openTestWindow(64, 48); // in which a frame takes the shortest time
    start();
    const auto makeLandscape = [&](int number) {
        tour->settings.land.source = static_cast<Source>(number % 3);
        tour->settings.land.seed = static_cast<std::uint32_t>(number);
        step();
    };
    const auto drawFrame = [&] {
        step();
        tour->drawScene();
        tour->drawPanel();
        SDL_GL_SwapBuffers(); // until then the driver keeps what is to be drawn
    };
    // The most that the heap holds while each of `count` landscapes is drawn.
    const auto mostMemory = [&](int count) {
        std::size_t most = 0;
        for (int n = 0; n < count; n++) {
            makeLandscape(n);
            for (int frame = 0; frame < frames / terrains; frame++)
                drawFrame();
            most = std::max(most, mallinfo2().uordblks + mallinfo2().hblkhd);
        }
        return most;
    };
    mostMemory(3);

    const std::size_t first = mostMemory(terrains / 2);
    const std::size_t second = mostMemory(terrains / 2);

    std::cout << "at most " << first / 1000 << " kilobytes in the first half, " << second / 1000
              << " in the second\n";
    // The bytes of one texture alone would be a megabyte a landscape, and here are three. What the
    // driver keeps comes and goes by up to two and a half, of which the most has been seen before.
    EXPECT_LT(second, first + 1500000);
}
#endif

class TourMissingGLTest : public TourTest
{};

TEST_F(TourMissingGLTest, SaysWhichFilesAreNotThereAndShowsTheRest)
{
    for (const char* file : {"panel.gui", "fish.ms3d", "vase.ms3d", "crater.tga", "water.frag",
                             "toon.vert", "scripts/wood.script"})
        std::filesystem::remove(file);
    std::string errors;
    {
        CapturedErrors captured;
        start();
        errors = captured.text();
    }
    tour->settings.land.source = Source::picture;
    tour->settings.usesToon = true;
    step();

    EXPECT_EQ(errors, "crater.tga is missing: a fractal stands in for it\n"
                      "water.frag is missing\n"
                      "vase.ms3d is missing\n"
                      "fish.ms3d is missing\n"
                      "toon.vert is missing\n"
                      "panel.gui is missing: the tour goes without its panel\n");
    const Picture shown = sceneAlone();
    EXPECT_NE(shown.at(400, 10), shown.at(400, 590));
}
TEST_F(TourMissingGLTest, GoesWithoutBuffersAndPrograms)
{
    __GLEW_ARB_vertex_buffer_object = GL_FALSE;
    __GLEW_VERSION_2_0 = GL_FALSE;
    std::string errors;
    {
        CapturedErrors captured;
        start();
        errors = captured.text();
    }
    tour->settings.usesToon = true;

    const GLRecorder recorder;
    const Picture shown = sceneAlone();

    __GLEW_ARB_vertex_buffer_object = GL_TRUE;
    __GLEW_VERSION_2_0 = GL_TRUE;
    EXPECT_THAT(errors, StartsWith("no buffers here: models are drawn from arrays\n"
                                   "no OpenGL 2 here: water.frag is left out\n"
                                   "no OpenGL 2 here: toon.frag is left out\n"));
    // A tower and the sky beside it.
    EXPECT_NE(shown.at(664, 200), shown.at(760, 200));
    // The engine's own way without buffers would show the normals.
    EXPECT_THAT(recorder.calls({"glBegin"}), Not(Contains("glBegin(GL_LINES)")));
}

/// A run of the program itself.
TEST(TourProgramGLTest, LeavesTenPictures)
{
    const TemporaryDirectory directory;
    useTestDisplay();
    ChildProcess program({EXAMPLE_TOUR, "--size", "400x300", "--trip", "--pictures", "."});

    EXPECT_EQ(program.wait(std::chrono::minutes(3)).status, 0);

    std::vector<std::string> pictures;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        pictures.push_back(entry.path().filename().string());
    EXPECT_THAT(pictures, testing::UnorderedElementsAre(
                              "01-morning.ppm", "02-noise.ppm", "03-picture.ppm", "04-things.ppm",
                              "05-toon.ppm", "06-wires.ppm", "07-evening.ppm", "08-night.ppm",
                              "09-script.ppm", "10-trip.ppm"));
    std::set<std::string> different;
    for (const std::string& picture : pictures) {
        const Picture shown = readScreenshot(picture);
        EXPECT_EQ(shown.width, 400) << picture;
        different.emplace(shown.bytes.begin(), shown.bytes.end());
    }
    EXPECT_EQ(different.size(), 10U);
}

TEST(TourProgramGLTest, SaysHowItIsUsed)
{
    for (const std::vector<std::string>& wrong :
         {std::vector<std::string>{"--fast"}, {"--size", "800"}, {"--size", "0x600"}, {"--size"}}) {
        std::vector<std::string> words = {EXAMPLE_TOUR};
        words.insert(words.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(runExample(words, "Usage: tamor-tour [--size WIDTHxHEIGHT] [--trip] "
                                    "[--pictures DIRECTORY]\n"),
                  2);
    }
}

TEST(TourProgramGLTest, FailsWhereNoWindowOpens)
{
    ChildProcess program({EXAMPLE_TOUR}, "", {{"SDL_VIDEODRIVER", "dummy"}});

    EXPECT_EQ(program.wait().status, 1);
    EXPECT_EQ(program.errors(), std::string("SDL_SetVideoMode() Failed. SDL_Error: ") +
                                    wordsOfNoOpenGL() + "\nError sending openwindow event\n");
}
} // namespace
} // namespace tamor::test
