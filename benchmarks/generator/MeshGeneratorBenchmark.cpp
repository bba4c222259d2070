// How fast a terrain is made.
//
// Measured: a whole generator, from numbers to its three arrays. Drawing is left out. Run
//
//     build/release/benchmarks/generator/tamor-generator-benchmarks
//
// Each runs for a second before the clock starts: memory that a machine hands out for the first
// time costs several times as much as memory that was in use before, a virtual machine's above all.
//
// The fractal stands beside CImg's plasma with the same arrays filled from it, beside the writing
// of the arrays alone, which is the limit, and beside as many calls of rand() as it makes.
#include "benchmarks/generator/PlainMesh.h"
#include "generator/MeshGenerator.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>

#ifdef TAMOR_HAS_CIMG
#define cimg_display 0
#define cimg_use_openmp 0
#include <CImg.h>
#endif

namespace
{
using tamor::TerrainMesh;
using tamor::bench::plainMesh;

constexpr float scale = 100.0F;

/// Ends a benchmark whose work is not the one that its name says.
bool isRight(benchmark::State& state, bool answer)
{
    if (!answer)
        state.SkipWithError("this is another terrain");
    return answer;
}

/// Whether a fractal's middle has the height of the first random number.
bool isFractal(std::int32_t divisions)
{
    std::srand(1);
    const float amount = scale * 0.5F * 0.5F;
    const auto first = static_cast<float>(std::rand() / 2147483648.0 * (2.0F * amount) - amount);
    std::srand(1);
    const TerrainMesh mesh = tamor::fractalTerrain(divisions, 0.5F, 0.5F, scale, scale, scale);
    return mesh.vertices[mesh.vertices.size() / 2].position.y == first;
}

void BM_GenerateFractal(benchmark::State& state)
{
    const auto divisions = static_cast<std::int32_t>(state.range(0));
    if (!isRight(state, isFractal(divisions)))
        return;
    std::srand(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            tamor::MeshGenerator::generateFractal(divisions, 0.5F, 0.5F, scale, scale, scale));
    state.SetItemsProcessed(state.iterations() * (divisions + 1) * (divisions + 1));
}
BENCHMARK(BM_GenerateFractal)
    ->RangeMultiplier(4)
    ->Range(64, 1024)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(1.0);

/// Five numbers a cell of each level.
void BM_GenerateFractalShare_Rand(benchmark::State& state)
{
    std::int64_t calls = 0;
    for (std::int64_t cells = 1; cells < state.range(0); cells *= 2)
        calls += 5 * cells * cells;
    std::srand(1);
    for (std::int64_t k = 0; k < calls; k++)
        benchmark::DoNotOptimize(std::rand());
    const int following = std::rand();
    std::srand(1);
    tamor::MeshGenerator::generateFractal(static_cast<std::int32_t>(state.range(0)), 0.5F, 0.5F,
                                          scale, scale, scale);
    if (!isRight(state, std::rand() == following))
        return;
    std::srand(1);
    for (auto _ : state)
        for (std::int64_t k = 0; k < calls; k++)
            benchmark::DoNotOptimize(std::rand());
    state.SetItemsProcessed(state.iterations() * calls);
}
BENCHMARK(BM_GenerateFractalShare_Rand)
    ->Arg(1024)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(1.0);

/// Whether the faces are those of a fractal of so many divisions.
bool hasFacesOfFractal(const TerrainMesh& mesh, std::int32_t divisions)
{
    const TerrainMesh fractal = tamor::fractalTerrain(divisions, 0.5F, 0.5F, 1.0F, 1.0F, 1.0F);
    const auto isSame = [](const tamor::Face& a, const tamor::Face& b) {
        return a.vertex == b.vertex && a.normalIndex == b.normalIndex;
    };
    return std::ranges::equal(mesh.faces, fractal.faces, isSame);
}

void BM_GenerateFractalLimit_ArraysOnce(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0)) + 1;
    const auto flat = [](std::int32_t, std::int32_t) { return 0.0F; };
    if (!isRight(state, hasFacesOfFractal(plainMesh(size, flat), size - 1)))
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(plainMesh(size, flat));
    state.SetItemsProcessed(state.iterations() * size * size);
}
BENCHMARK(BM_GenerateFractalLimit_ArraysOnce)
    ->Arg(1024)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(1.0);

#ifdef TAMOR_HAS_CIMG
void BM_GenerateFractalPeer_CImgPlasmaAndArrays(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0)) + 1;
    const auto newPlasma = [size] {
        const auto side = static_cast<unsigned>(size);
        cimg_library::CImg<float> plasma(side, side, 1, 1, 0.0F);
        plasma.draw_plasma(1.0F, 0.0F, 10);
        return plasma;
    };
    if (!isRight(state, newPlasma().variance() > 0.0))
        return;
    for (auto _ : state) {
        const cimg_library::CImg<float> plasma = newPlasma();
        benchmark::DoNotOptimize(plainMesh(size, [&plasma](std::int32_t r, std::int32_t c) {
            return plasma(static_cast<unsigned>(r), static_cast<unsigned>(c));
        }));
    }
    state.SetItemsProcessed(state.iterations() * size * size);
}
BENCHMARK(BM_GenerateFractalPeer_CImgPlasmaAndArrays)
    ->Arg(1024)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(1.0);
#endif

/// Whether a terrain of noise has the heights of the image's.
bool isNoise(std::int32_t size)
{
    const TerrainMesh mesh =
        tamor::noiseTerrain(size, 6, 0.25F, 0.5F, 0.5F, 0.5F, scale, scale, scale);
    tamor::Image image;
    image.clear(size, size);
    image.perlin(6, 0.25F, 0.5F, 0.5F, 0.5F);
    const auto length = static_cast<float>(size);
    bool isSame = true;
    for (std::size_t p = 0; p < mesh.vertices.size(); p++)
        isSame = isSame && mesh.vertices[p].position.y ==
                               length / 2.0F * image.pixels[4 * p] * scale / length;
    delete[] image.pixels;
    return isSame && mesh.vertices[1].position.y != mesh.vertices[0].position.y;
}

void BM_GenerateFromNoise(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0));
    if (!isRight(state, isNoise(size)))
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(tamor::MeshGenerator::generateFromNoise(
            size, 6, 0.25F, 0.5F, 0.5F, 0.5F, scale, scale, scale));
    state.SetItemsProcessed(state.iterations() * size * size);
}
BENCHMARK(BM_GenerateFromNoise)
    ->Arg(256)
    ->Arg(1024)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(1.0);
} // namespace
