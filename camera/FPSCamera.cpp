#include "camera/FPSCamera.h"

#include <GL/gl.h>

#include <cmath>

namespace tamor
{
namespace
{
constexpr float radiansPerDegree = 0.017453292F;
constexpr float degreesPerRadian = 57.295776F;
constexpr float pitchLimit = 89.9F; // degrees
constexpr float lookAtTolerance = 0.001F;

/// The angle whose tangent is `opposite` by `adjacent`, in degrees.
float degreesOf(float opposite, float adjacent)
{
    return std::atan(opposite / adjacent) * degreesPerRadian;
}

/// The yaw towards the direction `d`, or `yaw` where `d` has none.
float yawTowards(Vector d, float yaw)
{
    const float x = std::abs(d.x);
    const float z = std::abs(d.z);
    if (x < lookAtTolerance && z < lookAtTolerance)
        return 0.0F;
    if (x > z && d.x < 0.0F)
        return degreesOf(z, x) - 90.0F;
    if (x > z && d.x > 0.0F)
        return 90.0F - degreesOf(z, x);
    if (d.z > 0.0F)
        return degreesOf(x, z) + 180.0F;
    if (d.z < 0.0F)
        return -degreesOf(x, z);
    return yaw;
}

/// The pitch towards the direction `d`, or `pitch` where `d` has none.
float pitchTowards(Vector d, float pitch)
{
    const float y = std::abs(d.y);
    const float z = std::abs(d.z);
    if (y < lookAtTolerance && z < lookAtTolerance)
        return 0.0F;
    if (y > z && d.y < 0.0F)
        return 90.0F - degreesOf(z, y);
    if (y > z && d.y > 0.0F)
        return degreesOf(z, y) + 90.0F;
    if (d.z > 0.0F)
        return degreesOf(y, z);
    if (d.z < 0.0F)
        return -degreesOf(y, z);
    return pitch;
}
} // namespace

bool FPSCamera::reset(float newMoveSpeed, float newLookSpeed)
{
    position = Vector();
    rotation = Vector();
    upAxis = Vector(0, 1, 0);
    rightAxis = Vector(1, 0, 0);
    forwardAxis = Vector(0, 0, -1);
    setSpeeds(newMoveSpeed, newLookSpeed);
    return true;
}

bool FPSCamera::setSpeeds(float newMoveSpeed, float newLookSpeed)
{
    moveSpeed = newMoveSpeed;
    lookSpeed = newLookSpeed;
    return true;
}

bool FPSCamera::apply()
{
    glLoadIdentity();
    glRotatef(rotation.x, 1, 0, 0);
    glRotatef(rotation.y, 0, 1, 0);
    glRotatef(rotation.z, 0, 0, 1);
    glTranslatef(-position.x, -position.y, -position.z);
    return true;
}

void FPSCamera::move(bool forward, bool back, bool up, bool down, bool left, bool right)
{
    const float pitch = rotation.x * radiansPerDegree;
    const float yaw = rotation.y * radiansPerDegree;
    Vector direction;
    if (up)
        direction.y += 1.0F;
    if (down)
        direction.y -= 1.0F;
    if (forward) {
        direction.x += std::sin(yaw) * std::cos(pitch);
        direction.y -= std::sin(pitch);
        direction.z -= std::cos(pitch) * std::cos(yaw);
    }
    if (back) {
        direction.x -= std::sin(yaw) * std::cos(pitch);
        direction.y += std::sin(pitch);
        direction.z += std::cos(pitch) * std::cos(yaw);
    }
    if (left) {
        direction.x -= std::cos(yaw);
        direction.z -= std::sin(yaw);
    }
    if (right) {
        direction.x += std::cos(yaw);
        direction.z += std::sin(yaw);
    }
    if (direction.length() > 1.0F)
        direction.normalise();
    position += direction * frameTime * moveSpeed;
}

void FPSCamera::look(float dx, float dy, float dz)
{
    // Meant: a turn past the limit is refused, not clamped, so a large motion leaves a gap before
    // the limit; `FPSCameraLook.RefusesATurnPastThePitchLimit` holds it.
    const float pitch = rotation.x - lookSpeed * dy;
    if (pitch > -pitchLimit && pitch < pitchLimit)
        rotation.x = pitch;
    rotation.y += lookSpeed * dx;
    rotation.z += lookSpeed * dz;
}

bool FPSCamera::setFrameTime(float milliseconds)
{
    frameTime = milliseconds;
    return true;
}

bool FPSCamera::setPosition(Vector newPosition)
{
    position = newPosition;
    return true;
}

bool FPSCamera::lookAt(Vector newPosition, Vector target, Vector up)
{
    position = newPosition;
    forwardAxis = target - newPosition;
    upAxis = up;
    Vector direction = target - newPosition;
    direction.normalise();
    rotation.y = yawTowards(direction, rotation.y);
    rotation.x = pitchTowards(direction, rotation.x);
    return true;
}
} // namespace tamor
