// Small PNG files of 32 bits a pixel, into an image of pixels, and a large one whose bytes are mostly text.
//
//   BM_readPNG/T         readPNG; the file has a chunk of T bytes that no reader needs
//   BM_readPNG_libpng/T  libpng on the same picture, and its bytes divided by 255 into pixels
//   BM_readPNG_stb/T     stb_image likewise
//
// Our reader takes pictures of up to 32 bytes whose data has two bytes more in front than the others'
// have, so each has a file of its own, which differs in these and the check sums. Each reading of ours
// leaves the words of its file. Run by scripts/bench, or by hand. Read one against the others of the
// same T.

#include "benchmarks/textures/SmallPNG.h"
#include "textures/PNGReader.h"

#include <benchmark/benchmark.h>
#include <png.h>
#ifdef TAMOR_HAS_STB
#include <stb_image.h>
#endif

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
template <typename Read>
void measure(benchmark::State& state, const std::string& front, Read read)
{
    const std::string path =
        std::filesystem::temp_directory_path() / ("tamor-" + std::to_string(getpid()) + ".png");
    std::ofstream(path, std::ios::binary)
        << makeSmallPNG(front, static_cast<std::size_t>(state.range(0)));
    if (read(path) != smallPNGsPixels())
        state.SkipWithError("these are other pixels");

    for (auto each : state)
        benchmark::DoNotOptimize(read(path));
    std::filesystem::remove(path);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(0)->Arg(1 << 20)->Unit(benchmark::kMicrosecond);
}

void BM_readPNG(benchmark::State& state)
{
    measure(state, frontOfOurs, [](const std::string& path) {
        Image image;
        SmallPixels pixels{};
        if (readPNG(image, {path, 0}) && image.pixelCount() * 4 == SmallPixels{}.size())
            std::copy_n(image.pixels, SmallPixels{}.size(), pixels.begin());
        return pixels;
    });
}
// Each leaves the words of its file.
BENCHMARK(BM_readPNG)->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_readPNG)->Arg(1 << 20)->Iterations(200)->Unit(benchmark::kMicrosecond);

void BM_readPNG_libpng(benchmark::State& state)
{
    measure(state, "", [](const std::string& path) {
        png_image picture{};
        picture.version = PNG_IMAGE_VERSION;
        png_image_begin_read_from_file(&picture, path.c_str());
        picture.format = PNG_FORMAT_RGBA;
        std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(picture));
        png_image_finish_read(&picture, nullptr, bytes.data(), 0, nullptr);
        const std::unique_ptr<float[]> all(new float[bytes.size()]);
        std::transform(bytes.begin(), bytes.end(), all.get(),
                       [](std::uint8_t byte) { return static_cast<float>(byte) / 255.0F; });
        SmallPixels pixels{};
        std::copy_n(all.get(), SmallPixels{}.size(), pixels.begin());
        return pixels;
    });
}
BENCHMARK(BM_readPNG_libpng)->Apply(sizes);

#ifdef TAMOR_HAS_STB
void BM_readPNG_stb(benchmark::State& state)
{
    measure(state, "", [](const std::string& path) {
        int readWidth = 0;
        int readHeight = 0;
        int channels = 0;
        stbi_uc* const bytes = stbi_load(path.c_str(), &readWidth, &readHeight, &channels, 4);
        const std::unique_ptr<float[]> all(new float[SmallPixels{}.size()]);
        std::transform(bytes, bytes + SmallPixels{}.size(), all.get(),
                       [](stbi_uc byte) { return static_cast<float>(byte) / 255.0F; });
        stbi_image_free(bytes);
        SmallPixels pixels{};
        std::copy_n(all.get(), SmallPixels{}.size(), pixels.begin());
        return pixels;
    });
}
BENCHMARK(BM_readPNG_stb)->Apply(sizes);
#endif
} // namespace
} // namespace tamor::bench
