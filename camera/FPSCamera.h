/// \file
/// The first-person camera.
#pragma once

#include "TamorExport.h"
#include "camera/Camera.h"

namespace tamor
{
/// A camera that flies: forward follows the pitch, up and down are along the world's y axis, left
/// and right are level.
///
/// The speeds and the frame time start at 0: `reset` or `setSpeeds`, and `setFrameTime`, come
/// before `move` and `look`.
class TAMOR_EXPORT FPSCamera : public Camera
{
public:
    bool reset(float newMoveSpeed, float newLookSpeed) override;
    bool setSpeeds(float newMoveSpeed, float newLookSpeed) override;
    bool apply() override;
    void move(bool forward, bool back, bool up, bool down, bool left, bool right) override;

    /// As `Camera::look`. A turn that would take the pitch to 89.9 degrees or past it, up or down,
    /// is refused; the yaw grows without wrapping.
    void look(float dx, float dy, float dz) override;

    bool setFrameTime(float milliseconds) override;
    bool setPosition(Vector newPosition) override;

    /// As `Camera::lookAt`. Yaw and pitch are each worked out from a pair of components of which
    /// the sign of the smaller has no effect, and the roll stays. A target at the position leaves
    /// both angles as they were.
    bool lookAt(Vector newPosition, Vector target, Vector up) override;

    Vector getPosition() override { return position; }

    Vector position;        ///< where it stands
    Vector rotation;        ///< pitch, yaw and roll in degrees
    Vector upAxis;          ///< as `reset` or `lookAt` set it; nothing reads it
    Vector rightAxis;       ///< as `reset` set it; nothing reads it
    Vector forwardAxis;     ///< as `reset` or `lookAt` set it, not scaled; nothing reads it
    float frameTime = 0.0F; ///< milliseconds
    float moveSpeed = 0.0F; ///< as `reset` set it
    float lookSpeed = 0.0F; ///< as `reset` set it
};
} // namespace tamor
