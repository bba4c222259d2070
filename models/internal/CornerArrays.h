/// \file
/// What buffer drawing hands to OpenGL.
#pragma once

#include "models/Model.h"

#include <vector>

namespace tamor
{
/// The attributes of every corner of every face, in face order, so that no index list is needed.
struct CornerArrays
{
    std::vector<float> positions; ///< x, y, z
    std::vector<float> colours;   ///< red, green, blue of the face
    std::vector<float> normals;   ///< x, y, z
    std::vector<float> texCoords; ///< u, v; empty unless asked for
};

/// The arrays of `model` as it stands.
/// \param flat           take the normal of the face, three times, rather than of the vertices
/// \param withTexCoords  whether to fill `texCoords`
CornerArrays makeCornerArrays(const Model& model, bool flat, bool withTexCoords);
} // namespace tamor
