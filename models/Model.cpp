#include "models/Model.h"

#include "models/internal/TeapotTables.h"

#include <span>

namespace tamor
{
namespace
{
constexpr ShapePoint cubeVertices[] = {
    {-1, 1, 1},  {-1, -1, 1},  {1, 1, 1},   {1, -1, 1},   // front
    {1, 1, 1},   {1, -1, 1},   {1, 1, -1},  {1, -1, -1},  // right
    {1, 1, -1},  {1, -1, -1},  {-1, 1, -1}, {-1, -1, -1}, // back
    {-1, 1, -1}, {-1, -1, -1}, {-1, 1, 1},  {-1, -1, 1},  // left
    {-1, 1, 1},  {1, 1, 1},    {-1, -1, 1}, {1, -1, 1},   // top, bottom
};

constexpr ShapePoint cubeNormals[] = {
    {0, 0, 1}, {1, 0, 0}, {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0},
};

// Meant: the top and bottom share corners with the sides and, coming later, change their normals,
// so that the cube is not lit flat; `ModelMakeCube.GivesASharedVertexTheNormalOfItsLastFace` holds
// it.
constexpr ShapeFace cubeFaces[] = {
    {{0, 1, 2}, {0, 0, 0}},    {{1, 3, 2}, {0, 0, 0}},    {{4, 5, 6}, {1, 1, 1}},
    {{5, 7, 6}, {1, 1, 1}},    {{8, 9, 10}, {2, 2, 2}},   {{9, 11, 10}, {2, 2, 2}},
    {{12, 13, 14}, {3, 3, 3}}, {{13, 15, 14}, {3, 3, 3}}, {{12, 16, 6}, {4, 4, 4}},
    {{16, 17, 6}, {4, 4, 4}},  {{18, 13, 19}, {5, 5, 5}}, {{13, 7, 19}, {5, 5, 5}},
};

Vector toVector(const ShapePoint& point)
{
    return {point.x, point.y, point.z};
}

void build(Model& model, std::span<const ShapePoint> vertices, std::span<const ShapePoint> normals,
           std::span<const ShapeFace> faces)
{
    for (const ShapePoint& point : vertices)
        model.vertices.emplace_back().position = toVector(point);

    for (const ShapeFace& row : faces) {
        Face& face = model.faces.emplace_back();
        face.vertex = row.vertex;
        for (std::size_t k = 0; k < 3; ++k) {
            const auto vertex = static_cast<std::size_t>(row.vertex[k]);
            const auto normal = static_cast<std::size_t>(row.normal[k]);
            model.vertices[vertex].normal = toVector(normals[normal]);
        }
    }
}
} // namespace

Model::~Model() = default;

std::int32_t Model::load(const std::string& /*path*/)
{
    return 0;
}

std::int32_t Model::save()
{
    return 0;
}

std::int32_t Model::release()
{
    return 0;
}

bool Model::makeCube()
{
    build(*this, cubeVertices, cubeNormals, cubeFaces);
    return true;
}

bool Model::makeTeapot()
{
    build(*this, teapotVertices, teapotNormals, teapotFaces);
    return true;
}
} // namespace tamor
