#include "app/Application.h"

#include "gui/GLWidget.h"
#include "gui/Theme.h"
#include "models/Model.h"
#include "platform/GLRender.h"
#include "platform/SDLInput.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"
#include "tests/support/VirtualDisplay.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <vector>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// Reaches the fields of widgets, which the system has no accessors for.
struct Fields : GLWidget
{
    static std::string& textOf(GLWidget& widget) { return widget.*(&Fields::text); }
    static float& valueOf(GLWidget& widget) { return widget.*(&Fields::value); }
    static float glowOf(GLWidget& widget) { return widget.*(&Fields::glow); }
    static bool& clickedOf(GLWidget& widget) { return widget.*(&Fields::clicked); }
    static std::uint32_t& selectionOf(GLWidget& widget) { return widget.*(&Fields::selection); }
};

/// Keeps the kinds of the events that others send.
class Listener : public EventCatcher
{
public:
    bool handleEvent(Event event) override
    {
        kinds.push_back(event.kind);
        return answer;
    }

    std::vector<std::int32_t> kinds;
    bool answer = true;
};

/// An application in a directory of its own, with a kernel that does not run.
class ApplicationGLTest : public test::WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        application = new Application;
        application->kernel = new Kernel;
        listener = new Listener;
        application->kernel->addCatcher(ObjectRef<EventCatcher>(listener), 0x1FF, 0);
    }

    void TearDown() override
    {
        WindowTest::TearDown();
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
        GLWidget::widgets.clear();
        GLWidget::topLevel.clear();
    }

    /// Has the application load a layout of these lines, behind one that names a theme.
    void load(const std::string& lines)
    {
        for (const char* theme : {"plain.theme", "messagebox.theme", "default.theme"})
            directory.write(theme, "1 1 1\n1 1 1\n1 1 1\n1 1 1\n1\n1\n1\n0.01\n0.1\n0\n"
                                   "0.04 0.05\n0.7 1\n0 0 0\n0.1\nNULL\n1\n");
        directory.write("my.gui", "THEM plain.theme x\n" + lines);
        const test::CapturedErrors ignored;
        EXPECT_TRUE(send(EV_LOAD_GRAPHICS_RESOURCES));
    }

    bool send(std::int32_t kind, std::int32_t delta = 0)
    {
        Event event;
        event.kind = kind;
        event.delta = delta;
        return application->handleEvent(event);
    }

    bool sendKeys(const std::vector<std::size_t>& held, std::int32_t modifiers = 0)
    {
        Event event;
        event.kind = EV_KEYBOARD;
        for (const std::size_t key : held) {
            event.keyboard.held[key] = 1;
            event.keyboard.pressed[key] = 1;
        }
        event.keyboard.modifiers = modifiers;
        return application->handleEvent(event);
    }

    static GLWidget& widget(const char* name) { return *GLWidget::find(name); }
    static const std::string& textOf(const char* name) { return Fields::textOf(widget(name)); }

    const test::TemporaryDirectory directory;
    Application* application = nullptr;
    Listener* listener = nullptr;
};

TEST_F(ApplicationGLTest, StartsWithAZeroedKeyboardAndCounts)
{
    EXPECT_EQ(application->texture, 0U);
    EXPECT_THAT(application->keyboard.held, testing::Each(0));
    EXPECT_EQ(application->frameCount, 0);
    EXPECT_EQ(application->frameTime, 0);
    EXPECT_THAT(application->objects, IsEmpty());
    EXPECT_TRUE(application->parent.isEmpty());
}

TEST_F(ApplicationGLTest, TakesALightNumberForItsLife)
{
    EXPECT_EQ(application->light.number, 0x4000U);
    EXPECT_EQ(Light().number, 0x4001U);
}

TEST_F(ApplicationGLTest, LoadsTheLayoutWithTheClearColourAtBlack)
{
    directory.write("my.gui", "CADD Label greeting NULL 0 0 Hello\n");
    const test::GLRecorder recorder;
    const test::CapturedErrors errors;

    EXPECT_TRUE(send(EV_LOAD_GRAPHICS_RESOURCES));

    EXPECT_EQ(recorder.calls().front(), "glClearColor(0, 0, 0, 0)");
    EXPECT_NE(GLWidget::find("greeting"), nullptr);
}

TEST_F(ApplicationGLTest, SetsUpFourObjectsAndTheOrigin)
{
    EXPECT_TRUE(send(EV_INITIAL_SETUP));

    const std::vector<Vector> places = {{-3, 15, 0}, {3, 15, 0}, {-3, 10, 0}, {3, 10, 0}};
    ASSERT_EQ(application->objects.size(), 4U);
    for (std::size_t index = 0; index < 4; ++index) {
        const PhysicsObject& object = application->objects[index];
        EXPECT_EQ(object.position.x, places[index].x);
        EXPECT_EQ(object.position.y, places[index].y);
        EXPECT_EQ(object.position.z, places[index].z);
        EXPECT_EQ(object.velocity.length(), 0.0F);
        EXPECT_EQ(object.velocity.w, 1.0F);
        EXPECT_EQ(object.mass, 10.0F);
    }
    EXPECT_EQ(application->origin[0], 0.0F);
    EXPECT_EQ(application->origin[1], 0.0F);
    EXPECT_EQ(application->origin[2], 3600.0F);
}

TEST_F(ApplicationGLTest, SeedsTheRandomNumbersByTheTime)
{
    const auto numbers = [] { return std::vector{std::rand(), std::rand(), std::rand()}; };
    const std::time_t before = std::time(nullptr);

    send(EV_INITIAL_SETUP);

    const std::vector<int> drawn = numbers();
    bool isSeedOfTheTime = false;
    for (std::time_t seed = before; seed <= std::time(nullptr); ++seed) {
        std::srand(static_cast<unsigned>(seed));
        isSeedOfTheTime = isSeedOfTheTime || numbers() == drawn;
    }
    EXPECT_TRUE(isSeedOfTheTime);
}

TEST_F(ApplicationGLTest, RenderClearsDrawsTheGUIAndSaysThatItIsDone)
{
    load("");
    test::GLRecorder recorder;

    EXPECT_TRUE(send(EV_RENDER));

    const std::vector<std::string> calls = recorder.calls();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls[0], "glClear(GL_DEPTH_BUFFER_BIT|GL_COLOR_BUFFER_BIT)");
    EXPECT_EQ(calls[1], "glLoadIdentity()");
    EXPECT_EQ(calls[2], "glClearColor(0, 0, 1, 1)");
    EXPECT_EQ(calls[3], "glMatrixMode(GL_PROJECTION)");
    EXPECT_EQ(calls.back(), "glMatrixMode(GL_MODELVIEW)");
    EXPECT_THAT(listener->kinds, ElementsAre(EV_RENDER_DONE));
}

TEST_F(ApplicationGLTest, RenderAnswersAsTheReceiversOfItsEventDo)
{
    load("");
    listener->answer = false;

    EXPECT_FALSE(send(EV_RENDER));
}

TEST_F(ApplicationGLTest, TheFirstFrameIsBlackAndLaterOnesBlue)
{
    load("");

    send(EV_UPDATE);
    send(EV_RENDER);
    EXPECT_EQ(picture().at(10, 10), (test::Pixel{0, 0, 0}));

    send(EV_UPDATE);
    send(EV_RENDER);
    EXPECT_EQ(picture().at(10, 10), (test::Pixel{0, 0, 255}));
}

TEST_F(ApplicationGLTest, EscapeEndsBeforeTheGUISeesTheKeys)
{
    load("CADD Text box NULL 0 0 20 2\n");
    widget("box").onMouseMove(405, 290);
    widget("box").onMouseButtons(true, false, false);

    EXPECT_FALSE(sendKeys({27, 'a'}));

    EXPECT_EQ(application->keyboard.held[27], 1);
    EXPECT_EQ(textOf("box"), "");
    EXPECT_TRUE(sendKeys({'a'}));
    EXPECT_EQ(textOf("box"), "a");
}

TEST_F(ApplicationGLTest, TheMouseTurnsTheCameraWhateverIsUnderThePointer)
{
    load("CADD Butt button NULL 0 0 TEX 0.5 0.5\n");
    application->camera.setSpeeds(0, 0.5F);
    Event event;
    event.kind = EV_MOUSE;
    event.mouse.x = 410;
    event.mouse.y = 290;
    event.mouse.dx = 10;
    event.mouse.dy = 20;
    event.mouse.dz = 30;
    event.mouse.left = 1;

    EXPECT_TRUE(application->handleEvent(event));

    EXPECT_EQ(application->camera.rotation.x, -10.0F);
    EXPECT_EQ(application->camera.rotation.y, 5.0F);
    EXPECT_EQ(application->camera.rotation.z, 15.0F);
    // The move came before the buttons: the press found the pointer on the button.
    EXPECT_TRUE(widget("button").isActive());
}

TEST_F(ApplicationGLTest, SendsQuitToItselfTooAndTheEndOfADrawingToOthersAlone)
{
    class Noticing : public Application
    {
    public:
        bool handleEvent(Event event) override
        {
            kinds.push_back(event.kind);
            return Application::handleEvent(event);
        }

        std::vector<std::int32_t> kinds;
    };
    load("CADD Butt exitbut NULL 0 0 Exit\n");
    auto* const noticing = new Noticing;
    noticing->kernel = application->kernel;
    noticing->kernel->addCatcher(ObjectRef<EventCatcher>(noticing), 0x1FF, 0);
    Event event;

    event.kind = EV_RENDER;
    noticing->handleEvent(event);
    widget("exitbut").setActive();
    event.kind = EV_UPDATE;
    noticing->handleEvent(event);

    EXPECT_THAT(noticing->kinds, ElementsAre(EV_RENDER, EV_UPDATE, EV_QUIT));
    EXPECT_THAT(listener->kinds, ElementsAre(EV_RENDER_DONE, EV_QUIT));
}

TEST_F(ApplicationGLTest, AFailedUpdateSendsQuitAndEndsTheLoop)
{
    load("CADD Butt exitbut NULL 0 0 Exit\n");
    widget("exitbut").setActive();

    EXPECT_FALSE(send(EV_UPDATE));

    EXPECT_THAT(listener->kinds, ElementsAre(EV_QUIT));
}

TEST_F(ApplicationGLTest, TheAnswersToQuitAreIgnored)
{
    load("CADD Butt exitbut NULL 0 0 Exit\n");
    widget("exitbut").setActive();
    listener->answer = false;

    EXPECT_FALSE(send(EV_UPDATE));
}

TEST_F(ApplicationGLTest, HasAShaderProgramWithoutShaders)
{
    EXPECT_EQ(application->shader.program, 0U);
    EXPECT_EQ(application->shader.vertexFile, "");
    EXPECT_LT(static_cast<void*>(&application->keyboard), static_cast<void*>(&application->shader));
    EXPECT_LT(static_cast<void*>(&application->shader),
              static_cast<void*>(&application->faceNormal));
}

TEST_F(ApplicationGLTest, OtherKindsDoNothing)
{
    const test::GLRecorder recorder;

    for (const std::int32_t kind : {16, 17, 22, 25, 26})
        EXPECT_TRUE(send(kind)) << kind;

    EXPECT_THAT(recorder.calls(), IsEmpty());
    EXPECT_THAT(listener->kinds, IsEmpty());
}

/// The update step, on layouts of its own.
class ApplicationUpdateGLTest : public ApplicationGLTest
{
protected:
    bool update(std::int32_t delta = 0) { return application->update(delta); }
};

TEST_F(ApplicationUpdateGLTest, WorksWithoutAnyWidget)
{
    load("");
    send(EV_INITIAL_SETUP);
    application->camera.reset(0.01F, 1);
    sendKeys({'w'});
    const test::CapturedErrors errors;

    EXPECT_TRUE(update(16));
    EXPECT_TRUE(update(16));

    // The first move used the time of the frame before it, which was none.
    EXPECT_FLOAT_EQ(application->camera.position.z, -0.16F);
    EXPECT_LT(application->objects[0].position.y, 15.0F);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(ApplicationUpdateGLTest, MovesTheCameraByItsKeys)
{
    struct Row
    {
        std::size_t key;
        std::int32_t modifiers;
        Vector end;
    };
    const Row rows[] = {
        {'w', 0, {0, 0, -1}}, {'s', 0, {0, 0, 1}}, {' ', 0, {0, 1, 0}}, {1, 64, {0, -1, 0}},
        {'a', 0, {-1, 0, 0}}, {'d', 0, {1, 0, 0}}, {1, 128, {0, 0, 0}},
    };
    load("");
    for (const Row& row : rows) {
        application->camera.reset(1, 1);
        application->camera.setFrameTime(1);
        sendKeys({row.key}, row.modifiers);

        update(7);

        EXPECT_EQ(application->camera.position.x, row.end.x) << row.key;
        EXPECT_EQ(application->camera.position.y, row.end.y) << row.key;
        EXPECT_EQ(application->camera.position.z, row.end.z) << row.key;
        EXPECT_EQ(application->camera.frameTime, 7.0F);
    }
}

TEST_F(ApplicationUpdateGLTest, ForwardAndBackCancelOut)
{
    load("");
    application->camera.reset(1, 1);
    application->camera.setFrameTime(1);
    sendKeys({'w', 's'});

    update();

    EXPECT_EQ(application->camera.position.length(), 0.0F);
}

TEST_F(ApplicationUpdateGLTest, ThreeSlidersMakeTheClearColour)
{
    load("CADD Slide red NULL 0 0 0.5 0\nCADD Slide green NULL 0 0 0.5 0\n"
         "CADD Slide blue NULL 0 0 0.5 0\n");
    Fields::valueOf(widget("red")) = 0.25F;
    Fields::valueOf(widget("green")) = 0.5F;
    Fields::valueOf(widget("blue")) = 0.75F;
    const test::GLRecorder recorder;

    update();

    EXPECT_THAT(recorder.calls(), ElementsAre("glClearColor(0.25, 0.5, 0.75, 0)"));
}

TEST_F(ApplicationUpdateGLTest, TwoSlidersMakeNone)
{
    load("CADD Slide red NULL 0 0 0.5 0\nCADD Slide green NULL 0 0 0.5 0\n");
    const test::GLRecorder recorder;

    update();

    EXPECT_THAT(recorder.calls(), IsEmpty());
}

TEST_F(ApplicationUpdateGLTest, LabelsShowTheSlidersWithTwoDecimals)
{
    load("CADD Slide horz1 NULL 0 0 0.5 0\nCADD Slide horz2 NULL 0 0 0.5 0\n"
         "CADD Label horzl1 NULL 0 0 one\nCADD Label horzl2 NULL 0 0 two\n");
    Fields::valueOf(widget("horz2")) = 0.126F;

    update();

    EXPECT_EQ(textOf("horzl1"), "Slider 1: 0.50");
    EXPECT_EQ(textOf("horzl2"), "Slider 2: 0.13");
}

TEST_F(ApplicationUpdateGLTest, TheSecondLabelAsksForTheFirstSlider)
{
    load("CADD Slide horz2 NULL 0 0 0.5 0\nCADD Label horzl2 NULL 0 0 two\n");

    update();
    EXPECT_EQ(textOf("horzl2"), "two");

    load("CADD Slide horz1 NULL 0 0 0.5 0\n");
    update();
    EXPECT_EQ(textOf("horzl2"), "Slider 2: 0.50");
}

TEST_F(ApplicationUpdateGLTest, ASecondLabelWithoutItsSliderIsLeftAlone)
{
    load("CADD Slide horz1 NULL 0 0 0.5 0\nCADD Label horzl2 NULL 0 0 two\n");

    EXPECT_TRUE(update());

    EXPECT_EQ(textOf("horzl2"), "two");
}

TEST_F(ApplicationUpdateGLTest, AnActiveExitButtonEndsAtOnce)
{
    load("CADD Butt exitbut NULL 0 0 Exit\nCADD Butt redbut NULL 0 0 Red\n");
    EXPECT_TRUE(update());
    widget("exitbut").setActive();
    Fields::clickedOf(widget("redbut")) = true;

    EXPECT_FALSE(update());

    // Nothing of the rest was done: the click is still there.
    EXPECT_TRUE(widget("redbut").wasClicked());
}

TEST_F(ApplicationUpdateGLTest, DoesBeforeTheEndTestWhatComesBeforeItAndNoMore)
{
    load("CADD Butt exitbut NULL 0 0 Exit\nCADD Slide red NULL 0 0 0.5 0\n"
         "CADD Slide green NULL 0 0 0.5 0\nCADD Slide blue NULL 0 0 0.5 0\n"
         "CADD Slide horz1 NULL 0 0 0.5 0\nCADD Label horzl1 NULL 0 0 one\n");
    widget("exitbut").setActive();
    application->camera.reset(1, 1);
    application->camera.setFrameTime(1);
    application->objects.push_back({Vector(0, 10, 0), Vector(), 10.0F});
    sendKeys({'w'});
    GLWidget::messageResult = 4;
    const test::GLRecorder recorder;
    const test::CapturedErrors errors;

    EXPECT_FALSE(update(6000));

    EXPECT_EQ(application->frameCount, 1);
    EXPECT_EQ(application->frameTime, 6000);
    EXPECT_EQ(application->camera.position.z, -1.0F);
    EXPECT_THAT(recorder.calls(), ElementsAre("glClearColor(0.5, 0.5, 0.5, 0)"));
    EXPECT_EQ(textOf("horzl1"), "Slider 1: 0.50");
    EXPECT_EQ(GLWidget::messageResult, 4);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(application->objects[0].position.y, 10.0F);
    GLWidget::messageResult = 0;
}

TEST_F(ApplicationUpdateGLTest, TakesTheAnswerBeforeItOpensABoxWhichWouldClearIt)
{
    load("CADD Label status NULL 0 0 Status: ok\nCADD Butt quill NULL 0 0 TEX 0.3 0.3\n");
    const test::CapturedErrors errors;
    GLWidget::messageResult = 8;
    Fields::clickedOf(widget("quill")) = true;

    update();

    EXPECT_EQ(textOf("status"), "Status: YOU CLICKED NO LOL");
    EXPECT_NE(GLWidget::find("__msgbox"), nullptr);
}

TEST_F(ApplicationUpdateGLTest, OpensABoxForTheFirstOfSeveralClicksAndUsesUpTheOthers)
{
    load("CADD Butt quill NULL 0 0 TEX 0.3 0.3\nCADD Butt redbut NULL 0 0 Red\n");
    const test::CapturedErrors errors;
    Fields::clickedOf(widget("redbut")) = true;
    Fields::clickedOf(widget("quill")) = true;

    update();

    EXPECT_FALSE(widget("redbut").wasClicked());
    EXPECT_FALSE(widget("quill").wasClicked());
    EXPECT_EQ(textOf("__msgbox_message"),
              "Pell wanted this to do something, so it does something.");
}

TEST_F(ApplicationUpdateGLTest, WritesNumbersInTheCLocale)
{
    load("CADD Slide horz1 NULL 0 0 0.5 0\nCADD Label horzl1 NULL 0 0 one\n"
         "CADD Label fps NULL 0 0 FPS:\n");
    const test::CommaLocale locale;
    const test::CapturedErrors errors;

    for (int frame = 0; frame < 5001; ++frame)
        update(1);

    EXPECT_EQ(textOf("horzl1"), "Slider 1: 0.50");
    EXPECT_EQ(errors.text(), "5001 frames in 5.001 seconds = 1000 FPS\n");
    EXPECT_EQ(textOf("fps"), "FPS: 1000");
}

TEST_F(ApplicationUpdateGLTest, TheFourthEntryOfTheListEnds)
{
    directory.write("combo_button.theme", "");
    load("CADD Combo combo1 NULL 0 0\nTEXT combo1 One\nTEXT combo1 Two\nTEXT combo1 Three\n"
         "TEXT combo1 Quit\n");
    for (const std::uint32_t selection : {0U, 1U, 2U, 3U}) {
        Fields::selectionOf(widget("combo1")) = selection;
        EXPECT_EQ(update(), selection != 3) << selection;
    }
}

TEST_F(ApplicationUpdateGLTest, ShowsEachAnswerOnceInTheStatus)
{
    load("CADD Label status NULL 0 0 Status: ok\n");
    const std::vector<std::pair<std::int32_t, std::string>> rows = {
        {1, "Status: YOU CLICKED OK LOL"},
        {2, "Status: YOU CLICKED CANCEL LOL"},
        {4, "Status: YOU CLICKED YES LOL"},
        {8, "Status: YOU CLICKED NO LOL"},
    };
    for (const auto& [result, text] : rows) {
        GLWidget::messageResult = result;
        update();
        EXPECT_EQ(textOf("status"), text);
        EXPECT_EQ(GLWidget::messageResult, 0);
    }

    for (const std::int32_t result : {0, 3, 5, 16}) {
        widget("status").setCaption("as it was");
        GLWidget::messageResult = result;
        update();
        EXPECT_EQ(textOf("status"), "as it was") << result;
    }
}

TEST_F(ApplicationUpdateGLTest, AnAnswerThatNobodyShowsIsLost)
{
    load("");
    GLWidget::messageResult = 4;

    update();

    EXPECT_EQ(GLWidget::messageResult, 0);
}

TEST_F(ApplicationUpdateGLTest, EachButtonOpensItsMessage)
{
    struct Row
    {
        const char* button;
        const char* text;
        std::vector<const char*> answers;
    };
    const std::vector<Row> rows = {
        {"redbut",
         "Pell wanted this to do something, so it does something.",
         {"__msgbox_ok", "__msgbox_cancel"}},
        {"greenbut",
         "Pell also wanted this to do something, so it does something.",
         {"__msgbox_yes", "__msgbox_no"}},
        {"bluebut",
         "Pell also wanted this to do something, so it does something.",
         {"__msgbox_cancel", "__msgbox_yes", "__msgbox_no"}},
        {"quill",
         "This is a test of the emergency broadcast system.\n"
         "If it had been a real emergency, you would be dead by now.",
         {"__msgbox_ok"}},
    };
    const std::vector<const char*> all = {"__msgbox_ok", "__msgbox_cancel", "__msgbox_yes",
                                          "__msgbox_no"};
    load("CADD Butt redbut NULL 0 0 Red\nCADD Butt greenbut NULL 0 0 Green\n"
         "CADD Butt bluebut NULL 0 0 Blue\nCADD Butt quill NULL 0 0 TEX 0.3 0.3\n");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.button);
        Fields::clickedOf(widget(row.button)) = true;
        const test::CapturedErrors errors;

        update();

        ASSERT_NE(GLWidget::find("__msgbox"), nullptr);
        EXPECT_EQ(textOf("__msgbox_message"), row.text);
        EXPECT_FALSE(widget(row.button).wasClicked());
        for (const char* answer : all) {
            const bool isWanted =
                std::count(row.answers.begin(), row.answers.end(), std::string(answer)) > 0;
            EXPECT_EQ(GLWidget::find(answer) != nullptr, isWanted) << answer;
        }

        // Answered, the box goes away at the end of the step.
        Fields::clickedOf(widget(row.answers.front())) = true;
        update();
        EXPECT_EQ(GLWidget::find("__msgbox"), nullptr);
    }
}

TEST_F(ApplicationUpdateGLTest, AnAnswerShowsInTheFrameThatTakesIt)
{
    load("CADD Label status NULL 0 0 Status: ok\nCADD Butt quill NULL 0 0 TEX 0.3 0.3\n");
    const test::CapturedErrors errors;
    Fields::clickedOf(widget("quill")) = true;
    update();
    Fields::clickedOf(widget("__msgbox_ok")) = true;

    update();
    EXPECT_EQ(textOf("status"), "Status: ok");
    update();
    EXPECT_EQ(textOf("status"), "Status: YOU CLICKED OK LOL");
}

TEST_F(ApplicationUpdateGLTest, ReportsTheRateAfterFiveSeconds)
{
    load("CADD Label fps NULL 0 0 FPS:\n");
    const test::CapturedErrors errors;

    for (int frame = 1; frame <= 312; ++frame)
        update(16);
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(textOf("fps"), "FPS:");

    update(16);
    EXPECT_EQ(errors.text(), "313 frames in 5.008 seconds = 62.5 FPS\n");
    EXPECT_EQ(textOf("fps"), "FPS: 62");
    EXPECT_EQ(application->frameCount, 0);
    EXPECT_EQ(application->frameTime, 0);
}

TEST_F(ApplicationUpdateGLTest, FiveSecondsThemselvesAreNotMoreThanFive)
{
    load("");
    const test::CapturedErrors errors;

    update(5000);
    EXPECT_EQ(errors.text(), "");
    update(1);
    EXPECT_EQ(errors.text(), "2 frames in 5.001 seconds = 0.39992 FPS\n");
}

TEST_F(ApplicationUpdateGLTest, ObjectsFallByTheirForces)
{
    load("");
    application->objects.push_back({Vector(0, 10, 0), Vector(), 10.0F});

    update(1000);

    // One second from rest: half of 9.8 down, at 9.8 units a second.
    EXPECT_FLOAT_EQ(application->objects[0].position.y, 5.1F);
    EXPECT_FLOAT_EQ(application->objects[0].velocity.y, -9.8F);
    EXPECT_EQ(application->objects[0].position.w, 1.0F);

    update(1000);

    // The drag, 0.1 times 96.04, takes 0.9604 from the fall: 8.8396 units a second, squared.
    EXPECT_FLOAT_EQ(application->objects[0].position.y, 5.1F - 9.8F - 4.4198F);
    EXPECT_FLOAT_EQ(application->objects[0].velocity.y, -18.6396F);
}

TEST_F(ApplicationUpdateGLTest, ObjectsFallByProductsFromLeftToRight)
{
    load("");
    application->objects.push_back({Vector(), Vector(), 10.0F});

    update(2);

    // The square of the time alone would give -1.96000019e-05.
    EXPECT_EQ(application->objects[0].position.y, -1.96000037e-05F);
}

TEST_F(ApplicationUpdateGLTest, DragAlwaysPointsAlongThePositiveAxis)
{
    load("");
    application->objects.push_back({Vector(), Vector(10, 10, -10), 1.0F});

    update(100);

    // 0.1 times 100 on each axis, and gravity down.
    EXPECT_FLOAT_EQ(application->objects[0].velocity.x, 11.0F);
    EXPECT_FLOAT_EQ(application->objects[0].velocity.y, 10.0F + 1.0F - 0.98F);
    EXPECT_FLOAT_EQ(application->objects[0].velocity.z, -9.0F);
}

TEST_F(ApplicationUpdateGLTest, AFallEndsUpAtASteadySpeed)
{
    load("");
    application->objects.push_back({Vector(), Vector(), 10.0F});
    const test::CapturedErrors errors;

    for (int frame = 0; frame < 5000; ++frame)
        update(10);

    // The square root of 980.
    EXPECT_NEAR(application->objects[0].velocity.y, -31.305F, 0.001F);
}

TEST_F(ApplicationUpdateGLTest, AFrameOfNoTimeMovesNothing)
{
    load("");
    send(EV_INITIAL_SETUP);

    update(0);

    EXPECT_EQ(application->objects[0].position.y, 15.0F);
    EXPECT_EQ(application->objects[0].velocity.y, 0.0F);
}

TEST_F(ApplicationUpdateGLTest, LetsTheGUIsTimePass)
{
    load("CADD Butt button NULL 0 0 TEX 0.5 0.5\n");
    GLWidget::glowRate = 0.001F;
    widget("button").onMouseMove(410, 290);

    update(250);

    EXPECT_FLOAT_EQ(Fields::glowOf(widget("button")), 0.25F);
    GLWidget::glowRate = 0;
}

/// Tells who is registered, when the window is open, and ends the start there.
class StartedApplication : public Application
{
public:
    bool handleEvent(Event event) override
    {
        if (event.kind != EV_LOAD_GRAPHICS_RESOURCES)
            return Application::handleEvent(event);
        for (const CatcherRecord& record : kernel->catchers) {
            EventCatcher* const catcher = record.catcher.get();
            const auto* const input = dynamic_cast<const SDLInput*>(catcher);
            std::cout << (input != nullptr                              ? "SDLInput"
                          : dynamic_cast<GLRender*>(catcher) != nullptr ? "GLRender"
                          : catcher == this                             ? "Application"
                                                                        : "?")
                      << (input != nullptr && input->grabMouse ? " with grab" : "") << ' '
                      << record.mask << ' ' << record.priority << '\n';
        }
        return false;
    }
};

TEST(ApplicationRunGLTest, RegistersInputWindowAndItselfInThisOrder)
{
    test::useTestDisplay();
    test::ChildProcess child([] {
        const ObjectRef<Application> application(new StartedApplication);
        const bool result = application->run();
        std::cout << std::boolalpha << result << '\n';
        return std::raise(SIGHUP);
    });

    // The run also installed the handlers, which end the process with the status 1.
    EXPECT_EQ(child.wait().status, 1);
    EXPECT_EQ(child.output(), "SDLInput 147 500\nGLRender 50 700\nApplication 382 500\ntrue\n");
    EXPECT_EQ(child.errors(), "Error sending load graphics resources event\n"
                              "Caught signal SIGHUP - Hangup (POSIX)\nStack Trace:\n");
}

/// The view from a face, at a model of one triangle around (1, 2, 3).
class ApplicationFaceViewGLTest : public ApplicationGLTest
{
protected:
    void SetUp() override
    {
        ApplicationGLTest::SetUp();
        triangle.vertices.resize(3);
        triangle.vertices[0].position = Vector(0, 2, 3);
        triangle.vertices[1].position = Vector(1, 0, 3);
        triangle.vertices[2].position = Vector(2, 4, 3);
        triangle.faces.resize(1);
        triangle.faces[0].vertex = {2, 0, 1};
        application->model = &triangle;
    }

    static void expectVector(Vector v, float x, float y, float z)
    {
        EXPECT_FLOAT_EQ(v.x, x);
        EXPECT_FLOAT_EQ(v.y, y);
        EXPECT_FLOAT_EQ(v.z, z);
    }

    Model triangle;
};

TEST_F(ApplicationFaceViewGLTest, TurnsInEachDirectionFromTheCentre)
{
    struct Row
    {
        std::int32_t direction;
        Vector forward;
        Vector up;
    };
    // The normal along x, so the side is x cross y, which is z, and up is z cross x, which is y.
    const Row rows[] = {
        {0, {1, 0, 0}, {0, 1, 0}},  {1, {0, 0, 1}, {0, 1, 0}},  {2, {0, -1, 0}, {1, 0, 0}},
        {3, {0, 0, -1}, {0, 1, 0}}, {4, {0, 1, 0}, {-1, 0, 0}},
    };
    triangle.faces[0].normal = Vector(1, 0, 0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.direction);
        application->camera.reset(1, 1);

        application->viewFromFace(0, 99, row.direction);

        expectVector(application->camera.position, 1, 2, 3);
        expectVector(application->camera.forwardAxis, row.forward.x, row.forward.y, row.forward.z);
        expectVector(application->camera.upAxis, row.up.x, row.up.y, row.up.z);
    }
    expectVector(application->faceNormal, 1, 0, 0);
    expectVector(application->faceSide, 0, 0, 1);
    expectVector(application->faceUp, 0, 1, 0);
}

TEST_F(ApplicationFaceViewGLTest, ALevelFaceHasItsSideAlongX)
{
    triangle.faces[0].normal = Vector(0, -1, 0);

    application->viewFromFace(0, 0, 0);

    // x cross -y is -z.
    expectVector(application->faceSide, 1, 0, 0);
    expectVector(application->faceUp, 0, 0, -1);
}

TEST_F(ApplicationFaceViewGLTest, AFaceIsLevelAbove0Point9999)
{
    triangle.faces[0].normal = Vector(0.25F, 0.9999F, 0);
    application->viewFromFace(0, 0, 1);
    expectVector(application->faceSide, 0, 0, 0.25F);

    // The next number.
    triangle.faces[0].normal = Vector(0.25F, 0.99990004F, 0);
    application->viewFromFace(0, 0, 1);
    expectVector(application->faceSide, 1, 0, 0);

    triangle.faces[0].normal = Vector(0.25F, -0.99990004F, 0);
    application->viewFromFace(0, 0, 1);
    expectVector(application->faceSide, 1, 0, 0);
}

TEST_F(ApplicationFaceViewGLTest, AnyOtherDirectionLeavesTheCameraAlone)
{
    triangle.faces[0].normal = Vector(1, 0, 0);

    application->viewFromFace(0, 0, 5);
    application->viewFromFace(0, 0, -1);

    expectVector(application->camera.position, 0, 0, 0);
    expectVector(application->faceSide, 0, 0, 1);
}

TEST_F(ApplicationFaceViewGLTest, WhatIsNotThereIsNotLookedAt)
{
    application->viewFromFace(1, 0, 0);
    application->viewFromFace(-1, 0, 0);
    triangle.faces[0].vertex = {0, 1, 3};
    application->viewFromFace(0, 0, 0);
    application->model = nullptr;
    application->viewFromFace(0, 0, 0);

    expectVector(application->camera.position, 0, 0, 0);
}
} // namespace
} // namespace tamor
