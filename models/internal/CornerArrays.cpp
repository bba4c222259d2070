#include "models/internal/CornerArrays.h"

#include "models/internal/ModelAccess.h"

namespace tamor
{
namespace
{
constexpr std::size_t floatsAFace = 9;
constexpr std::size_t texCoordsAFace = 6;

/// Writes x, y, z. Returns what follows them.
float* put(float* out, const Vector& vector)
{
    out[0] = vector.x;
    out[1] = vector.y;
    out[2] = vector.z;
    return out + 3;
}

/// Writes all but the texture coordinates; `normalOf` tells the normal of a face's corner.
template <typename NormalOf>
void fill(CornerArrays& arrays, const Model& model, const NormalOf& normalOf)
{
    float* position = arrays.positions.data();
    float* colour = arrays.colours.data();
    float* normal = arrays.normals.data();
    for (const Face& face : model.faces) {
        for (const std::int32_t index : face.vertex) {
            const Vertex& vertex = vertexAt(model.vertices, index);
            position = put(position, vertex.position);
            colour = put(colour, face.colour);
            normal = put(normal, normalOf(face, vertex));
        }
    }
}
} // namespace

CornerArrays makeCornerArrays(const Model& model, bool flat, bool withTexCoords)
{
    const std::size_t faceCount = model.faces.size();
    CornerArrays arrays;
    arrays.positions.resize(faceCount * floatsAFace);
    arrays.colours.resize(faceCount * floatsAFace);
    arrays.normals.resize(faceCount * floatsAFace);

    if (flat)
        fill(arrays, model, [](const Face& face, const Vertex&) { return face.normal; });
    else
        fill(arrays, model, [](const Face&, const Vertex& vertex) { return vertex.normal; });
    if (!withTexCoords)
        return arrays;

    arrays.texCoords.resize(faceCount * texCoordsAFace);
    float* texCoord = arrays.texCoords.data();
    for (const Face& face : model.faces) {
        for (const std::int32_t index : face.vertex) {
            const Vertex& vertex = vertexAt(model.vertices, index);
            *texCoord++ = vertex.u;
            *texCoord++ = vertex.v;
        }
    }
    return arrays;
}
} // namespace tamor
