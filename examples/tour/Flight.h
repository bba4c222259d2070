/// \file
/// The camera: flown by hand, or on a round trip that is the same each time.
#pragma once

#include "camera/FPSCamera.h"
#include "examples/tour/Landscape.h"
#include "kernel/Event.h"

namespace tour
{
class Flight
{
public:
    Flight();

    /// Flies by W, A, S, D, space and left Control.
    void takeKeys(const tamor::KeyboardState& keys);

    /// Looks round while the left button is dragged.
    void takePointer(const tamor::MouseState& mouse);

    /// Goes on with the trip, and keeps above ground and sea.
    void update(float milliseconds, const Landscape& land);

    void beginTrip() { tripSeconds = 0.0F; }
    void endTrip() { tripSeconds = -1.0F; }
    bool isOnTrip() const { return tripSeconds >= 0.0F; }

    /// Goes to a place at once. Angles are in degrees: pitch grows downward, yaw to the right.
    void goTo(const tamor::Vector& place, float pitch, float yaw);

    /// Goes to a place, and looks at the middle of the island.
    void lookFrom(const tamor::Vector& place);

    /// Hands the view to OpenGL, or only how it is turned.
    void apply() { camera.apply(); }
    void applyTurn();

    tamor::Vector eye() const { return camera.position; }

private:
    void followTrip(const Landscape& land);

    tamor::FPSCamera camera;
    float tripSeconds = -1.0F; ///< below 0 when there is none
};
} // namespace tour
