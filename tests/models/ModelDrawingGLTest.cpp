#include "platform/GLee.h"

#include "tests/models/Matchers.h"
#include "tests/models/ModelBuilding.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

using namespace tamor;
using namespace tamor::test;
using testing::ElementsAre;
using testing::ElementsAreArray;

// The buffers' names go to the first model of the process, so these tests need a process each, as
// ctest gives them.

namespace
{
using Calls = std::vector<std::string>;

/// Where `name` first is in `calls`; their number if nowhere.
std::size_t placeOf(const Calls& calls, const std::string& name)
{
    return static_cast<std::size_t>(std::find(calls.begin(), calls.end(), name) - calls.begin());
}

class ModelRenderGLTest : public WindowTest
{
protected:
    ModelRenderGLTest() { fillWithTriangle(model); }

    Calls render(bool flat)
    {
        GLRecorder recorder;
        EXPECT_EQ(model.render(flat), 0);
        return recorder.calls();
    }

    Model model;
};

TEST_F(ModelRenderGLTest, BeginsAlikeInEveryMode)
{
    model.position = {1, 2, 3};
    for (const int mode : {0, 1, 2}) {
        model.renderMode = mode;

        const Calls calls = render(false);

        ASSERT_GE(calls.size(), 4U);
        EXPECT_EQ(calls[0], "glPointSize(5)");
        EXPECT_THAT(calls[1], testing::StartsWith("glMultMatrixf("));
        EXPECT_EQ(calls[2], "glPointSize(10)");
        EXPECT_EQ(calls[3], "glColor3f(0, 0, 0)");
    }
}

TEST_F(ModelRenderGLTest, MultipliesItsTransformOntoTheMatrix)
{
    model.position = {1, 2, 3};
    model.rotation = {0, 0, std::numbers::pi_v<float> / 2};
    glLoadIdentity();
    glTranslatef(0, 0, -10);

    model.render(false);

    Matrix modelview;
    modelview.loadModelview();
    EXPECT_THAT(modelview.transformPoint(1, 0, 0), isNear(1, 3, -7));
}

TEST_F(ModelRenderGLTest, TurnsByItsThreeAnglesAtOnce)
{
    model.position = {1, 2, 3};
    model.rotation = {0.5F, 0.3F, 0.7F};
    glLoadIdentity();
    Matrix expected;
    expected.translate(1, 2, 3);
    expected.rotate(0.5F, 0.3F, 0.7F);

    model.render(false);

    Matrix modelview;
    EXPECT_EQ(modelview.loadModelview().m, expected.m);
}

TEST_F(ModelRenderGLTest, AppliesTheTransformTwiceWhenDrawnTwice)
{
    model.position = {1, 0, 0};
    glLoadIdentity();

    model.render(false);
    model.render(false);

    Matrix modelview;
    modelview.loadModelview();
    EXPECT_THAT(modelview.transformPoint(0, 0, 0), isVector(2, 0, 0));
}

TEST_F(ModelRenderGLTest, PosesTheBonesFirst)
{
    BonedModel boned;
    Bone& bone = boned.addBone();
    bone.position = {1, 2, 3};
    boned.addRestVertex(bone, {0, 0, 0});
    boned.faces = {makeFace(0, 0, 0)};

    boned.render(false);

    EXPECT_THAT(boned.vertices[0].position, isVector(1, 2, 3));
    EXPECT_THAT(bone.absolute, isVector(0, 0, 0));
}

TEST_F(ModelRenderGLTest, DrawsNothingWithoutFaces)
{
    model.faces.clear();

    const Calls calls = render(false);

    EXPECT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls.back(), "glColor3f(0, 0, 0)");
    EXPECT_EQ(model.renderMode, 0);
}

class ModelMaterialGLTest : public ModelRenderGLTest
{
protected:
    /// The calls that the material at `index` of `count` makes.
    Calls materialCalls(std::int32_t index, std::size_t count)
    {
        model.materials.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            model.materials[i].textureId = static_cast<std::uint32_t>(40 + i);
            model.materials[i].diffuse = {0.25F, 0.5F, 0.75F};
            model.materials[i].transparency = 0.125F;
        }
        model.faces[0].material = index;
        model.renderMode = 7; // neither way of drawing
        GLRecorder recorder;
        model.render(false);
        return recorder.calls({"glBindTexture", "glColor4f", "glDisable", "glEnable"});
    }
};

TEST_F(ModelMaterialGLTest, BindsTheTextureAndSetsDiffuseAndTransparency)
{
    EXPECT_THAT(materialCalls(0, 1), ElementsAre("glBindTexture(GL_TEXTURE_2D, 40)",
                                                 "glColor4f(0.25, 0.5, 0.75, 0.125)"));
    EXPECT_THAT(materialCalls(1, 2), ElementsAre("glBindTexture(GL_TEXTURE_2D, 41)",
                                                 "glColor4f(0.25, 0.5, 0.75, 0.125)"));
}

TEST_F(ModelMaterialGLTest, LeavesTheTextureAloneOnePastTheEnd)
{
    EXPECT_THAT(materialCalls(0, 0), ElementsAre());
    EXPECT_THAT(materialCalls(2, 2), ElementsAre());
}

TEST_F(ModelMaterialGLTest, TurnsTexturingOffForAnyOtherIndex)
{
    EXPECT_THAT(materialCalls(-1, 0), ElementsAre("glDisable(GL_TEXTURE_2D)"));
    EXPECT_THAT(materialCalls(1, 0), ElementsAre("glDisable(GL_TEXTURE_2D)"));
    EXPECT_THAT(materialCalls(-1, 2), ElementsAre("glDisable(GL_TEXTURE_2D)"));
    EXPECT_THAT(materialCalls(3, 2), ElementsAre("glDisable(GL_TEXTURE_2D)"));
}

TEST_F(ModelMaterialGLTest, IsThatOfTheFirstFaceAlone)
{
    model.faces.push_back(makeFace(0, 1, 2));
    model.faces[1].material = 1;

    EXPECT_THAT(materialCalls(0, 2), ElementsAre("glBindTexture(GL_TEXTURE_2D, 40)",
                                                 "glColor4f(0.25, 0.5, 0.75, 0.125)"));
}

class ModelImmediateGLTest : public ModelRenderGLTest
{
protected:
    ModelImmediateGLTest() { model.renderMode = 1; }

    /// The calls from the first `glBegin` on.
    Calls drawing(bool flat)
    {
        Calls calls = render(flat);
        calls.erase(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(
                                                       placeOf(calls, "glBegin(GL_TRIANGLES)")));
        return calls;
    }
};

TEST_F(ModelImmediateGLTest, DrawsCornersWithTheirNormalsAndThenThreeNormalsAFace)
{
    EXPECT_THAT(drawing(false),
                ElementsAre("glBegin(GL_TRIANGLES)", "glNormal3f(0, 0, 1)", "glTexCoord2f(0, 0.25)",
                            "glVertex3f(0, 0, 0)", "glNormal3f(0, 1, 0)", "glTexCoord2f(0.5, 0.75)",
                            "glVertex3f(3, 0, 0)", "glNormal3f(1, 0, 0)", "glTexCoord2f(1, 0.125)",
                            "glVertex3f(0, 6, 0)", "glEnd()", "glDisable(GL_LIGHTING)",
                            "glColor3f(0, 1, 0)", "glBegin(GL_LINES)", "glVertex3f(0, 0, 0)",
                            "glVertex3f(0, 0, 1)", "glVertex3f(3, 0, 0)", "glVertex3f(3, 1, 0)",
                            "glVertex3f(0, 6, 0)", "glVertex3f(1, 6, 0)", "glEnd()"));
}

TEST_F(ModelImmediateGLTest, DrawsOneNormalAFaceWhenFlat)
{
    // The face's normal lights it; the line shows the third corner's, from the middle.
    EXPECT_THAT(drawing(true),
                ElementsAre("glBegin(GL_TRIANGLES)", "glNormal3f(0, 0, -1)",
                            "glTexCoord2f(0, 0.25)", "glVertex3f(0, 0, 0)",
                            "glTexCoord2f(0.5, 0.75)", "glVertex3f(3, 0, 0)",
                            "glTexCoord2f(1, 0.125)", "glVertex3f(0, 6, 0)", "glEnd()",
                            "glDisable(GL_LIGHTING)", "glColor3f(0, 1, 0)", "glBegin(GL_LINES)",
                            "glVertex3f(1, 2, 0)", "glVertex3f(2, 2, 0)", "glEnd()"));
}

TEST_F(ModelImmediateGLTest, DividesTheSumOfTheCornersByThree)
{
    // A third of 5 is not 5 times a third, and the end of the line is what lies between.
    model.vertices[1].position = {5, 0, 0};
    model.vertices[2].normal = {-(5.0F / 3.0F), 0, 0};

    const Calls calls = drawing(true);

    EXPECT_EQ(calls[calls.size() - 2], "glVertex3f(0, 2, 0)");
}

TEST_F(ModelImmediateGLTest, LeavesLightingOffAndTheColourGreen)
{
    glEnable(GL_LIGHTING);

    model.render(false);

    EXPECT_EQ(glIsEnabled(GL_LIGHTING), GL_FALSE);
    float colour[4];
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_THAT(colour, ElementsAre(0, 1, 0, 1));
}

TEST_F(ModelImmediateGLTest, IsWhatThereIsWithoutTheExtension)
{
    model.renderMode = 2;
    __GLEW_ARB_vertex_buffer_object = GL_FALSE;

    const Calls calls = render(false);

    __GLEW_ARB_vertex_buffer_object = GL_TRUE;
    EXPECT_LT(placeOf(calls, "glBegin(GL_LINES)"), calls.size());
    EXPECT_EQ(placeOf(calls, "glEnableClientState(GL_VERTEX_ARRAY)"), calls.size());
}

TEST_F(ModelImmediateGLTest, DrawsAnIndexOutOfRangeAtTheOrigin)
{
    model.faces[0].vertex = {-1, 3, 1};

    const Calls calls = drawing(false);

    EXPECT_EQ(calls[3], "glVertex3f(0, 0, 0)");
    EXPECT_EQ(calls[6], "glVertex3f(0, 0, 0)");
    EXPECT_EQ(calls[9], "glVertex3f(3, 0, 0)");
}

/// The floats in the buffer that is called `name`.
std::vector<float> bufferContent(std::uint32_t name)
{
    glBindBuffer(GL_ARRAY_BUFFER, name);
    GLint size = 0;
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &size);
    std::vector<float> content(static_cast<std::size_t>(size) / sizeof(float));
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, size, content.data());
    return content;
}

class ModelBuffersGLTest : public ModelRenderGLTest
{};

TEST_F(ModelBuffersGLTest, AreFilledCornerByCorner)
{
    model.faces.push_back(makeFace(2, 1, 0));
    model.faces[1].colour = {1, 0, 0};

    EXPECT_EQ(model.setRenderMode(2, false, false), 0);

    EXPECT_EQ(model.renderMode, 2);
    EXPECT_EQ(model.flatShaded, 0);
    EXPECT_THAT(bufferContent(model.vertexBuffer), ElementsAreArray({0, 0, 0, 3, 0, 0, 0, 6, 0, //
                                                                     0, 6, 0, 3, 0, 0, 0, 0, 0}));
    EXPECT_THAT(bufferContent(model.colourBuffer),
                ElementsAreArray({0.5F, 0.25F, 0.125F, 0.5F, 0.25F, 0.125F, 0.5F, 0.25F, 0.125F,
                                  1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F}));
    EXPECT_THAT(bufferContent(model.normalBuffer), ElementsAreArray({0, 0, 1, 0, 1, 0, 1, 0, 0, //
                                                                     1, 0, 0, 0, 1, 0, 0, 0, 1}));
    EXPECT_THAT(bufferContent(model.texCoordBuffer),
                ElementsAreArray({0.0F, 0.25F, 0.5F, 0.75F, 1.0F, 0.125F, //
                                  1.0F, 0.125F, 0.5F, 0.75F, 0.0F, 0.25F}));
}

TEST_F(ModelBuffersGLTest, HoldTheFacesNormalThreeTimesWhenFlat)
{
    model.setRenderMode(2, true, false);

    EXPECT_EQ(model.flatShaded, 1);
    EXPECT_THAT(bufferContent(model.normalBuffer),
                ElementsAreArray({0, 0, -1, 0, 0, -1, 0, 0, -1}));
}

TEST_F(ModelBuffersGLTest, AreMadeAndFilledByTheseCalls)
{
    GLRecorder recorder;
    model.setRenderMode(2, false, false);

    EXPECT_THAT(
        recorder.calls(),
        ElementsAre(testing::StartsWith("glGenBuffers(1"), testing::StartsWith("glGenBuffers(1"),
                    testing::StartsWith("glGenBuffers(1"), testing::StartsWith("glGenBuffers(1"),
                    "glBindBuffer(GL_ARRAY_BUFFER, 1)",
                    "glBufferData(GL_ARRAY_BUFFER, 36, data, GL_DYNAMIC_DRAW)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 2)",
                    "glBufferData(GL_ARRAY_BUFFER, 36, data, GL_DYNAMIC_DRAW)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 3)",
                    "glBufferData(GL_ARRAY_BUFFER, 36, data, GL_DYNAMIC_DRAW)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 4)",
                    "glBufferData(GL_ARRAY_BUFFER, 24, data, GL_DYNAMIC_DRAW)"));
    EXPECT_EQ(model.vertexBuffer, 1U);
    EXPECT_EQ(model.colourBuffer, 2U);
    EXPECT_EQ(model.normalBuffer, 3U);
    EXPECT_EQ(model.texCoordBuffer, 4U);
}

TEST_F(ModelBuffersGLTest, AreLeftAloneWhenTheModeIsNotNew)
{
    model.setRenderMode(2, false, false);
    GLRecorder recorder;

    model.setRenderMode(2, true, false);

    EXPECT_THAT(recorder.calls(), ElementsAre());
    EXPECT_EQ(model.flatShaded, 1);
}

TEST_F(ModelBuffersGLTest, AreRefreshedButForTextureCoordinates)
{
    model.setRenderMode(2, false, false);
    model.vertices[0].position = {9, 9, 9};
    model.vertices[0].u = 9;

    model.setRenderMode(2, false, true);

    EXPECT_EQ(bufferContent(model.vertexBuffer)[0], 9.0F);
    EXPECT_THAT(bufferContent(model.texCoordBuffer),
                ElementsAreArray({0.0F, 0.25F, 0.5F, 0.75F, 1.0F, 0.125F}));
}

TEST_F(ModelBuffersGLTest, AreRefreshedByAnUpdateWithTheStoredShading)
{
    model.setRenderMode(2, true, false);
    model.vertices[0].position = {9, 9, 9};

    EXPECT_EQ(model.update(0), 0);

    EXPECT_EQ(bufferContent(model.vertexBuffer)[0], 9.0F);
    EXPECT_THAT(bufferContent(model.normalBuffer),
                ElementsAreArray({0, 0, -1, 0, 0, -1, 0, 0, -1}));
}

TEST_F(ModelBuffersGLTest, AreChosenByTheFirstDrawingWithItsShading)
{
    model.render(true);

    EXPECT_EQ(model.renderMode, 2);
    EXPECT_EQ(model.flatShaded, 1);
    model.render(false);
    EXPECT_THAT(bufferContent(model.normalBuffer),
                ElementsAreArray({0, 0, -1, 0, 0, -1, 0, 0, -1}));
}

TEST_F(ModelBuffersGLTest, AreDrawnByTheseCalls)
{
    model.setRenderMode(2, false, false);
    model.faces[0].material = -1;
    Calls calls = render(false);
    calls.erase(calls.begin(), calls.begin() + 5);

    EXPECT_THAT(
        calls,
        ElementsAre("glEnableClientState(GL_VERTEX_ARRAY)", "glEnableClientState(GL_NORMAL_ARRAY)",
                    "glEnableClientState(GL_COLOR_ARRAY)",
                    "glEnableClientState(GL_TEXTURE_COORD_ARRAY)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 1)", "glVertexPointer(3, GL_FLOAT, 0, null)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 2)", "glColorPointer(3, GL_FLOAT, 0, null)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 3)", "glNormalPointer(GL_FLOAT, 0, null)",
                    "glBindBuffer(GL_ARRAY_BUFFER, 4)", "glTexCoordPointer(2, GL_FLOAT, 0, null)",
                    "glDrawArrays(GL_TRIANGLES, 0, 3)"));
    EXPECT_EQ(glIsEnabled(GL_VERTEX_ARRAY), GL_TRUE);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ModelBuffersGLTest, ShowThePoseOfTheDrawingBeforeTheRefresh)
{
    BonedModel boned;
    Bone& bone = boned.addBone();
    boned.frameCount = 10;
    bone.positionKeys = {{0, Vector(0)}, {10, Vector(10)}};
    for (const Vector& corner : {Vector(0, 0, 0), Vector(1, 0, 0), Vector(0, 1, 0)})
        boned.addRestVertex(bone, corner);
    boned.faces = {makeFace(0, 1, 2)};

    boned.update(5);
    boned.render(false); // fills with the pose at 5
    boned.update(10);    // refreshes with it

    EXPECT_EQ(bufferContent(boned.vertexBuffer)[0], 5.0F);
    boned.render(false);
    EXPECT_EQ(boned.vertices[0].position.x, 10.0F);
}

TEST_F(ModelBuffersGLTest, GiveTheOriginForAnIndexOutOfRange)
{
    model.faces[0].vertex = {-1, 1, 3};

    model.setRenderMode(2, false, false);

    EXPECT_THAT(bufferContent(model.vertexBuffer), ElementsAreArray({0, 0, 0, 3, 0, 0, 0, 0, 0}));
}

TEST_F(ModelBuffersGLTest, GivesBufferNamesToTheFirstModelOnly)
{
    Model second;
    fillWithTriangle(second);
    second.vertexBuffer = 7;

    model.setRenderMode(2, false, false);
    second.setRenderMode(2, false, false);

    EXPECT_EQ(second.vertexBuffer, 7U);
    EXPECT_EQ(second.colourBuffer, 0U);
    EXPECT_EQ(second.normalBuffer, 0U);
    EXPECT_EQ(second.texCoordBuffer, 0U);
}

TEST_F(ModelBuffersGLTest, AreUsedUpByTheFirstCallWhateverItsMode)
{
    Model first;
    first.update(0);

    model.setRenderMode(2, false, false);

    EXPECT_NE(first.vertexBuffer, 0U);
    EXPECT_EQ(first.renderMode, 0);
    EXPECT_EQ(model.vertexBuffer, 0U);
}

TEST_F(ModelBuffersGLTest, DrawNothingForASecondModelWithoutAny)
{
    Model first;
    first.setRenderMode(2, false, false);

    const Calls calls = render(false);

    EXPECT_EQ(model.renderMode, 2);
    EXPECT_EQ(placeOf(calls, "glDrawArrays(GL_TRIANGLES, 0, 3)"), calls.size());
}

TEST_F(ModelBuffersGLTest, DrawASecondModelThatIsGivenTheFirstsNames)
{
    Model first;
    fillWithTriangle(first);
    first.setRenderMode(2, false, false);
    model.vertexBuffer = first.vertexBuffer;
    model.colourBuffer = first.colourBuffer;
    model.normalBuffer = first.normalBuffer;
    model.texCoordBuffer = first.texCoordBuffer;

    const Calls calls = render(false);

    EXPECT_LT(placeOf(calls, "glDrawArrays(GL_TRIANGLES, 0, 3)"), calls.size());
}

TEST_F(ModelBuffersGLTest, AreNotTouchedInAnotherMode)
{
    model.renderMode = 3;

    const Calls calls = render(false);

    EXPECT_EQ(calls.back(), "glEnableClientState(GL_TEXTURE_COORD_ARRAY)");
    EXPECT_EQ(model.renderMode, 3);
}

TEST_F(ModelBuffersGLTest, AreNeitherMadeNorFilledWithoutTheExtension)
{
    __GLEW_ARB_vertex_buffer_object = GL_FALSE;
    GLRecorder recorder;

    EXPECT_EQ(model.setRenderMode(2, false, false), 0);

    __GLEW_ARB_vertex_buffer_object = GL_TRUE;
    EXPECT_THAT(recorder.calls(), ElementsAre());
    EXPECT_EQ(model.renderMode, 2);
    EXPECT_EQ(model.vertexBuffer, 0U);
}
} // namespace
