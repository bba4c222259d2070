#include "camera/FPSCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tamor
{
namespace
{
/// What single-precision sines and arctangents leave of values up to 100.
constexpr float rounding = 1e-4F;

void expectPoint(Vector point, float x, float y, float z)
{
    EXPECT_NEAR(point.x, x, rounding);
    EXPECT_NEAR(point.y, y, rounding);
    EXPECT_NEAR(point.z, z, rounding);
    EXPECT_EQ(point.w, 1.0F);
}

TEST(FPSCamera, StartsAtTheOriginWithUnsetAxes)
{
    FPSCamera camera;

    expectPoint(camera.getPosition(), 0, 0, 0);
    expectPoint(camera.rotation, 0, 0, 0);
    expectPoint(camera.upAxis, 0, 0, 0);
    expectPoint(camera.rightAxis, 0, 0, 0);
    expectPoint(camera.forwardAxis, 0, 0, 0);
}

TEST(FPSCamera, ResetGoesBackAndSetsTheAxesAndSpeeds)
{
    FPSCamera camera;
    camera.position = Vector(1, 2, 3, 4);
    camera.rotation = Vector(10, 20, 30);

    EXPECT_TRUE(camera.reset(0.5F, 0.25F));

    expectPoint(camera.position, 0, 0, 0);
    expectPoint(camera.rotation, 0, 0, 0);
    expectPoint(camera.upAxis, 0, 1, 0);
    expectPoint(camera.rightAxis, 1, 0, 0);
    expectPoint(camera.forwardAxis, 0, 0, -1);
    EXPECT_EQ(camera.moveSpeed, 0.5F);
    EXPECT_EQ(camera.lookSpeed, 0.25F);
}

TEST(FPSCamera, ResetSetsTheSpeedsThroughTheVirtualTable)
{
    struct HalfSpeed : FPSCamera
    {
        bool setSpeeds(float newMoveSpeed, float newLookSpeed) override
        {
            return FPSCamera::setSpeeds(newMoveSpeed / 2, newLookSpeed / 2);
        }
    } camera;

    camera.reset(4, 2);

    EXPECT_EQ(camera.moveSpeed, 2.0F);
    EXPECT_EQ(camera.lookSpeed, 1.0F);
}

TEST(FPSCamera, StoresWhatItIsGiven)
{
    FPSCamera camera;

    EXPECT_TRUE(camera.setSpeeds(1, 2));
    EXPECT_TRUE(camera.setFrameTime(3));
    EXPECT_TRUE(camera.setPosition(Vector(4, 5, 6)));

    EXPECT_EQ(camera.moveSpeed, 1.0F);
    EXPECT_EQ(camera.lookSpeed, 2.0F);
    EXPECT_EQ(camera.frameTime, 3.0F);
    expectPoint(camera.getPosition(), 4, 5, 6);
}

/// A camera that moves one unit a frame, and the flags of `move` by name.
class FPSCameraMove : public testing::Test
{
protected:
    FPSCameraMove()
    {
        camera.reset(1, 1);
        camera.setFrameTime(1);
    }

    FPSCamera camera;
};

TEST_F(FPSCameraMove, GoesInTheDirectionOfEachFlag)
{
    struct Row
    {
        const char* name;
        bool forward, back, up, down, left, right;
        Vector end;
    };
    const Row rows[] = {
        {"none", false, false, false, false, false, false, {0, 0, 0}},
        {"forward", true, false, false, false, false, false, {0, 0, -1}},
        {"back", false, true, false, false, false, false, {0, 0, 1}},
        {"up", false, false, true, false, false, false, {0, 1, 0}},
        {"down", false, false, false, true, false, false, {0, -1, 0}},
        {"left", false, false, false, false, true, false, {-1, 0, 0}},
        {"right", false, false, false, false, false, true, {1, 0, 0}},
        {"forward and back", true, true, false, false, false, false, {0, 0, 0}},
        {"up and down", false, false, true, true, false, false, {0, 0, 0}},
        {"left and right", false, false, false, false, true, true, {0, 0, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        camera.setPosition(Vector());
        camera.move(row.forward, row.back, row.up, row.down, row.left, row.right);
        expectPoint(camera.position, row.end.x, row.end.y, row.end.z);
    }
}

TEST_F(FPSCameraMove, ADiagonalIsNoFaster)
{
    camera.move(true, false, false, false, true, false);

    // The half of the square root of 2.
    expectPoint(camera.position, -0.70711F, 0, -0.70711F);
}

TEST_F(FPSCameraMove, AShorterDirectionIsNotStretched)
{
    // Back and up at a pitch of 60 degrees: (0, sin 60 - 1, cos 60), which is shorter than 1.
    camera.rotation.x = 60;
    camera.move(false, true, false, true, false, false);

    expectPoint(camera.position, 0, -0.13397F, 0.5F);
}

TEST_F(FPSCameraMove, ForwardFollowsPitchAndYaw)
{
    camera.rotation = Vector(30, 90, 0);

    camera.move(true, false, false, false, false, false);

    // A positive pitch looks down.
    expectPoint(camera.position, 0.86603F, -0.5F, 0);
}

TEST_F(FPSCameraMove, CountsRadiansByItsFactor)
{
    camera.rotation = Vector(0, 200, 0);

    camera.move(true, false, false, false, false, false);

    // A factor of 0.01745329 would give -0.342019707.
    EXPECT_NEAR(camera.position.x, -0.342020154F, 1e-7F);
}

TEST_F(FPSCameraMove, BackIsTheOppositeOfForward)
{
    camera.rotation = Vector(30, 90, 0);

    camera.move(false, true, false, false, false, false);

    expectPoint(camera.position, -0.86603F, 0.5F, 0);
}

TEST_F(FPSCameraMove, SidewaysIsLevelAndUpIsTheWorldsUp)
{
    camera.rotation = Vector(60, 90, 0);
    camera.move(false, false, false, false, false, true);
    expectPoint(camera.position, 0, 0, 1);

    camera.setPosition(Vector());
    camera.move(false, false, false, false, true, false);
    expectPoint(camera.position, 0, 0, -1);

    camera.setPosition(Vector());
    camera.move(false, false, true, false, false, false);
    expectPoint(camera.position, 0, 1, 0);
}

TEST_F(FPSCameraMove, CoversSpeedTimesFrameTime)
{
    camera.setSpeeds(0.01F, 0);
    camera.setFrameTime(16);

    camera.move(true, false, false, false, false, false);

    expectPoint(camera.position, 0, 0, -0.16F);
}

TEST(FPSCameraLook, TurnsByTheMotionTimesTheSpeed)
{
    FPSCamera camera;
    camera.setSpeeds(0, 0.5F);

    camera.look(10, 20, 30);

    // Upward motion lowers the pitch, which counts downwards.
    expectPoint(camera.rotation, -10, 5, 15);

    camera.look(10, 20, 30);

    expectPoint(camera.rotation, -20, 10, 30);
}

TEST(FPSCameraLook, RefusesATurnPastThePitchLimit)
{
    FPSCamera camera;
    camera.setSpeeds(0, 1);
    camera.rotation.x = 89.8F;

    camera.look(1, -0.15F, 0);
    EXPECT_EQ(camera.rotation.x, 89.8F);
    EXPECT_EQ(camera.rotation.y, 1.0F);

    camera.rotation.x = -89.0F;
    camera.look(0, 0.95F, 0);
    EXPECT_EQ(camera.rotation.x, -89.0F);
    camera.look(0, 0.85F, 0);
    EXPECT_FLOAT_EQ(camera.rotation.x, -89.85F);
}

TEST(FPSCameraLook, TheLimitItselfIsRefused)
{
    FPSCamera camera;
    camera.setSpeeds(0, 1);

    camera.look(0, -89.9F, 0);
    EXPECT_EQ(camera.rotation.x, 0.0F);
    camera.look(0, 89.9F, 0);
    EXPECT_EQ(camera.rotation.x, 0.0F);
    camera.look(0, -89.8F, 0);
    EXPECT_EQ(camera.rotation.x, 89.8F);
}

TEST(FPSCameraLook, TheYawGrowsWithoutWrapping)
{
    FPSCamera camera;
    camera.setSpeeds(0, 1);

    camera.look(350, 0, 0);
    camera.look(350, 0, 0);

    EXPECT_EQ(camera.rotation.y, 700.0F);
}

TEST(FPSCameraLookAt, TurnsByTheTablesOfComponents)
{
    struct Row
    {
        Vector target;
        float yaw;
        float pitch;
    };
    const Row rows[] = {
        {{0, 0, -10}, 0, 0},
        {{0, 0, 10}, 180, 0},
        {{10, 0, 0}, 90, 0},
        {{-10, 0, 0}, -90, 0},
        // With x the larger component: the arctangent of z by x, here 26.565 degrees.
        {{10, 0, -5}, 63.435F, 0},
        {{10, 0, 5}, 63.435F, 0},
        {{-10, 0, -5}, -63.435F, 0},
        {{-10, 0, 5}, -63.435F, 0},
        // With z the larger one: the arctangent of x by z, whose sign is lost.
        {{1, 0, -10}, -5.7106F, 0},
        {{-1, 0, -10}, -5.7106F, 0},
        {{1, 0, 10}, 185.7106F, 0},
        {{-1, 0, 10}, 185.7106F, 0},
        // The pitch, by y and z alone.
        {{0, -10, -5}, 0, 63.435F},
        {{0, 10, -5}, 0, 116.565F},
        {{0, 5, 10}, 180, 26.565F},
        {{0, 5, -10}, 0, -26.565F},
        {{0, -5, -10}, 0, -26.565F},
        {{0, 10, 0}, 0, 90},
        {{0, -10, 0}, 0, 90},
        // Of the direction, which is 1 long, two components below 0.001 count as none.
        {{0.999F, 1000, 0.999F}, 0, 90.0572F},
        {{0.999F, 1000, -0.999F}, 0, 90.0572F},
        {{-0.999F, 1000, 0}, 0, 90},
        {{1.001F, 1000, 0}, 90, 90},
        {{-1.001F, 1000, 0}, -90, 90},
        {{0, 1000, 1.001F}, 180, 90.0574F},
        {{0, -1000, 1.001F}, 180, 89.9426F},
        {{1000, 0.999F, 0.999F}, 90 - 0.0572F, 0},
        {{1000, -0.999F, 0}, 90, 0},
        {{1000, 1.001F, 0}, 90, 90},
        {{1000, 0, 1.001F}, 90 - 0.0574F, 0},
        {{1000, 0.5F, 1.001F}, 90 - 0.0574F, 26.5421F},
        // With x and z alike the smaller row decides by z, and so it does with y and z alike.
        {{5, 0, -5}, -45, 0},
        {{5, 0, 5}, 225, 0},
        {{-5, 0, 5}, 225, 0},
        {{0, 5, 5}, 180, 45},
        {{0, 5, -5}, 0, -45},
        {{0, -5, -5}, 0, -45},
    };
    for (const Row& row : rows) {
        FPSCamera camera;
        camera.rotation = Vector(1, 2, 3);
        SCOPED_TRACE(testing::Message()
                     << row.target.x << " " << row.target.y << " " << row.target.z);

        EXPECT_TRUE(camera.lookAt(Vector(), row.target, Vector(0, 1, 0)));

        EXPECT_NEAR(camera.rotation.y, row.yaw, 1e-3F);
        EXPECT_NEAR(camera.rotation.x, row.pitch, 1e-3F);
        EXPECT_EQ(camera.rotation.z, 3.0F);
    }
}

TEST(FPSCameraLookAt, CountsDegreesByItsFactorToTheLastBit)
{
    FPSCamera camera;

    camera.lookAt(Vector(), Vector(1, 0, -8), Vector(0, 1, 0));

    // The arctangent of an eighth; a factor of 57.29578 would give -7.12501669.
    EXPECT_EQ(camera.rotation.y, -7.12501621F);
}

TEST(FPSCameraLookAt, KeepsPositionAndAxes)
{
    FPSCamera camera;

    camera.lookAt(Vector(1, 2, 3), Vector(1, 2, -7), Vector(0, 0, 1));

    expectPoint(camera.position, 1, 2, 3);
    expectPoint(camera.forwardAxis, 0, 0, -10);
    expectPoint(camera.upAxis, 0, 0, 1);
}

TEST(FPSCameraLookAt, ATargetAtThePositionLeavesBothAngles)
{
    FPSCamera camera;
    camera.rotation = Vector(11, 22, 33);

    camera.lookAt(Vector(1, 2, 3), Vector(1, 2, 3), Vector(0, 1, 0));

    expectPoint(camera.rotation, 11, 22, 33);
    expectPoint(camera.position, 1, 2, 3);
}
} // namespace
} // namespace tamor
