// A run-length encoded TGA file of 2048 by 2048 pixels of 32 bits, into an image of floats.
//
//   BM_readTGA/P      readTGA; P in a hundred packets are runs
//   BM_readTGA_stb/P  stb_image on the same file, and its bytes divided by 255 into floats
//
// Each reading of ours leaves the unpacked bytes, 16 MiB. Run by scripts/bench, or by hand. Read
// one against the other of the same P.

#include "textures/TGAReader.h"

#include <benchmark/benchmark.h>
#ifdef TAMOR_HAS_STB
#include <stb_image.h>
#endif

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace tamor::bench
{
namespace
{
constexpr std::size_t side = 2048;
constexpr std::size_t floatCount = side * side * 4;
constexpr int iterations = 20;

/// Packets of 1 to 128 pixels of any colour.
std::string makeFile(std::int64_t runsInAHundred)
{
    std::mt19937 random(11);
    std::string bytes("\0\0\12\0\0\0\0\0\0\0\0\0\0\10\0\10\40\50", 18);
    const auto addPixel = [&] {
        const auto colour = static_cast<std::uint32_t>(random());
        bytes.append(reinterpret_cast<const char*>(&colour), sizeof colour);
    };
    std::size_t left = side * side;
    while (left > 0) {
        const std::size_t count = std::min<std::size_t>(1 + random() % 128, left);
        const bool isRun = random() % 100 < static_cast<std::uint32_t>(runsInAHundred);
        bytes += static_cast<char>((isRun ? 0x80 : 0) + (count - 1));
        for (std::size_t k = 0; k < (isRun ? 1 : count); k++)
            addPixel();
        left -= count;
    }
    std::string path =
        std::filesystem::temp_directory_path() / ("tamor-" + std::to_string(getpid()) + ".tga");
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

/// Whether an image has the file's first pixel and its last one, each blue, green, red and alpha.
bool hasPixelsOf(const Image& image, const std::string& path)
{
    std::ostringstream file;
    file << std::ifstream(path, std::ios::binary).rdbuf();
    const std::string bytes = file.str();
    const auto isAt = [&bytes](const float* pixel, std::size_t place) {
        for (const std::size_t channel : {2, 1, 0, 3})
            if (*pixel++ !=
                static_cast<float>(static_cast<std::uint8_t>(bytes[place + channel])) / 255.0F)
                return false;
        return true;
    };
    constexpr std::size_t firstPixel = 19; // behind the header and a packet's first byte
    return image.pixelCount() * 4 == floatCount && isAt(image.pixels, firstPixel) &&
           isAt(image.pixels + floatCount - 4, bytes.size() - 4);
}

void BM_readTGA(benchmark::State& state)
{
    const std::string path = makeFile(state.range(0));
    Image image;
    readTGA(image, {path, 0});
    if (!hasPixelsOf(image, path))
        state.SkipWithError("these are other pixels");

    for (auto each : state)
        readTGA(image, {path, 0});
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(floatCount * 4));
    std::filesystem::remove(path);
}
BENCHMARK(BM_readTGA)
    ->Arg(0)
    ->Arg(50)
    ->Arg(95)
    ->Iterations(iterations)
    ->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_STB
float* readWithStb(const std::string& path)
{
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_uc* const bytes = stbi_load(path.c_str(), &width, &height, &channels, 4);
    auto* const floats = new float[floatCount];
    for (std::size_t k = 0; k < floatCount; k++)
        floats[k] = static_cast<float>(bytes[k]) / 255.0F;
    stbi_image_free(bytes);
    return floats;
}

void BM_readTGA_stb(benchmark::State& state)
{
    const std::string path = makeFile(state.range(0));
    // The descriptor says that the first row is the top one, so both have the same order.
    Image image;
    readTGA(image, {path, 0});
    const float* const floats = readWithStb(path);
    if (!std::equal(floats, floats + floatCount, image.pixels))
        state.SkipWithError("the two readers give other pixels");
    delete[] floats;

    for (auto each : state)
        delete[] readWithStb(path);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(floatCount * 4));
    std::filesystem::remove(path);
}
BENCHMARK(BM_readTGA_stb)
    ->Arg(0)
    ->Arg(50)
    ->Arg(95)
    ->Iterations(iterations)
    ->Unit(benchmark::kMillisecond);
#endif
} // namespace
} // namespace tamor::bench
