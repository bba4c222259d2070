#include "maths/GLState.h"
#include "maths/Light.h"
#include "maths/Matrix.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

namespace tamor
{
namespace
{
using testing::ElementsAre;

class GLStateGLTest : public test::WindowTest
{};

TEST_F(GLStateGLTest, BindTextureMakesTheTextureCurrent)
{
    GLuint id = 0;
    glGenTextures(1, &id);

    EXPECT_TRUE(bindTexture(id));

    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    EXPECT_EQ(static_cast<GLuint>(bound), id);
}

TEST_F(GLStateGLTest, LoadModelviewOfAnIdentityStackGivesTheIdentity)
{
    Matrix matrix;
    matrix.translate(1, 2, 3);

    const Matrix copy = matrix.loadModelview();

    EXPECT_EQ(matrix.m, Matrix().m);
    EXPECT_EQ(copy.m, Matrix().m);
}

TEST_F(GLStateGLTest, LoadModelviewTakesTheColumnsAsOpenGLHoldsThem)
{
    glTranslatef(1, 2, 3);

    Matrix matrix;
    matrix.loadModelview();

    EXPECT_EQ(matrix.m[12], 1.0F);
    EXPECT_EQ(matrix.m[13], 2.0F);
    EXPECT_EQ(matrix.m[14], 3.0F);
}

TEST_F(GLStateGLTest, MultiplyModelviewMultipliesFromTheRight)
{
    glScalef(2, 2, 2);
    Matrix translation;
    translation.translate(1, 0, 0);

    const Matrix copy = translation.multiplyModelview();

    // The scale stands in front: the translation is scaled by it.
    Matrix result;
    result.loadModelview();
    EXPECT_EQ(result.m[12], 2.0F);
    EXPECT_EQ(copy.m, translation.m);
}

class LightGLTest : public test::WindowTest
{};

TEST_F(LightGLTest, PassesEachParameterToItsOwnNumber)
{
    const Light first;
    const Light second;
    const test::GLRecorder recorder;

    second.setSpotDirection({1, 2, 3, 4});
    second.setAmbient({0.1F, 0.2F, 0.3F, 0.4F});
    second.setDiffuse({0.5F, 0.6F, 0.7F, 0.8F});
    second.setSpecular({1, 0, 1, 0});
    second.setAttenuation(1, 0.5F, 0.25F);

    EXPECT_THAT(recorder.calls(),
                ElementsAre("glLightfv(GL_LIGHT1, GL_SPOT_DIRECTION, [1, 2, 3, 4])",
                            "glLightfv(GL_LIGHT1, GL_AMBIENT, [0.1, 0.2, 0.3, 0.4])",
                            "glLightfv(GL_LIGHT1, GL_DIFFUSE, [0.5, 0.6, 0.7, 0.8])",
                            "glLightfv(GL_LIGHT1, GL_SPECULAR, [1, 0, 1, 0])",
                            "glLightf(GL_LIGHT1, GL_CONSTANT_ATTENUATION, 1)",
                            "glLightf(GL_LIGHT1, GL_LINEAR_ATTENUATION, 0.5)",
                            "glLightf(GL_LIGHT1, GL_QUADRATIC_ATTENUATION, 0.25)"));
}

TEST_F(LightGLTest, PositionTakesItsFourthValueFromTheFlagWhateverWIs)
{
    const Light light;
    const test::GLRecorder recorder;

    EXPECT_TRUE(light.setPosition({1, 2, 3, 0.5F}, true));
    EXPECT_TRUE(light.setPosition({1, 2, 3, 0.5F}, false));

    EXPECT_THAT(recorder.calls(), ElementsAre("glLightfv(GL_LIGHT0, GL_POSITION, [1, 2, 3, 1])",
                                              "glLightfv(GL_LIGHT0, GL_POSITION, [1, 2, 3, 0])"));
}
} // namespace
} // namespace tamor
