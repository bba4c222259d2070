/// \file
/// The island: a terrain of one of the generator's three kinds under a texture made for it.
#pragma once

#include "examples/tour/Drawable.h"
#include "examples/tour/Settings.h"
#include "textures/Image.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tour
{
/// An island in the sea, whose level is 0. It may be made anew at any time behind `load`, and gives
/// back what the one before had.
class Landscape
{
public:
    static constexpr float seaBed = -7.0F; ///< the height of the ground round the island

    Landscape() = default;
    ~Landscape();
    Landscape(const Landscape&) = delete;
    Landscape& operator=(const Landscape&) = delete;

    /// Loads what all islands share, and says on the error stream if the picture is missing.
    void load();

    /// Makes the island; a fractal where its picture is missing.
    void make(const LandSettings& settings);

    /// Draws it with OpenGL's lights, in the way that things are drawn.
    void draw(Way way);

    /// The height of the ground, between the points of the mesh too; that of the sea bed outside.
    float heightAt(float x, float z) const;

    float size() const { return made.size; }

private:
    void shape();
    void paint();
    /// What `value` tells of the mesh's points, at a place between them.
    template <class Value>
    float between(float row, float column, const Value& value) const;

    LandSettings made;
    Drawable ground;
    tamor::Image heights; ///< the picture
    tamor::Image grain;   ///< noise that every texture shares, as it is the same each time
    std::uint32_t texture = 0;
    std::uint32_t grainTexture = 0; ///< what is seen from near
};
} // namespace tour
