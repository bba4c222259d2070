#include "platform/GLee.h"

#include "platform/GLRender.h"

#include "tests/platform/SDLEvents.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/SDLWords.h"
#include "tests/support/VirtualDisplay.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace
{
bool extensionsFail = false;
bool videoInfoFails = false;

/// What the video information says of the hardware; as it is if it is not set.
std::optional<bool> hardwareBlits;
std::optional<bool> hardwareSurfaces;

std::vector<std::pair<SDL_GLattr, int>> attributesSet;
Uint32 videoFlags = 0;
int videoDepth = 0;

/// What SDL's subsystems and its window were asked, as "init 0x100020", "quit 0x20", "icon none".
std::vector<std::string> asked;

std::string hexadecimal(Uint32 flags)
{
    std::ostringstream text;
    text << std::hex << std::showbase << flags;
    return text.str();
}

template <typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
} // namespace

// These stand before the libraries' own, which they call: they note what was asked, and no other
// way is known to make them fail.

extern "C" GLenum glewInit()
{
    return extensionsFail ? GLEW_ERROR_NO_GL_VERSION : next<GLenum()>("glewInit")();
}

extern "C" const SDL_VideoInfo* SDL_GetVideoInfo()
{
    if (videoInfoFails) {
        SDL_SetError("no information");
        return nullptr;
    }
    static SDL_VideoInfo info;
    info = *next<const SDL_VideoInfo*()>("SDL_GetVideoInfo")();
    info.blit_hw = hardwareBlits.value_or(info.blit_hw != 0) ? 1 : 0;
    info.hw_available = hardwareSurfaces.value_or(info.hw_available != 0) ? 1 : 0;
    return &info;
}

extern "C" int SDL_InitSubSystem(Uint32 flags)
{
    asked.push_back("init " + hexadecimal(flags));
    return next<int(Uint32)>("SDL_InitSubSystem")(flags);
}

extern "C" void SDL_QuitSubSystem(Uint32 flags)
{
    asked.push_back("quit " + hexadecimal(flags));
    next<void(Uint32)>("SDL_QuitSubSystem")(flags);
}

extern "C" void SDL_WM_SetCaption(const char* title, const char* icon)
{
    asked.push_back(std::string("title ") + title + ", icon " + (icon == nullptr ? "none" : icon));
    next<void(const char*, const char*)>("SDL_WM_SetCaption")(title, icon);
}

extern "C" int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    attributesSet.emplace_back(attribute, value);
    return next<int(SDL_GLattr, int)>("SDL_GL_SetAttribute")(attribute, value);
}

extern "C" SDL_Surface* SDL_SetVideoMode(int width, int height, int depth, Uint32 flags)
{
    videoFlags = flags;
    videoDepth = depth;
    return next<SDL_Surface*(int, int, int, Uint32)>("SDL_SetVideoMode")(width, height, depth,
                                                                         flags);
}

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class GLRenderGLTest : public testing::Test
{
protected:
    GLRenderGLTest()
    {
        test::useTestDisplay();
        extensionsFail = false;
        videoInfoFails = false;
        hardwareBlits.reset();
        hardwareSurfaces.reset();
        attributesSet.clear();
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        asked.clear();
    }

    ~GLRenderGLTest() override
    {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        collectAll();
        kernel = nullptr;
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
    }

    bool send(std::int32_t kind)
    {
        Event event;
        event.kind = kind;
        return render->handleEvent(event);
    }

    bool openWindow(bool fullscreen = false)
    {
        Event event;
        event.kind = EV_OPEN_WINDOW;
        event.window.title = "a caption";
        event.window.fullscreen = fullscreen;
        return render->handleEvent(event);
    }

    ObjectRef<Kernel> kernel{new Kernel};
    GLRender* render = new GLRender(kernel);
};

TEST_F(GLRenderGLTest, RegistersForWindowUpdateAndRender)
{
    ASSERT_EQ(kernel->catchers.size(), 1U);
    EXPECT_EQ(kernel->catchers[0].catcher.get(), render);
    EXPECT_EQ(kernel->catchers[0].mask, 50);
    EXPECT_EQ(kernel->catchers[0].priority, 700);
    EXPECT_TRUE(render->parent.isEmpty());
    EXPECT_EQ(kernel->refCount, 1);
}

TEST_F(GLRenderGLTest, OpensAWindowWithTheCaptionAndACursor)
{
    EXPECT_TRUE(openWindow());

    char* caption = nullptr;
    SDL_WM_GetCaption(&caption, nullptr);
    EXPECT_STREQ(caption, "a caption");
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
    const SDL_Surface* const surface = SDL_GetVideoSurface();
    ASSERT_NE(surface, nullptr);
    EXPECT_EQ(surface->w, 800);
    EXPECT_EQ(surface->h, 600);
    EXPECT_EQ(videoDepth, 24);
    EXPECT_THAT(attributesSet, ElementsAre(Pair(SDL_GL_DOUBLEBUFFER, 1)));
    EXPECT_THAT(asked, ElementsAre("init 0x100020", "title a caption, icon none"));
}

TEST_F(GLRenderGLTest, AsksForAnAcceleratedWindowOnlyWhereBlitsAre)
{
    struct Row
    {
        bool blits;
        bool surfaces;
        bool fullscreen;
        Uint32 flags;
    };
    for (const Row& row :
         {Row{false, false, false, 0x20000007}, Row{true, false, false, 0x20000107},
          Row{false, true, false, 0x20000007}, Row{true, true, true, 0xA0000107}}) {
        hardwareBlits = row.blits;
        hardwareSurfaces = row.surfaces;

        openWindow(row.fullscreen);

        EXPECT_EQ(videoFlags, row.flags);
    }
}

TEST_F(GLRenderGLTest, AFullScreenWindowHasNoCursor)
{
    EXPECT_TRUE(openWindow(true));

    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
}

TEST_F(GLRenderGLTest, TheProjectionHasTheRatioOfItsWindow)
{
    Event event;
    event.kind = EV_OPEN_WINDOW;
    event.window.width = 300;
    event.window.height = 400;
    const test::GLRecorder recorder;

    render->handleEvent(event);

    EXPECT_THAT(recorder.calls({"glViewport", "gluPerspective"}),
                ElementsAre("glViewport(0, 0, 300, 400)", "gluPerspective(45, 0.75, 1, 10000)"));
}

TEST_F(GLRenderGLTest, SetsViewportProjectionAndClearColourInOrder)
{
    const test::GLRecorder recorder;

    openWindow();

    EXPECT_THAT(recorder.calls(),
                ElementsAre("SDL_ShowCursor(1)", "glViewport(0, 0, 800, 600)",
                            "glMatrixMode(GL_PROJECTION)", "gluPerspective(45, 1.33333, 1, 10000)",
                            "glMatrixMode(GL_MODELVIEW)", "glClearColor(0, 0, 1, 0)"));
}

TEST_F(GLRenderGLTest, FindsTheLaterFunctionsOfOpenGL)
{
    openWindow();

    EXPECT_NE(glCreateShader, nullptr);
    EXPECT_TRUE(GLEE_ARB_vertex_buffer_object);
}

TEST_F(GLRenderGLTest, AFailureOfTheExtensionsLeavesTheWindowUp)
{
    extensionsFail = true;
    const test::CapturedErrors errors;

    EXPECT_FALSE(openWindow());

    EXPECT_EQ(errors.text(), "error initialising GLee\n");
    EXPECT_NE(SDL_GetVideoSurface(), nullptr);
}

TEST_F(GLRenderGLTest, AFailureOfTheVideoInfoClosesTheSubsystem)
{
    videoInfoFails = true;
    const test::CapturedErrors errors;

    EXPECT_FALSE(openWindow());

    EXPECT_EQ(errors.text(), "SDL_GetVideoInfo() failed. SDL Error: no information\n");
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
    EXPECT_THAT(asked, ElementsAre("init 0x100020", "quit 0x20"));
}

TEST_F(GLRenderGLTest, SaysThatThereIsNoDisplay)
{
    test::ChildProcess child([this] {
        setenv("DISPLAY", ":4711", 1);
        setenv("SDL_VIDEODRIVER", "x11", 1);
        return openWindow() ? 1 : static_cast<int>(SDL_WasInit(SDL_INIT_VIDEO));
    });

    EXPECT_EQ(child.wait().status, 0);
    EXPECT_EQ(child.errors(),
              std::string("SDL_Init() failed. SDL Error: ") + test::wordsOfNoDisplay() + "\n");
}

TEST_F(GLRenderGLTest, SaysThatThereIsNoOpenGL)
{
    test::ChildProcess child([this] {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        return openWindow() ? 1 : static_cast<int>(SDL_WasInit(SDL_INIT_VIDEO));
    });

    EXPECT_EQ(child.wait().status, 0);
    EXPECT_EQ(child.errors(), std::string("SDL_SetVideoMode() Failed. SDL_Error: ") +
                                  test::wordsOfNoOpenGL() + "\n");
}

TEST_F(GLRenderGLTest, ASecondWindowEventSetsANewMode)
{
    openWindow();
    Event event;
    event.kind = EV_OPEN_WINDOW;
    event.window.width = 320;
    event.window.height = 200;

    asked.clear();

    EXPECT_TRUE(render->handleEvent(event));

    EXPECT_EQ(SDL_GetVideoSurface()->w, 320);
    EXPECT_THAT(asked, ElementsAre("title , icon none"));
}

TEST_F(GLRenderGLTest, RenderPresentsTheFrameAndDoesNothingElse)
{
    openWindow();
    const test::GLRecorder recorder;

    EXPECT_TRUE(send(EV_RENDER));

    EXPECT_THAT(recorder.calls(), ElementsAre("SDL_GL_SwapBuffers()"));
}

TEST_F(GLRenderGLTest, QuitClosesTheVideoSubsystem)
{
    openWindow();

    SDL_InitSubSystem(SDL_INIT_JOYSTICK);
    asked.clear();

    EXPECT_TRUE(send(EV_QUIT));

    EXPECT_EQ(SDL_WasInit(SDL_INIT_EVERYTHING), SDL_INIT_JOYSTICK);
    EXPECT_THAT(asked, ElementsAre("quit 0x20"));
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
}

TEST_F(GLRenderGLTest, OtherKindsAreIgnored)
{
    for (const std::int32_t kind : {16, 18, 19, 22, 23, 24, 26, 0})
        EXPECT_TRUE(send(kind)) << kind;
    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
}

/// The look at SDL's queue, with a window open and its own events taken out.
class GLRenderQueueGLTest : public GLRenderGLTest
{
protected:
    GLRenderQueueGLTest()
    {
        openWindow();
        test::becomesTrue([] { return test::takeEvents().empty(); });
    }
};

TEST_F(GLRenderQueueGLTest, AnEmptyQueueIsNoEnd)
{
    EXPECT_TRUE(send(EV_UPDATE));
}

TEST_F(GLRenderQueueGLTest, AQuitRequestEndsTheLoopAndLosesWhatStoodBeforeIt)
{
    test::putEvents(
        {test::focusEvent(), test::plainEvent(SDL_QUIT), test::plainEvent(SDL_USEREVENT)});

    EXPECT_FALSE(send(EV_UPDATE));

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_USEREVENT));
}

TEST_F(GLRenderQueueGLTest, OtherEventsArePutBackInOrder)
{
    test::putEvents({test::focusEvent(), test::keyEvent(SDL_KEYDOWN, SDLK_a, 0),
                     test::plainEvent(SDL_USEREVENT)});

    EXPECT_TRUE(send(EV_UPDATE));

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_ACTIVEEVENT, SDL_KEYDOWN, SDL_USEREVENT));
}

TEST_F(GLRenderQueueGLTest, ALoneExposeIsDropped)
{
    test::putEvents({test::plainEvent(SDL_VIDEOEXPOSE)});

    EXPECT_TRUE(send(EV_UPDATE));

    EXPECT_THAT(test::takeEvents(), IsEmpty());
}

TEST_F(GLRenderQueueGLTest, AnExposeBehindAFocusEventDropsBoth)
{
    test::putEvents({test::focusEvent(), test::plainEvent(SDL_VIDEOEXPOSE)});

    EXPECT_TRUE(send(EV_UPDATE));

    EXPECT_THAT(test::takeEvents(), IsEmpty());
}

TEST_F(GLRenderQueueGLTest, AnExposeBeforeAFocusEventIsPutBackWithIt)
{
    test::putEvents({test::plainEvent(SDL_VIDEOEXPOSE), test::focusEvent()});

    EXPECT_TRUE(send(EV_UPDATE));

    EXPECT_THAT(test::takeEvents(), ElementsAre(SDL_VIDEOEXPOSE, SDL_ACTIVEEVENT));
}
} // namespace
} // namespace tamor
