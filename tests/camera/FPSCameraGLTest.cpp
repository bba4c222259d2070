#include "camera/FPSCamera.h"
#include "maths/Matrix.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

namespace tamor
{
namespace
{
class FPSCameraGLTest : public test::WindowTest
{};

TEST_F(FPSCameraGLTest, ApplyAtTheStartLeavesTheIdentity)
{
    glTranslatef(1, 2, 3);

    FPSCamera camera;
    EXPECT_TRUE(camera.apply());

    Matrix view;
    view.loadModelview();
    EXPECT_EQ(view.m, Matrix().m);
}

TEST_F(FPSCameraGLTest, ApplyTurnsAboutXThenYThenZAndMovesLast)
{
    FPSCamera camera;
    camera.rotation = Vector(10, 20, 30);
    camera.setPosition(Vector(1, 2, 3));
    const test::GLRecorder recorder;

    camera.apply();

    EXPECT_THAT(recorder.calls(),
                testing::ElementsAre("glLoadIdentity()", "glRotatef(10, 1, 0, 0)",
                                     "glRotatef(20, 0, 1, 0)", "glRotatef(30, 0, 0, 1)",
                                     "glTranslatef(-1, -2, -3)"));
}
} // namespace
} // namespace tamor
