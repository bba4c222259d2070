/// \file
/// What buffer drawing hands to OpenGL.
#pragma once

#include "models/Model.h"

#include <memory>

namespace tamor
{
/// The attributes of every corner of every face, in face order, so that no index list is needed.
struct CornerArrays
{
    std::unique_ptr<float[]> positions; ///< x, y, z
    std::unique_ptr<float[]> colours;   ///< red, green, blue of the face
    std::unique_ptr<float[]> normals;   ///< x, y, z
    std::unique_ptr<float[]> texCoords; ///< u, v; null unless asked for
};

/// The arrays of `model` as it stands.
/// \param flat           take the normal of the face, three times, rather than of the vertices
/// \param withTexCoords  whether to fill `texCoords`
CornerArrays makeCornerArrays(const Model& model, bool flat, bool withTexCoords);
} // namespace tamor
