/// \file
/// How long a model file of 100,000 vertices, 200,000 triangles and 50 bones takes to load.
///
/// Each row reads a file that the system holds in memory. `fromChars` is the limit: it reads the
/// file and turns the mesh's numbers into floats and integers, and does no more. The peers read the
/// same mesh, without bones, as an OBJ file. To be read as ratios of the times of one run:
/// `tamor-models-benchmarks --benchmark_filter=BM_load`. Bytes a second are of the row's own file.
#include "benchmarks/models/Torus.h"
#include "models/MS3DModel.h"

#ifdef TAMOR_HAS_TINYOBJLOADER
#include <tiny_obj_loader.h>
#endif
#ifdef TAMOR_HAS_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#endif
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace
{
using namespace tamor;
using namespace tamor::bench;

/// Ends the run when a loader did not load the mesh.
void require(bool isRight, const char* what)
{
    if (isRight)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(1);
}

const std::string& ms3dPath()
{
    static const std::string path = writeTemporary("tamor-torus.ms3d", makeTorusMS3D());
    return path;
}

void countBytes(benchmark::State& state, const std::string& path)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

void BM_load_MS3DModel(benchmark::State& state)
{
    const std::string& path = ms3dPath();
    for (auto _ : state) {
        MS3DModel model;
        model.load(path);
        state.PauseTiming();
        require(model.vertices.size() == torusVertices && model.faces.size() == torusTriangles &&
                    model.vertices[0].position.x == 13.0F &&
                    model.faces.back().vertex[2] == 99999 &&
                    model.bones.at(49)->attached.size() == 2000,
                "MS3DModel");
        for (const Bone* bone : model.bones)
            delete bone;
        state.ResumeTiming();
    }
    countBytes(state, path);
}
BENCHMARK(BM_load_MS3DModel)->Unit(benchmark::kMillisecond);

/// Goes through lines of the numbers that `pattern` tells, 'f' for a float and 'i' for an integer.
/// Returns the sum of all.
double readRows(const char*& next, const char* end, std::size_t rows, std::string_view pattern)
{
    double sum = 0.0;
    for (std::size_t row = 0; row < rows; ++row) {
        for (const char kind : pattern) {
            while (*next == ' ' || *next == '\n')
                ++next;
            if (kind == 'f') {
                float number = 0.0F;
                next = std::from_chars(next, end, number).ptr;
                sum += static_cast<double>(number);
            } else {
                std::int32_t number = 0;
                next = std::from_chars(next, end, number).ptr;
                sum += number;
            }
        }
    }
    return sum;
}

void BM_load_fromChars(benchmark::State& state)
{
    const std::string& path = ms3dPath();
    for (auto _ : state) {
        std::string text(std::filesystem::file_size(path), '\0');
        std::FILE* file = std::fopen(path.c_str(), "r");
        const std::size_t size = std::fread(text.data(), 1, text.size(), file);
        std::fclose(file);

        const char* next = text.data() + text.find("0 0\n") + 4;
        const char* end = text.data() + size;
        double sum = readRows(next, end, 1, "i");
        sum += readRows(next, end, torusVertices, "ifffffi");
        sum += readRows(next, end, 1, "i");
        sum += readRows(next, end, torusVertices, "fff");
        sum += readRows(next, end, 1, "i");
        const double indices = readRows(next, end, torusTriangles, "iiiiiiii");
        benchmark::DoNotOptimize(sum);
        // Each vertex is in six triangles, as a vertex and as a normal; and a 1 ends each row.
        require(indices == 12.0 * 99999 * 100000 / 2 + 200000, "fromChars");
    }
    countBytes(state, path);
}
BENCHMARK(BM_load_fromChars)->Unit(benchmark::kMillisecond);

#if defined(TAMOR_HAS_TINYOBJLOADER) || defined(TAMOR_HAS_ASSIMP)
const std::string& objPath()
{
    static const std::string path = writeTemporary("tamor-torus.obj", makeTorusOBJ());
    return path;
}
#endif

#ifdef TAMOR_HAS_TINYOBJLOADER
void BM_load_tinyobjloader(benchmark::State& state)
{
    const std::string& path = objPath();
    for (auto _ : state) {
        tinyobj::attrib_t attributes;
        std::vector<tinyobj::shape_t> shapes;
        std::vector<tinyobj::material_t> materials;
        std::string warning;
        std::string error;
        tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &error, path.c_str());
        require(attributes.vertices.size() == 3 * torusVertices &&
                    attributes.vertices[0] == 13.0F &&
                    shapes.at(0).mesh.indices.size() == 3 * torusTriangles,
                "tinyobjloader");
    }
    countBytes(state, path);
}
BENCHMARK(BM_load_tinyobjloader)->Unit(benchmark::kMillisecond);
#endif

#ifdef TAMOR_HAS_ASSIMP
void BM_load_assimp(benchmark::State& state)
{
    const std::string& path = objPath();
    for (auto _ : state) {
        Assimp::Importer importer;
        const aiScene* scene = importer.ReadFile(path, 0);
        require(scene != nullptr && scene->mMeshes[0]->mNumFaces == torusTriangles, "assimp");
        const aiMesh& mesh = *scene->mMeshes[0];
        // The first corner of the first triangle is the first vertex.
        require(mesh.mVertices[mesh.mFaces[0].mIndices[0]].x == 13.0F, "assimp");
    }
    countBytes(state, path);
}
BENCHMARK(BM_load_assimp)->Unit(benchmark::kMillisecond);
#endif
} // namespace
