/// \file
/// An OpenGL light.
#pragma once

#include "TamorExport.h"
#include "maths/Vector.h"

#include <cstdint>

namespace tamor
{
/// Holds one of OpenGL's light numbers for as long as it lives: the lowest that is free.
///
/// It sets the parameters of its light, and leaves switching lights and lighting on to others.
class TAMOR_EXPORT Light
{
public:
    /// Takes the lowest free number; `number` is 0, and nothing is printed, when all are taken.
    Light();

    /// Gives the number back.
    ~Light();

    /// A copy has the same number, which both give back.
    Light(const Light&) = default;
    /// The number that it had before is not given back.
    Light& operator=(const Light&) = default;

    /// Places the light at x, y, z or, unless `positional`, in that direction. The fourth value is
    /// 1 or 0 by that flag, whatever `w` is.
    /// \return true
    bool setPosition(Vector position, bool positional) const;

    // Each goes to OpenGL at once. Colours are red, green, blue and alpha, 0 to 1.

    /// Along x, y, z in the coordinates of the current modelview matrix.
    void setSpotDirection(Vector direction) const;
    void setAmbient(Vector colour) const;  ///< of the light from everywhere
    void setDiffuse(Vector colour) const;  ///< of the light that surfaces scatter
    void setSpecular(Vector colour) const; ///< of the light in highlights
    /// Divides the light at a distance d by constant + linear d + quadratic d squared.
    void setAttenuation(float constant, float linear, float quadratic) const;

    /// `GL_LIGHT0` plus the slot, or 0.
    std::uint32_t number = 0;
};
} // namespace tamor
