/// \file
/// Models made by hand, for tests of what is done with them.
#pragma once

#include "models/Model.h"

#include <memory>
#include <vector>

namespace tamor::test
{
/// A model whose bones end with it.
class BonedModel : public Model
{
public:
    /// Adds a bone, and makes it a child of `parent`, or a root without one.
    Bone& addBone(Bone* parent = nullptr)
    {
        Bone* bone = owned.emplace_back(std::make_unique<Bone>()).get();
        bone->index = static_cast<std::int32_t>(bones.size());
        bone->parent = parent;
        bones.push_back(bone);
        if (parent != nullptr)
            parent->children.push_back(bone->index);
        else
            rootBones.push_back(bone);
        return *bone;
    }

    /// Adds a vertex with this rest position, which belongs to `bone`.
    void addRestVertex(Bone& bone, const Vector& restPosition)
    {
        bone.attached.push_back(static_cast<std::int32_t>(restVertices.size()));
        restVertices.emplace_back().position = restPosition;
        vertices.emplace_back();
    }

private:
    std::vector<std::unique_ptr<Bone>> owned;
};

inline Vertex makeVertex(const Vector& position, const Vector& normal = Vector(), float u = 0.0F,
                         float v = 0.0F)
{
    Vertex vertex;
    vertex.position = position;
    vertex.normal = normal;
    vertex.u = u;
    vertex.v = v;
    return vertex;
}

inline Face makeFace(std::int32_t a, std::int32_t b, std::int32_t c)
{
    Face face;
    face.vertex = {a, b, c};
    return face;
}

/// One triangle with corners, normals and texture coordinates that are all different.
inline void fillWithTriangle(Model& model)
{
    model.vertices = {
        makeVertex({0, 0, 0}, {0, 0, 1}, 0.0F, 0.25F),
        makeVertex({3, 0, 0}, {0, 1, 0}, 0.5F, 0.75F),
        makeVertex({0, 6, 0}, {1, 0, 0}, 1.0F, 0.125F),
    };
    model.faces = {makeFace(0, 1, 2)};
    model.faces[0].normal = {0, 0, -1};
    model.faces[0].colour = {0.5F, 0.25F, 0.125F};
}
} // namespace tamor::test
