/// \file
/// The sea: a GLSL program of waves, or a plain sheet where there is no GLSL.
#pragma once

#include "examples/tour/Drawable.h"
#include "examples/tour/Landscape.h"
#include "examples/tour/Sky.h"
#include "shaders/ShaderProgram.h"

#include <cstdint>

namespace tour
{
class Water
{
public:
    /// Makes the sheet and, where OpenGL has programs, the waves.
    void load();

    /// Draws it at height 0 over what is there, with OpenGL's fog.
    /// \param eye      where the camera is
    /// \param seconds  of the waves
    void draw(const Sky& sky, const tamor::Vector& eye, float seconds, bool withWaves);

private:
    void drawBed(const tamor::Vector& colour);

    Drawable sheet;
    tamor::ShaderProgram waves;
};
} // namespace tour
