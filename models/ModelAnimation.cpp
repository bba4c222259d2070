#include "models/Model.h"
#include "models/ModelAccess.h"

#include <algorithm>

namespace tamor
{
namespace
{
/// The offset that `keys` give at `time`; zero without keys.
Vector sampleKeys(const std::vector<KeyFrame>& keys, float time)
{
    Vector from;
    Vector to;
    float fraction = 0.0F;
    bool found = false;
    // Meant: a key at exactly `time` is not below it, so the one before decides; and keys need not
    // be in order, so the last match in the list does;
    // `ModelAnimateBone.TakesTheKeyBeforeOneAtExactlyTheTime` holds it.
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!(keys[i].time < time))
            continue;
        found = true;
        from = keys[i].value;
        fraction = 0.0F;
        if (i + 1 < keys.size()) {
            to = keys[i + 1].value;
            fraction = (time - keys[i].time) / (keys[i + 1].time - keys[i].time);
        }
    }
    if (!found && !keys.empty()) {
        from = keys.front().value;
        to = keys.front().value;
    }
    return from * (1.0F - fraction) + to * fraction;
}

/// A vertex halfway between `a` and `b`, with the bone of `a` and no normal.
Vertex midpoint(const Vertex& a, const Vertex& b)
{
    Vertex middle;
    middle.position = (a.position + b.position) / 2.0F;
    middle.u = (a.u + b.u) / 2.0F;
    middle.v = (a.v + b.v) / 2.0F;
    middle.bone = a.bone;
    return middle;
}
} // namespace

void Model::prepare(std::int32_t levels)
{
    for (Bone* bone : rootBones)
        poseBone(bone, Matrix(), true);

    for (std::int32_t level = 0; level < levels; ++level)
        subdivide();

    // Meant: no colour is below 0; the value is a mark that buffer drawing hands to OpenGL like any
    // other; `ModelPrepare.MarksTheColourOfEveryFace` holds it.
    for (Face& face : faces)
        face.colour = Vector(-1.0F, -1.0F, -1.0F);
}

void Model::subdivide()
{
    std::vector<Vertex> newVertices = vertices;
    newVertices.reserve(vertices.size() + 3 * faces.size());
    std::vector<Face> newFaces;
    newFaces.reserve(4 * faces.size());

    for (const Face& face : faces) {
        const auto [a, b, c] = face.vertex;
        const Vertex& vertexA = vertexAt(vertices, a);
        const Vertex& vertexB = vertexAt(vertices, b);
        const Vertex& vertexC = vertexAt(vertices, c);
        const auto base = static_cast<std::int32_t>(newVertices.size());
        newVertices.push_back(midpoint(vertexA, vertexB));
        newVertices.push_back(midpoint(vertexB, vertexC));
        newVertices.push_back(midpoint(vertexC, vertexA));

        const std::array<std::int32_t, 3> parts[] = {
            {a, base, base + 2},
            {base, b, base + 1},
            {base + 2, base + 1, c},
            {base, base + 1, base + 2},
        };
        for (const auto& part : parts) {
            Face& newFace = newFaces.emplace_back();
            newFace.vertex = part;
            newFace.material = face.material;
            newFace.smoothingGroup = face.smoothingGroup;
        }
    }
    vertices = std::move(newVertices);
    faces = std::move(newFaces);
}

void Model::poseBone(Bone* bone, Matrix parentMatrix, bool setAbsolute)
{
    Matrix& matrix = parentMatrix;
    matrix.translate(bone->position.x, bone->position.y, bone->position.z);
    matrix.rotate(0.0F, 0.0F, bone->rotation.z);
    matrix.rotate(0.0F, bone->rotation.y, 0.0F);
    matrix.rotate(bone->rotation.x, 0.0F, 0.0F);
    if (setAbsolute)
        bone->absolute = matrix.transformPoint(0.0F, 0.0F, 0.0F);

    moveAttached(*bone, matrix);
    for (const std::int32_t child : bone->children) {
        if (hasIndex(bones, child))
            poseBone(bones[static_cast<std::size_t>(child)], matrix, setAbsolute);
    }
}

void Model::moveAttached(const Bone& bone, const Matrix& matrix)
{
    const std::size_t count = std::min(vertices.size(), restVertices.size());
    for (const std::int32_t attached : bone.attached) {
        const auto i = static_cast<std::size_t>(attached);
        if (i >= count)
            continue;
        const Vector rest = restVertices[i].position - bone.absolute;
        vertices[i].position = matrix.transformPoint(rest.x, rest.y, rest.z);
    }
}

void Model::animateBone(std::int32_t index, float time)
{
    if (!hasIndex(bones, index))
        return;
    Bone& bone = *bones[static_cast<std::size_t>(index)];

    Matrix parentMatrix;
    if (bone.parent != nullptr)
        parentMatrix = bone.parent->matrix;
    else
        parentMatrix.loadModelview();

    bone.position = bone.localPosition + sampleKeys(bone.positionKeys, time);
    bone.rotation = bone.localRotation + sampleKeys(bone.rotationKeys, time);

    Matrix local;
    if (!bone.positionKeys.empty())
        local.translate(bone.position.x, bone.position.y, bone.position.z);
    if (!bone.rotationKeys.empty())
        local.rotate(bone.rotation.x, bone.rotation.y, bone.rotation.z);
    // Meant: the opposite order of `poseBone`, which is what moves vertices. Only the children's
    // matrices depend on this one; `ModelAnimateBone.PutsTheParentBehindTheLocalMatrix` holds it.
    bone.matrix = local * parentMatrix;

    for (const std::int32_t child : bone.children)
        animateBone(child, time);
}

std::int32_t Model::update(float time)
{
    // Meant: without frames a time that is not 0 never leaves these loops, as the caller owns time;
    // nothing else decides how the animation loops.
    const auto length = static_cast<float>(frameCount);
    while (time < 0.0F)
        time += length;
    while (time > length)
        time -= length;

    for (std::size_t i = 0; i < bones.size(); ++i) {
        if (bones[i]->parent == nullptr)
            animateBone(static_cast<std::int32_t>(i), time);
    }
    return setRenderMode(renderMode, flatShaded != 0, true);
}
} // namespace tamor
