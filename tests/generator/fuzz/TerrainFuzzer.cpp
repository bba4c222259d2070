// Makes terrains of any arguments: each must be the plain one, to the last bit, use the random
// source as often, and go into a model. With libFuzzer's own main this is the fuzzer; with
// ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/generator/PlainTerrain.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/FuzzInput.h"
#include "tests/support/KeptArrays.h"
#include "tests/textures/PlainImages.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace
{
using namespace tamor;
using namespace tamor::test;

/// Larger terrains and more octaves only take longer.
constexpr int largestSide = 40;
constexpr int mostOctaves = 6;

/// Up to the largest side; or 0, or less.
int sizeOf(FuzzInput& input)
{
    return input.below(16) == 0 ? -input.below(3) : input.below(largestSide) + 1;
}

template <std::size_t count>
std::array<float, count> numbersOf(FuzzInput& input)
{
    std::array<float, count> numbers;
    for (float& number : numbers)
        number = input.take<float>();
    return numbers;
}

TerrainMesh compareFractal(FuzzInput& input)
{
    const int divisions = sizeOf(input);
    const auto [roughness, decay, x, y, z] = numbersOf<5>(input);
    const auto seed = input.take<unsigned>();
    std::srand(seed);
    TerrainMesh mesh = fractalTerrain(divisions, roughness, decay, x, y, z);
    const int next = std::rand();

    std::srand(seed);
    const TerrainMesh expected =
        divisions < 0 ? TerrainMesh() : fractalTerrainPlainly(divisions, roughness, decay, x, y, z);
    if (!areSame(mesh, expected) || std::rand() != next)
        failFuzzing("the plain fractal differs");
    return mesh;
}

TerrainMesh compareNoise(FuzzInput& input)
{
    const int size = sizeOf(input);
    const int octaves = input.below(mostOctaves + 2) - 1;
    const auto [frequency, amplitude, frequencyFactor, amplitudeFactor, x, y, z] =
        numbersOf<7>(input);
    TerrainMesh mesh = noiseTerrain(size, octaves, frequency, amplitude, frequencyFactor,
                                    amplitudeFactor, x, y, z);
    TerrainMesh expected;
    if (size > 0) {
        OwnedImage image(size, size);
        image.set(plain::perlin(image.values(), {size, size}, octaves, frequency, amplitude,
                                frequencyFactor, amplitudeFactor));
        expected = imageTerrainPlainly(image, x, y, z);
    }
    if (!areSame(mesh, expected))
        failFuzzing("the plain terrain of noise differs");
    return mesh;
}

/// Of an image of any shape, with a few numbers in it.
TerrainMesh compareImage(FuzzInput& input)
{
    OwnedImage image{sizeOf(input), sizeOf(input)};
    const auto reds = numbersOf<3>(input);
    const auto [x, y, z] = numbersOf<3>(input);
    for (std::size_t p = 0; p < image.pixelCount(); p++)
        image.pixels[4 * p] = reds[p * 5 % 7 % reds.size()];
    TerrainMesh mesh = imageTerrain(image, x, y, z);
    const TerrainMesh expected =
        image.pixelCount() == 0 ? TerrainMesh() : imageTerrainPlainly(image, x, y, z);
    if (!areSame(mesh, expected))
        failFuzzing("the plain terrain of an image differs");
    return mesh;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const KeptArrays keptArrays;
    FuzzInput input(data, size);
    const int kind = input.below(3);
    TerrainMesh mesh = kind == 0   ? compareFractal(input)
                       : kind == 1 ? compareNoise(input)
                                   : compareImage(input);
    Model model;
    putIntoModel(model, mesh);
    model.computeNormals(false);
    for (const Face& face : model.faces)
        for (const std::int32_t vertex : face.vertex)
            if (vertex < 0 || static_cast<std::size_t>(vertex) >= model.vertices.size())
                failFuzzing("a face of the model has a corner that is none");
    return 0;
}
