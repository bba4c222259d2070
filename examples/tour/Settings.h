/// \file
/// What the tour's panel sets and the rest of the tour obeys.
#pragma once

#include <cstdint>

namespace tour
{
/// What a landscape is made from, in the order of the panel's list.
enum class Source : std::uint8_t
{
    fractal,
    noise,
    picture,
};

/// How models are drawn, in the order of the panel's list.
enum class Way : std::uint8_t
{
    buffers,   ///< from buffer objects, filled by the engine
    arrays,    ///< from the model's own arrays, drawn by the host
    immediate, ///< call by call, with a green line for every normal
};

struct LandSettings
{
    Source source = Source::fractal;
    float size = 240.0F;     ///< along an edge
    float height = 34.0F;    ///< of the highest point above the sea
    float roughness = 0.5F;  ///< 0 to 1
    std::uint32_t seed = 16; ///< of the fractal

    bool operator==(const LandSettings&) const = default;
};

struct Settings
{
    LandSettings land;
    float hour = 9.5F; ///< 0 to 24
    float fog = 0.4F;  ///< 0 to 1
    Way way = Way::buffers;
    bool showsWires = false;
    bool showsBones = false;
    bool showsBounds = false;
    bool usesToon = false;  ///< things are drawn by the GLSL program of few tones
    bool usesWaves = true;  ///< the sea is drawn by a GLSL program, else it is a plain sheet
    bool hasLantern = true; ///< a light at the camera
};
} // namespace tour
