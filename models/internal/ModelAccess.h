/// \file
/// Reading a model by indices that came from a file, never outside its storage.
#pragma once

#include "maths/Utilities.h"
#include "models/Model.h"

#include <cstddef>

namespace tamor
{
/// The vertex at `index`, or a new `Vertex` when there is none.
inline const Vertex& vertexAt(const std::vector<Vertex>& vertices, std::int32_t index)
{
    static const Vertex none;
    return hasIndex(vertices, index) ? vertices[static_cast<std::size_t>(index)] : none;
}
} // namespace tamor
