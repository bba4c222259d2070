/// \file
/// The teapot's mesh, and the rows that tables of built-in shapes are made of.
#pragma once

#include <array>
#include <cstdint>

namespace tamor
{
/// A position or a direction in a table.
struct ShapePoint
{
    float x;
    float y;
    float z;
};

/// A triangle in a table, counter-clockwise seen from outside.
struct ShapeFace
{
    std::array<std::int32_t, 3> vertex;
    std::array<std::int32_t, 3> normal;
};

extern const ShapePoint teapotVertices[301];
extern const ShapePoint teapotNormals[302];
extern const ShapeFace teapotFaces[576];
} // namespace tamor
