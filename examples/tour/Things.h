/// \file
/// What stands and swims on the island: trees, vases, teapots, a windmill, a tower, fish.
#pragma once

#include "examples/tour/Drawable.h"
#include "examples/tour/Landscape.h"
#include "examples/tour/Settings.h"
#include "shaders/ShaderProgram.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tour
{
/// One of a kind, somewhere.
struct Thing
{
    std::size_t kind = 0;
    tamor::Vector place;  ///< y from the ground, or of a fish from the sea
    float heading = 0.0F; ///< degrees, from the z axis towards x
    float scale = 1.0F;
    tamor::Vector colour = tamor::Vector(1.0F, 1.0F, 1.0F);
};

class Things
{
public:
    static constexpr std::size_t mostThings = 400;

    /// Loads the models, and says on the error stream which files are missing: those kinds are not
    /// seen. The working directory is that of the files.
    void load();

    /// Takes all things away, and puts the first ones where `land` is flat and dry.
    void populate(const Landscape& land);

    /// Adds a thing of the kind of that name.
    /// \return its number; -1 for an unknown kind, or if there are `mostThings`
    int add(const std::string& kind, float x, float z, const Landscape& land);

    /// The first thing of a kind, or null.
    const Thing* first(const std::string& kind) const;

    /// The height at which a thing stands or swims.
    float footOf(const Thing& thing, const Landscape& land) const;

    /// Draws all of them. The matrix is the camera's.
    /// \param seconds  of their animations
    void draw(const Settings& settings, const Landscape& land, float seconds);

    std::vector<Thing> all;

private:
    void place(const Thing& thing, const Landscape& land) const;
    void addSomewhere(const std::string& kind, const Landscape& land, float scale);
    float nextRandom();

    struct Kind
    {
        std::string name;
        float scale = 1.0F;
        bool swims = false; ///< its height is that above the sea
        float shine = 0.0F;
        Drawable drawable;
        tamor::Vector low; ///< the corners of what bounds it
        tamor::Vector high;
    };
    std::array<Kind, 6> kinds;
    tamor::ShaderProgram toon;
    unsigned random = 1;
};
} // namespace tour
