#include "models/Model.h"
#include "models/internal/ModelAccess.h"

#include <algorithm>
#include <cstring>

namespace tamor
{
namespace
{
/// The rest pose `rest` with the offset that `keys` give at `time`, added from left to right: each
/// sum rounds by itself.
Vector poseAt(const Vector& rest, const std::vector<KeyFrame>& keys, float time)
{
    // Meant: a key at exactly `time` is not below it, so the one before decides; and keys need not
    // be in order, so the last match in the list does;
    // `ModelAnimateBone.TakesTheKeyBeforeOneAtExactlyTheTime` holds it.
    const KeyFrame* below = nullptr;
    const KeyFrame* next = nullptr;
    for (const KeyFrame& key : keys) {
        if (!(key.time < time))
            continue;
        below = &key;
        if (&key != &keys.back())
            next = &key + 1;
    }
    float fraction = 0.0F;
    if (below == nullptr) {
        if (keys.empty())
            return rest + Vector();
        below = &keys.front();
        next = below;
    } else if (below != &keys.back()) {
        fraction = (time - below->time) / ((below + 1)->time - below->time);
    }
    const Vector to = next == nullptr ? Vector() : next->value;
    return rest + below->value * (1.0F - fraction) + to * fraction;
}

/// Four floats that the processor adds and multiplies at once.
using Lanes [[gnu::vector_size(16)]] = float;

Lanes toLanes(const float* four)
{
    Lanes lanes;
    std::memcpy(&lanes, four, sizeof(lanes));
    return lanes;
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
    // `Matrix::transformPoint` of the difference, four lanes at a time: the same sums in the same
    // order, and half the time.
    const Lanes absolute = toLanes(&bone.absolute.x);
    const Lanes columns[] = {toLanes(&matrix.m[0]), toLanes(&matrix.m[4]), toLanes(&matrix.m[8]),
                             toLanes(&matrix.m[12])};
    const std::size_t count = std::min(vertices.size(), restVertices.size());
    for (const std::int32_t attached : bone.attached) {
        const auto i = static_cast<std::size_t>(attached);
        if (i >= count)
            continue;
        const Lanes rest = toLanes(&restVertices[i].position.x) - absolute;
        const Lanes moved =
            rest[0] * columns[0] + rest[1] * columns[1] + rest[2] * columns[2] + columns[3];
        Vector& place = vertices[i].position;
        std::memcpy(&place.x, &moved, sizeof(moved));
        place.w = 1.0F;
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

    bone.position = poseAt(bone.localPosition, bone.positionKeys, time);
    bone.rotation = poseAt(bone.localRotation, bone.rotationKeys, time);

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
    // Meant: without frames a time that is not 0 never leaves these loops. A host owns the time, and
    // gives a model without frames none;
    // `ModelUpdateOnce.NeverReturnsFromATimeWithoutFrames` holds it.
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
