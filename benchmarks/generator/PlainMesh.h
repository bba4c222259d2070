/// \file
/// A terrain of anyone's heights.
#pragma once

#include "generator/MeshGenerator.h"

#include <cstddef>
#include <cstdint>

namespace tamor::bench
{
/// The three arrays of a terrain, as a straightforward program fills them.
template <typename Height>
TerrainMesh plainMesh(std::int32_t size, Height height)
{
    TerrainMesh mesh;
    const auto points = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
    mesh.vertices.reserve(points);
    for (std::int32_t r = 0; r < size; r++)
        for (std::int32_t c = 0; c < size; c++)
            mesh.vertices.emplace_back().position =
                Vector(static_cast<float>(r), height(r, c), static_cast<float>(c));
    mesh.normalTable.assign(points, Vector());
    mesh.faces.reserve(2 * points);
    for (std::int32_t r = 0; r + 1 < size; r++)
        for (std::int32_t c = 0; c + 1 < size; c++) {
            const std::int32_t p = r * size + c;
            Face& first = mesh.faces.emplace_back();
            first.vertex = first.normalIndex = {p + 1, p + size, p};
            Face& second = mesh.faces.emplace_back();
            second.vertex = {p + 1, p + size + 1, p + size};
            second.normalIndex = {p + size + 1, p + 1, p + size};
        }
    return mesh;
}
} // namespace tamor::bench
