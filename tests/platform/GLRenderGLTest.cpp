#include "platform/GLee.h"

#include "platform/GLRender.h"

#include "tests/platform/SDLEvents.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/VirtualDisplay.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>

namespace
{
bool extensionsFail = false;
bool videoInfoFails = false;
std::vector<SDL_GLattr> attributesSet;
Uint32 videoFlags = 0;

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
    if (!videoInfoFails)
        return next<const SDL_VideoInfo*()>("SDL_GetVideoInfo")();
    SDL_SetError("no information");
    return nullptr;
}

extern "C" int SDL_GL_SetAttribute(SDL_GLattr attribute, int value)
{
    attributesSet.push_back(attribute);
    return next<int(SDL_GLattr, int)>("SDL_GL_SetAttribute")(attribute, value);
}

extern "C" SDL_Surface* SDL_SetVideoMode(int width, int height, int depth, Uint32 flags)
{
    videoFlags = flags;
    return next<SDL_Surface*(int, int, int, Uint32)>("SDL_SetVideoMode")(width, height, depth,
                                                                         flags);
}

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

class GLRenderGLTest : public testing::Test
{
protected:
    GLRenderGLTest()
    {
        test::useTestDisplay();
        extensionsFail = false;
        videoInfoFails = false;
        attributesSet.clear();
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
    EXPECT_THAT(attributesSet, ElementsAre(SDL_GL_DOUBLEBUFFER));
    EXPECT_EQ(videoFlags & ~static_cast<Uint32>(SDL_HWACCEL), 0x20000007U);
}

TEST_F(GLRenderGLTest, AFullScreenWindowHasNoCursor)
{
    EXPECT_TRUE(openWindow(true));

    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    EXPECT_EQ(videoFlags & ~static_cast<Uint32>(SDL_HWACCEL), 0xA0000007U);
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
}

TEST_F(GLRenderGLTest, SaysThatThereIsNoDisplay)
{
    test::ChildProcess child([this] {
        setenv("DISPLAY", ":4711", 1);
        setenv("SDL_VIDEODRIVER", "x11", 1);
        return openWindow() ? 1 : static_cast<int>(SDL_WasInit(SDL_INIT_VIDEO));
    });

    EXPECT_EQ(child.wait().status, 0);
    EXPECT_EQ(child.errors(), "SDL_Init() failed. SDL Error: No available video device\n");
}

TEST_F(GLRenderGLTest, SaysThatThereIsNoOpenGL)
{
    test::ChildProcess child([this] {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        return openWindow() ? 1 : static_cast<int>(SDL_WasInit(SDL_INIT_VIDEO));
    });

    EXPECT_EQ(child.wait().status, 0);
    EXPECT_THAT(child.errors(), testing::StartsWith("SDL_SetVideoMode() Failed. SDL_Error: "));
}

TEST_F(GLRenderGLTest, ASecondWindowEventSetsANewMode)
{
    openWindow();
    Event event;
    event.kind = EV_OPEN_WINDOW;
    event.window.width = 320;
    event.window.height = 200;

    EXPECT_TRUE(render->handleEvent(event));

    EXPECT_EQ(SDL_GetVideoSurface()->w, 320);
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

    EXPECT_TRUE(send(EV_QUIT));

    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0U);
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
