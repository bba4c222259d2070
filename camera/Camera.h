/// \file
/// The viewpoint of a scene: what any camera can do. `FPSCamera` is the one that walks.
///
/// The folder camera/ holds viewpoints. It leaves what moves them to the host.
#pragma once

#include "TamorExport.h"
#include "maths/Vector.h"

namespace tamor
{
/// A viewpoint in the world, moved by key flags and turned by pointer motion.
///
/// Distances are in world units, angles in degrees, times in milliseconds. A camera owns no OpenGL
/// object; only `apply` calls OpenGL. Every boolean result is true, and nothing is printed.
class TAMOR_EXPORT Camera
{
public:
    virtual ~Camera() = default;

    /// Goes back to the origin, looking along -z with y up, and sets both speeds.
    /// \param moveSpeed  world units per millisecond
    /// \param lookSpeed  degrees per unit of pointer motion
    virtual bool reset(float moveSpeed, float lookSpeed) = 0;

    /// Sets both speeds, as in `reset`.
    virtual bool setSpeeds(float moveSpeed, float lookSpeed) = 0;

    /// Replaces OpenGL's current matrix by the view.
    virtual bool apply() = 0;

    /// Moves by one frame in the directions whose flag is set; opposite flags cancel out.
    virtual void move(bool forward, bool back, bool up, bool down, bool left, bool right) = 0;

    /// Turns by pointer motion: `dx` to the right, `dy` upwards, `dz` rolls.
    virtual void look(float dx, float dy, float dz) = 0;

    /// Sets the length of the frame that `move` moves by.
    virtual bool setFrameTime(float milliseconds) = 0;

    virtual bool setPosition(Vector newPosition) = 0; ///< without a turn

    /// Goes to `position` and turns towards `target`.
    virtual bool lookAt(Vector position, Vector target, Vector up) = 0;

    /// \return where the camera stands
    virtual Vector getPosition() = 0;
};
} // namespace tamor
