/// \file
/// How long a frame's work on 100,000 vertices with 50 bones takes: sampling the keys, moving the
/// vertices, and filling the arrays for OpenGL's buffers. No window is open, and nothing is drawn.
///
/// The peers move vertices of the same 44 bytes by the same lists of indices, with matrices that
/// are there already, so theirs is a little less work; `memcpy` of the same bytes is the limit. To
/// be read as ratios of one run: `tamor-models-benchmarks --benchmark_filter='BM_pose|BM_fill'`.
/// Bytes a second are of the vertices, or of the arrays written.
#include "benchmarks/models/Torus.h"
#include "models/MS3DModel.h"
#include "models/internal/CornerArrays.h"

#ifdef TAMOR_HAS_GLM
#include <glm/glm.hpp>
#include <glm/gtc/type_ptr.hpp>
#endif
#ifdef TAMOR_HAS_EIGEN
#include <Eigen/Dense>
#endif
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace
{
using namespace tamor;
using namespace tamor::bench;

constexpr float time = 7.5F;

/// The torus, posed at rest.
Model& torus()
{
    static Model* const model = [] {
        auto* loaded = new MS3DModel;
        loaded->load(writeTemporary("tamor-torus.ms3d", makeTorusMS3D()));
        loaded->prepare(0);
        return loaded;
    }();
    return *model;
}

void pose(Model& model)
{
    model.update(time);
    for (Bone* bone : model.rootBones)
        model.poseBone(bone, Matrix(), false);
}

void countVertices(benchmark::State& state)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(torusVertices * sizeof(Vertex)));
}

/// The matrix that `poseBone` moves each bone's vertices by.
std::vector<Matrix> boneMatrices(const Model& model)
{
    std::vector<Matrix> matrices;
    for (const Bone* bone : model.bones) {
        Matrix matrix;
        if (bone->parent != nullptr)
            matrix = matrices[static_cast<std::size_t>(bone->parent->index)];
        matrix.translate(bone->position.x, bone->position.y, bone->position.z);
        matrix.rotate(0, 0, bone->rotation.z);
        matrix.rotate(0, bone->rotation.y, 0);
        matrix.rotate(bone->rotation.x, 0, 0);
        matrices.push_back(matrix);
    }
    return matrices;
}

/// Ends the run when vertices of the model's size are not where the model's are.
void requireSamePlaces(const Model& model, const float* positions)
{
    for (std::size_t i = 0; i < model.vertices.size(); ++i) {
        const Vector& p = model.vertices[i].position;
        const float* q = positions + i * sizeof(Vertex) / sizeof(float);
        const float distance =
            std::max({std::abs(p.x - q[0]), std::abs(p.y - q[1]), std::abs(p.z - q[2])});
        if (distance > 1e-4F) {
            std::fprintf(stderr, "wrong result: vertex %zu\n", i);
            std::exit(1);
        }
    }
}

/// The vertices where the bones have them, worked out one by one.
std::vector<Vertex> posedVertices(const Model& model)
{
    const std::vector<Matrix> matrices = boneMatrices(model);
    std::vector<Vertex> vertices = model.restVertices;
    for (std::size_t b = 0; b < model.bones.size(); ++b) {
        for (const std::int32_t index : model.bones[b]->attached) {
            Vector& position = vertices[static_cast<std::size_t>(index)].position;
            const Vector& absolute = model.bones[b]->absolute;
            position = matrices[b].transformPoint(position.x - absolute.x, position.y - absolute.y,
                                                  position.z - absolute.z);
        }
    }
    return vertices;
}

void BM_pose_Model(benchmark::State& state)
{
    Model& model = torus();
    pose(model);
    requireSamePlaces(model, &posedVertices(model)[0].position.x);
    for (auto _ : state) {
        pose(model);
        benchmark::ClobberMemory();
    }
    countVertices(state);
}
BENCHMARK(BM_pose_Model)->Unit(benchmark::kMicrosecond);

void BM_pose_memcpy(benchmark::State& state)
{
    const Model& model = torus();
    std::vector<std::uint8_t> copy(model.vertices.size() * sizeof(Vertex));
    for (auto _ : state) {
        std::memcpy(copy.data(), static_cast<const void*>(model.restVertices.data()), copy.size());
        benchmark::ClobberMemory();
    }
    countVertices(state);
}
BENCHMARK(BM_pose_memcpy)->Unit(benchmark::kMicrosecond);

#ifdef TAMOR_HAS_GLM
struct GLMVertex
{
    glm::vec4 position;
    glm::vec4 normal;
    float rest[3];
};
static_assert(sizeof(GLMVertex) == sizeof(Vertex));

void BM_pose_glm(benchmark::State& state)
{
    Model& model = torus();
    pose(model);
    std::vector<glm::mat4> matrices;
    for (const Matrix& matrix : boneMatrices(model))
        matrices.push_back(glm::make_mat4(matrix.m.data()));
    std::vector<GLMVertex> rest(torusVertices);
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const Vector& p = model.restVertices[i].position;
        rest[i].position = {p.x, p.y, p.z, 1.0F};
    }
    std::vector<GLMVertex> vertices = rest;

    for (auto _ : state) {
        for (std::size_t b = 0; b < model.bones.size(); ++b) {
            const Bone& bone = *model.bones[b];
            const glm::vec4 absolute(bone.absolute.x, bone.absolute.y, bone.absolute.z, 0.0F);
            for (const std::int32_t index : bone.attached) {
                const auto i = static_cast<std::size_t>(index);
                vertices[i].position = matrices[b] * (rest[i].position - absolute);
            }
        }
        benchmark::ClobberMemory();
    }
    requireSamePlaces(model, &vertices[0].position.x);
    countVertices(state);
}
BENCHMARK(BM_pose_glm)->Unit(benchmark::kMicrosecond);
#endif

#ifdef TAMOR_HAS_EIGEN
struct EigenVertex
{
    Eigen::Matrix<float, 4, 1, Eigen::DontAlign> position;
    float rest[7];
};
static_assert(sizeof(EigenVertex) == sizeof(Vertex));

void BM_pose_eigen(benchmark::State& state)
{
    Model& model = torus();
    pose(model);
    std::vector<Eigen::Matrix4f> matrices;
    for (const Matrix& matrix : boneMatrices(model))
        matrices.emplace_back(Eigen::Map<const Eigen::Matrix4f>(matrix.m.data()));
    std::vector<EigenVertex> rest(torusVertices);
    for (std::size_t i = 0; i < rest.size(); ++i) {
        const Vector& p = model.restVertices[i].position;
        rest[i].position = {p.x, p.y, p.z, 1.0F};
    }
    std::vector<EigenVertex> vertices = rest;

    for (auto _ : state) {
        for (std::size_t b = 0; b < model.bones.size(); ++b) {
            const Bone& bone = *model.bones[b];
            const Eigen::Vector4f absolute(bone.absolute.x, bone.absolute.y, bone.absolute.z, 0.0F);
            for (const std::int32_t index : bone.attached) {
                const auto i = static_cast<std::size_t>(index);
                const Eigen::Vector4f offset = rest[i].position - absolute;
                vertices[i].position.noalias() = matrices[b] * offset;
            }
        }
        benchmark::ClobberMemory();
    }
    requireSamePlaces(model, vertices[0].position.data());
    countVertices(state);
}
BENCHMARK(BM_pose_eigen)->Unit(benchmark::kMicrosecond);
#endif

void countArrays(benchmark::State& state)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(torusTriangles * 36 * 3));
}

/// Ends the run when the arrays do not hold what each corner's vertex does.
void requireCorners(const Model& model, const CornerArrays& arrays)
{
    const auto isSame = [](const Attribute<3>& attribute, const Vector& v) {
        return attribute.values == std::array{v.x, v.y, v.z};
    };
    for (std::size_t corner = 0; corner < 3 * torusTriangles; ++corner) {
        const Face& face = model.faces[corner / 3];
        const Vertex& vertex = model.vertices[static_cast<std::size_t>(face.vertex[corner % 3])];
        if (!isSame(arrays.positions.at(corner), vertex.position) ||
            !isSame(arrays.colours.at(corner), face.colour) ||
            !isSame(arrays.normals.at(corner), vertex.normal)) {
            std::fprintf(stderr, "wrong result: corner %zu\n", corner);
            std::exit(1);
        }
    }
}

void BM_fill_CornerArrays(benchmark::State& state)
{
    const Model& model = torus();
    requireCorners(model, makeCornerArrays(model, false, false));
    for (auto _ : state) {
        const CornerArrays arrays = makeCornerArrays(model, false, false);
        benchmark::DoNotOptimize(arrays.positions[0]);
        benchmark::ClobberMemory();
    }
    countArrays(state);
}
BENCHMARK(BM_fill_CornerArrays)->Unit(benchmark::kMicrosecond);

void BM_fill_memcpy(benchmark::State& state)
{
    const std::size_t floats = torusTriangles * 9;
    const std::vector<float> source(floats * 3);
    for (auto _ : state) {
        for (std::size_t i = 0; i < 3; ++i) {
            const auto copy = std::make_unique_for_overwrite<float[]>(floats);
            std::memcpy(copy.get(), source.data() + i * floats, floats * sizeof(float));
            benchmark::DoNotOptimize(copy[0]);
            benchmark::ClobberMemory();
        }
    }
    countArrays(state);
}
BENCHMARK(BM_fill_memcpy)->Unit(benchmark::kMicrosecond);
} // namespace
