/// \file
/// The sky by the hour: its colours, the sun and the moon, the stars, the fog, and the light.
#pragma once

#include "maths/Light.h"
#include "maths/Vector.h"

namespace tour
{
/// What the hour makes of the world. Colours are red, green, blue.
class Sky
{
public:
    /// Works out the colours of an hour from 0 to 24.
    void setHour(float hour);

    /// Draws the dome, far behind all that is drawn later, around the origin: the matrix turns with
    /// the camera and does not move with it.
    void draw() const;

    /// Hands light and fog to OpenGL. The matrix is the camera's.
    /// \param density  of the fog, 0 to 1
    void shine(float density) const;

    tamor::Vector horizon;
    tamor::Vector zenith;
    tamor::Vector sunlight;
    tamor::Vector ambient;
    tamor::Vector towardsLight; ///< the sun, or by night the moon
    float night = 0.0F;         ///< 0 by day to 1

private:
    tamor::Light light;
};
} // namespace tour
