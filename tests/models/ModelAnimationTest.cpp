#include "tests/models/Matchers.h"
#include "tests/models/ModelBuilding.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

#include <GL/gl.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>

using namespace tamor;
using namespace tamor::test;

namespace
{
constexpr float quarterTurn = std::numbers::pi_v<float> / 2.0F;

TEST(ModelPoseBone, MovesAVertexWithItsBone)
{
    BonedModel model;
    Bone& bone = model.addBone();
    bone.absolute = {1, 0, 0};
    bone.position = {5, 0, 0};
    bone.rotation = {0, 0, quarterTurn};
    model.addRestVertex(bone, {3, 0, 0});

    model.poseBone(&bone, Matrix(), false);

    // Two units out along x from the bone, turned to y, at the bone's new place.
    EXPECT_THAT(model.vertices[0].position, isNear(5, 2, 0));
}

struct Turn
{
    const char* name;
    Vector rotation;
    Vector from;
    Vector to;

    friend void PrintTo(const Turn& row, std::ostream* stream) { *stream << row.name; }
};

class ModelPoseBoneTurns : public testing::TestWithParam<Turn>
{};

TEST_P(ModelPoseBoneTurns, GoAboutXThenYThenZ)
{
    BonedModel model;
    Bone& bone = model.addBone();
    bone.rotation = GetParam().rotation;
    model.addRestVertex(bone, GetParam().from);

    model.poseBone(&bone, Matrix(), false);

    const Vector& to = GetParam().to;
    EXPECT_THAT(model.vertices[0].position, isNear(to.x, to.y, to.z));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ModelPoseBoneTurns,
    testing::Values(Turn{"X", {quarterTurn, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                    Turn{"Y", {0, quarterTurn, 0}, {0, 0, 1}, {1, 0, 0}},
                    Turn{"Z", {0, 0, quarterTurn}, {1, 0, 0}, {0, 1, 0}},
                    // The other order would leave it at (0, 0, 1).
                    Turn{"XBeforeY", {quarterTurn, quarterTurn, 0}, {0, 1, 0}, {1, 0, 0}},
                    // The other order would leave it at (-1, 0, 0).
                    Turn{"XBeforeZ", {quarterTurn, 0, quarterTurn}, {0, 1, 0}, {0, 0, 1}},
                    // The other order would leave it at (0, 1, 0).
                    Turn{"YBeforeZ", {0, quarterTurn, quarterTurn}, {1, 0, 0}, {0, 0, -1}}),
    [](const auto& row) { return row.param.name; });

TEST(ModelPoseBone, PosesChildrenInTheirParentsSpace)
{
    BonedModel model;
    Bone& parent = model.addBone();
    parent.position = {1, 0, 0};
    parent.rotation = {0, 0, quarterTurn};
    Bone& child = model.addBone(&parent);
    child.position = {2, 0, 0};
    model.addRestVertex(child, {1, 0, 0});

    model.poseBone(&parent, Matrix(), false);

    EXPECT_THAT(model.vertices[0].position, isNear(1, 3, 0));
}

TEST(ModelPoseBone, SetsThePlaceOfEveryBoneWhenAskedTo)
{
    BonedModel model;
    Bone& parent = model.addBone();
    parent.position = {1, 2, 3};
    Bone& child = model.addBone(&parent);
    child.position = {0, 1, 0};
    model.addRestVertex(child, {1, 3, 4});

    model.poseBone(&parent, Matrix(), true);

    EXPECT_THAT(parent.absolute, isVector(1, 2, 3));
    EXPECT_THAT(child.absolute, isVector(1, 3, 3));
    // Posed with the new place at once, so that a rest pose leaves vertices where they are.
    EXPECT_THAT(model.vertices[0].position, isVector(1, 3, 4));
}

TEST(ModelPoseBone, LeavesThePlaceOfBonesOtherwise)
{
    BonedModel model;
    Bone& bone = model.addBone();
    bone.position = {1, 2, 3};

    model.poseBone(&bone, Matrix(), false);

    EXPECT_THAT(bone.absolute, isVector(0, 0, 0));
}

TEST(ModelPoseBone, LeavesNormalsAsTheyAre)
{
    BonedModel model;
    Bone& bone = model.addBone();
    bone.rotation = {0, 0, quarterTurn};
    model.addRestVertex(bone, {1, 0, 0});
    model.vertices[0].normal = {1, 0, 0};

    model.poseBone(&bone, Matrix(), false);

    EXPECT_THAT(model.vertices[0].normal, isVector(1, 0, 0));
}

TEST(ModelPoseBone, AddsTheProductsFromLeftToRightAndRoundsEachSum)
{
    BonedModel model;
    Bone& bone = model.addBone();
    model.addRestVertex(bone, {1e8F, -1e8F, 1});
    model.addRestVertex(bone, {1, 0, 1e8F});
    // Each place is x + y + z, less 1e8 along x.
    Matrix sums;
    for (std::size_t column = 0; column < 3; ++column)
        sums.m[4 * column] = sums.m[4 * column + 1] = sums.m[4 * column + 2] = 1.0F;
    sums.m[12] = -1e8F;

    model.poseBone(&bone, sums, false);

    EXPECT_THAT(model.vertices[0].position, isVector(-1e8F, 1, 1));
    EXPECT_THAT(model.vertices[1].position, isVector(0, 1e8F, 1e8F));
}

TEST(ModelPoseBone, IgnoresTheBottomRowOfTheMatrix)
{
    BonedModel model;
    Bone& bone = model.addBone();
    model.addRestVertex(bone, {1, 2, 3});
    Matrix parent;
    parent.m[3] = 5;
    parent.m[15] = 7;

    model.poseBone(&bone, parent, false);

    EXPECT_THAT(model.vertices[0].position, isVector(1, 2, 3));
}

TEST(ModelPoseBone, StaysInsideWhatThereIs)
{
    BonedModel model;
    Bone& bone = model.addBone();
    bone.attached = {-1, 0, 7};
    bone.children = {-1, 3};
    model.vertices.resize(2);

    model.poseBone(&bone, Matrix(), false); // without a rest pose

    EXPECT_THAT(model.vertices[0].position, isVector(0, 0, 0));
}

TEST(ModelPrepare, PosesAtRestAndNotesThePlaceOfBones)
{
    BonedModel model;
    Bone& parent = model.addBone();
    parent.position = {1, 0, 0};
    Bone& child = model.addBone(&parent);
    child.position = {0, 2, 0};
    model.addRestVertex(child, {4, 4, 4});

    model.prepare(0);

    EXPECT_THAT(parent.absolute, isVector(1, 0, 0));
    EXPECT_THAT(child.absolute, isVector(1, 2, 0));
    EXPECT_THAT(model.vertices[0].position, isVector(4, 4, 4));
}

TEST(ModelPrepare, MarksTheColourOfEveryFace)
{
    Model model;
    model.makeCube();

    model.prepare(0);

    EXPECT_EQ(model.faces.size(), 12U);
    for (const Face& face : model.faces)
        EXPECT_THAT(face.colour, isVector(-1, -1, -1));
}

TEST(ModelPrepare, DividesACubeInFortyEightFaces)
{
    Model model;
    model.makeCube();

    model.prepare(1);

    EXPECT_EQ(model.faces.size(), 48U);
    EXPECT_EQ(model.vertices.size(), 20U + 36U);
    EXPECT_THAT(model.faces[47].colour, isVector(-1, -1, -1));
}

TEST(ModelPrepare, DividesAgainForEachLevel)
{
    Model model;
    model.makeCube();

    model.prepare(2);

    EXPECT_EQ(model.faces.size(), 192U);
    EXPECT_EQ(model.vertices.size(), 56U + 144U);
}

TEST(ModelPrepare, DividesATriangleInTheStatedOrder)
{
    Model model;
    fillWithTriangle(model);
    model.vertices[0].bone = 4;
    model.vertices[1].bone = 5;
    model.vertices[2].bone = 6;
    model.faces[0].material = 2;
    model.faces[0].smoothingGroup = 3;
    model.faces[0].normalIndex = {7, 8, 9};

    model.prepare(1);

    ASSERT_EQ(model.vertices.size(), 6U);
    const Vertex& p = model.vertices[3];
    const Vertex& q = model.vertices[4];
    const Vertex& r = model.vertices[5];
    EXPECT_THAT(p.position, isVector(1.5, 0, 0));
    EXPECT_THAT(q.position, isVector(1.5, 3, 0));
    EXPECT_THAT(r.position, isVector(0, 3, 0));
    EXPECT_EQ((std::array{p.u, q.u, r.u}), (std::array{0.25F, 0.75F, 0.5F}));
    EXPECT_EQ((std::array{p.v, q.v, r.v}), (std::array{0.5F, 0.4375F, 0.1875F}));
    EXPECT_EQ((std::array{p.bone, q.bone, r.bone}), (std::array{4, 5, 6}));
    EXPECT_THAT(p.normal, isVector(0, 0, 0));

    using Corners = std::array<std::int32_t, 3>;
    ASSERT_EQ(model.faces.size(), 4U);
    EXPECT_EQ(model.faces[0].vertex, (Corners{0, 3, 5}));
    EXPECT_EQ(model.faces[1].vertex, (Corners{3, 1, 4}));
    EXPECT_EQ(model.faces[2].vertex, (Corners{5, 4, 2}));
    EXPECT_EQ(model.faces[3].vertex, (Corners{3, 4, 5}));
    for (const Face& face : model.faces) {
        EXPECT_EQ(face.material, 2);
        EXPECT_EQ(face.smoothingGroup, 3);
        EXPECT_EQ(face.normalIndex, (Corners{0, 0, 0}));
        EXPECT_THAT(face.normal, isVector(0, 0, 0));
    }
}

TEST(ModelPrepare, AttachesNoBoneToTheNewVertices)
{
    BonedModel model;
    Bone& bone = model.addBone();
    for (const Vector& corner : {Vector(0, 0, 0), Vector(1, 0, 0), Vector(0, 1, 0)})
        model.addRestVertex(bone, corner);
    model.faces = {makeFace(0, 1, 2)};

    model.prepare(1);

    EXPECT_EQ(bone.attached, (std::vector<std::int32_t>{0, 1, 2}));
    EXPECT_EQ(model.restVertices.size(), 3U);
}

TEST(ModelPrepare, DividesAFaceWithAnIndexOutOfRange)
{
    Model model;
    fillWithTriangle(model);
    model.faces[0].vertex = {0, 1, 9};

    model.prepare(1);

    EXPECT_EQ(model.faces[2].vertex[2], 9);
    EXPECT_THAT(model.vertices[4].position, isVector(1.5, 0, 0));
}

/// A root's `matrix` starts from OpenGL's, which these tests do without: they look at a child.
class ModelAnimateBone : public testing::Test
{
protected:
    ModelAnimateBone() : root(model.addBone()), bone(model.addBone(&root)) {}

    void animate(float time) { model.animateBone(1, time); }

    BonedModel model;
    Bone& root;
    Bone& bone;
};

TEST_F(ModelAnimateBone, AddsTheSampleToTheRestPose)
{
    bone.localPosition = {1, 2, 3};
    bone.localRotation = {0.5F, 0, 0};
    bone.positionKeys = {{0, {10, 0, 0}}, {10, {20, 4, 0}}};
    bone.rotationKeys = {{0, {1, 0, 0}}, {4, {3, 0, 0}}};

    animate(2.5F);

    EXPECT_THAT(bone.position, isVector(13.5, 3, 3));
    EXPECT_THAT(bone.rotation, isVector(2.75, 0, 0));
}

TEST_F(ModelAnimateBone, AddsTheSampleFromLeftToRightAndRoundsEachSum)
{
    // 6.4 + (7.35 + 1.45) would be 15.2: added one after the other, the last bit is another.
    bone.localPosition = {6.4F, 4.9F, 5.4F};
    bone.localRotation = {5.4F, 6.4F, 4.9F};
    bone.positionKeys = {{0, {9.8F, 8.8F, 7.2F}}, {4, {5.8F, 2.8F, 8.3F}}};
    bone.rotationKeys = {{0, {7.2F, 9.8F, 8.8F}}, {4, {8.3F, 5.8F, 2.8F}}};

    animate(1.0F);

    EXPECT_THAT(bone.position, isVector(0x1.e66666p+3F, 0x1.866666p+3F, 0x1.9bfffep+3F));
    EXPECT_THAT(bone.rotation, isVector(0x1.9bfffep+3F, 0x1.e66666p+3F, 0x1.866666p+3F));
}

TEST_F(ModelAnimateBone, KeepsTheWeightOfTheRestPose)
{
    bone.localPosition = {0, 0, 0, 3};
    bone.localRotation = {0, 0, 0, 4};
    bone.positionKeys = {{0, {1, 0, 0}}};

    animate(1.0F);

    EXPECT_EQ(bone.position.w, 3.0F);
    EXPECT_EQ(bone.rotation.w, 4.0F);
}

struct Sample
{
    const char* name;
    float time;
    float x;

    friend void PrintTo(const Sample& row, std::ostream* stream) { *stream << row.name; }
};

class ModelAnimateBoneSamples : public testing::TestWithParam<Sample>
{};

TEST_P(ModelAnimateBoneSamples, LieBetweenTheKeysAround)
{
    BonedModel model;
    Bone& root = model.addBone();
    Bone& bone = model.addBone(&root);
    bone.positionKeys = {{0, Vector(10)}, {10, Vector(20)}, {20, Vector(40)}};

    model.animateBone(1, GetParam().time);

    EXPECT_EQ(bone.position.x, GetParam().x);
}

INSTANTIATE_TEST_SUITE_P(Rows, ModelAnimateBoneSamples,
                         testing::Values(Sample{"BeforeAllKeys", -5, 10},
                                         Sample{"AtTheFirstKey", 0, 10}, Sample{"HalfWay", 5, 15},
                                         Sample{"AtAKey", 10, 20},
                                         Sample{"InTheSecondPart", 15, 30},
                                         Sample{"AtTheLastKey", 20, 40},
                                         Sample{"AfterAllKeys", 25, 40}),
                         [](const auto& row) { return row.param.name; });

TEST_F(ModelAnimateBone, TakesTheKeyBeforeOneAtExactlyTheTime)
{
    // A jump at frame 10: before it 20, from it on 90.
    bone.positionKeys = {{0, Vector(10)}, {10, Vector(20)}, {10, Vector(90)}};

    animate(10);

    EXPECT_EQ(bone.position.x, 20.0F);
}

TEST_F(ModelAnimateBone, LetsTheLastOfUnorderedKeysDecide)
{
    bone.positionKeys = {{5, Vector(50)}, {0, Vector(7)}};

    animate(6);

    EXPECT_EQ(bone.position.x, 7.0F);
}

TEST_F(ModelAnimateBone, RestsWithoutKeys)
{
    bone.localPosition = {1, 2, 3};
    bone.localRotation = {quarterTurn, 0, 0};
    bone.position = {9, 9, 9};

    animate(3);

    EXPECT_THAT(bone.position, isVector(1, 2, 3));
    EXPECT_THAT(bone.rotation, isVector(quarterTurn, 0, 0));
    EXPECT_EQ(bone.matrix.m, Matrix().m);
}

TEST_F(ModelAnimateBone, CountsTheFirstKeyForBothBeforeItsTime)
{
    // Nothing of the one behind is an infinity times 0.
    bone.positionKeys = {{5, Vector(std::numeric_limits<float>::infinity())}, {6, Vector()}};

    animate(3);

    EXPECT_TRUE(std::isnan(bone.position.x));
    EXPECT_EQ(bone.position.y, 0.0F);
}

TEST_F(ModelAnimateBone, AddsTheZeroVectorWithoutKeys)
{
    bone.localPosition = {-0.0F, -0.0F, -0.0F};

    animate(3);

    EXPECT_FALSE(std::signbit(bone.position.x));
    EXPECT_FALSE(std::signbit(bone.position.y));
    EXPECT_FALSE(std::signbit(bone.position.z));
}

TEST_F(ModelAnimateBone, TurnsTheMatrixOnlyWithRotationKeys)
{
    bone.localPosition = {1, 2, 3};
    bone.localRotation = {0, 0, quarterTurn};
    bone.positionKeys = {{0, Vector(1)}};

    animate(3);

    const std::array<float, 16> moved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 2, 3, 1};
    EXPECT_EQ(bone.matrix.m, moved);
    EXPECT_THAT(bone.rotation, isVector(0, 0, quarterTurn));
}

TEST_F(ModelAnimateBone, MovesTheMatrixOnlyWithPositionKeys)
{
    bone.localPosition = {1, 2, 3};
    bone.rotationKeys = {{0, {0, 0, quarterTurn}}};

    animate(3);

    EXPECT_THAT(bone.matrix.transformPoint(1, 0, 0), isNear(0, 1, 0));
}

TEST_F(ModelAnimateBone, PutsTheParentBehindTheLocalMatrix)
{
    root.matrix.rotate(0, 0, quarterTurn);
    bone.positionKeys = {{0, Vector(1)}};

    animate(3);

    // The other order would turn the place to (0, 1, 0).
    EXPECT_THAT(bone.matrix.transformPoint(0, 0, 0), isNear(1, 0, 0));
    EXPECT_THAT(bone.matrix.transformPoint(1, 0, 0), isNear(1, 1, 0));
}

TEST_F(ModelAnimateBone, TakesChildrenAlong)
{
    Bone& grandchild = model.addBone(&bone);
    bone.positionKeys = {{0, Vector(1)}};
    grandchild.positionKeys = {{0, {0, 5, 0}}};

    animate(3);

    EXPECT_THAT(grandchild.position, isVector(0, 5, 0));
    EXPECT_THAT(grandchild.matrix.transformPoint(0, 0, 0), isVector(1, 5, 0));
}

TEST_F(ModelAnimateBone, DoesNothingForAnIndexOfNoBone)
{
    model.animateBone(-1, 1);
    model.animateBone(2, 1);

    EXPECT_THAT(bone.position, isVector(0, 0, 0));
}

struct Loop
{
    const char* name;
    float time;
    float effective;

    friend void PrintTo(const Loop& row, std::ostream* stream) { *stream << row.name; }
};

class ModelUpdate : public testing::TestWithParam<Loop>
{};

TEST_P(ModelUpdate, LoopsTheTimeAndKeepsBothEnds)
{
    BonedModel model;
    Bone& bone = model.addBone();
    model.frameCount = 30;
    // A key a frame, worth its time.
    for (int frame = 0; frame <= 30; ++frame)
        bone.positionKeys.push_back({static_cast<float>(frame), Vector(static_cast<float>(frame))});

    EXPECT_EQ(model.update(GetParam().time), 0);

    EXPECT_EQ(bone.position.x, GetParam().effective);
}

INSTANTIATE_TEST_SUITE_P(Rows, ModelUpdate,
                         testing::Values(Loop{"Start", 0, 0}, Loop{"Inside", 12.5F, 12.5F},
                                         Loop{"End", 30, 30}, Loop{"PastTheEnd", 31, 1},
                                         Loop{"TwiceTheEnd", 60, 30}, Loop{"FarPast", 91, 1},
                                         Loop{"BeforeTheStart", -1, 29},
                                         Loop{"ALoopBefore", -30, 0}, Loop{"FarBefore", -31, 29}),
                         [](const auto& row) { return row.param.name; });

TEST(ModelUpdateOnce, AnimatesARootAndItsChildren)
{
    BonedModel model;
    model.frameCount = 10;
    Bone& first = model.addBone();
    Bone& child = model.addBone(&first);
    Bone& second = model.addBone();
    first.positionKeys = {{0, Vector(1)}};
    child.positionKeys = {{0, Vector(2)}};
    second.positionKeys = {{0, Vector(3)}};

    model.update(4);

    EXPECT_EQ(first.position.x, 1.0F);
    EXPECT_EQ(child.position.x, 2.0F);
    EXPECT_EQ(second.position.x, 3.0F);
}

TEST(ModelUpdateOnce, NeverReturnsFromATimeWithoutFrames)
{
    for (const float time : {0.5F, -0.5F}) {
        BonedModel model;
        EXPECT_TRUE(runsForEver([&] { model.update(time); })) << time;
    }

    BonedModel model;
    EXPECT_EQ(model.update(0), 0);
}

TEST(ModelUpdateOnce, LeavesABoneThatItsParentDoesNotListAsAChild)
{
    BonedModel model;
    model.frameCount = 10;
    Bone& parent = model.addBone();
    Bone& child = model.addBone(&parent);
    child.positionKeys = {{0, Vector(2)}};
    parent.children.clear();

    model.update(4);

    EXPECT_EQ(child.position.x, 0.0F);
}

TEST(ModelUpdateOnce, LeavesVerticesToRendering)
{
    BonedModel model;
    model.frameCount = 10;
    Bone& bone = model.addBone();
    bone.positionKeys = {{0, Vector(1)}};
    model.addRestVertex(bone, {0, 0, 0});

    model.update(4);

    EXPECT_THAT(model.vertices[0].position, isVector(0, 0, 0));
}

class ModelAnimateBoneGLTest : public WindowTest
{};

TEST_F(ModelAnimateBoneGLTest, StartsARootFromTheModelviewMatrix)
{
    glLoadIdentity();
    glTranslatef(0, 0, -5);
    BonedModel model;
    Bone& bone = model.addBone();
    bone.positionKeys = {{0, Vector(1)}};

    model.animateBone(0, 1);

    EXPECT_THAT(bone.matrix.transformPoint(0, 0, 0), isVector(1, 0, -5));
}
} // namespace
