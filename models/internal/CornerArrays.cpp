#include "models/internal/CornerArrays.h"

#include "models/internal/ModelAccess.h"

namespace tamor
{
namespace
{
/// Writes x, y, z. Returns what follows them.
Attribute<3>* put(Attribute<3>* out, const Vector& vector)
{
    out->values = {vector.x, vector.y, vector.z};
    return out + 1;
}

/// Writes all but the texture coordinates; `normalOf` tells the normal of a face's corner.
template <typename NormalOf>
void fill(CornerArrays& arrays, const Model& model, const NormalOf& normalOf)
{
    Attribute<3>* position = arrays.positions.data();
    Attribute<3>* colour = arrays.colours.data();
    Attribute<3>* normal = arrays.normals.data();
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
    const std::size_t cornerCount = model.faces.size() * 3;
    CornerArrays arrays;
    arrays.positions.resize(cornerCount);
    arrays.colours.resize(cornerCount);
    arrays.normals.resize(cornerCount);

    if (flat)
        fill(arrays, model, [](const Face& face, const Vertex&) { return face.normal; });
    else
        fill(arrays, model, [](const Face&, const Vertex& vertex) { return vertex.normal; });
    if (!withTexCoords)
        return arrays;

    arrays.texCoords.resize(cornerCount);
    Attribute<2>* texCoord = arrays.texCoords.data();
    for (const Face& face : model.faces) {
        for (const std::int32_t index : face.vertex) {
            const Vertex& vertex = vertexAt(model.vertices, index);
            texCoord->values = {vertex.u, vertex.v};
            ++texCoord;
        }
    }
    return arrays;
}
} // namespace tamor
