/// \file
/// What buffer drawing hands to OpenGL.
#pragma once

#include "models/Model.h"

#include <array>
#include <cstddef>
#include <vector>

namespace tamor
{
/// Floats of one corner, which are not set before they are written: `= default` would let a vector
/// that grows write zeroes first, and the filling would take half as long again.
template <std::size_t count>
struct Attribute
{
    Attribute() {}

    std::array<float, count> values;
};
static_assert(sizeof(Attribute<3>) == 12);

/// The attributes of every corner of every face, in face order, so that no index list is needed.
struct CornerArrays
{
    std::vector<Attribute<3>> positions; ///< x, y, z
    std::vector<Attribute<3>> colours;   ///< red, green, blue of the face
    std::vector<Attribute<3>> normals;   ///< x, y, z
    std::vector<Attribute<2>> texCoords; ///< u, v; empty unless asked for
};

/// The arrays of `model` as it stands.
/// \param flat           take the normal of the face, three times, rather than of the vertices
/// \param withTexCoords  whether to fill `texCoords`
CornerArrays makeCornerArrays(const Model& model, bool flat, bool withTexCoords);
} // namespace tamor
