// How fast images are made and changed.
//
// Measured: one procedure on an image that exists. Its making is left out, but where a procedure
// starts from a clear image (perlin). Run
//
//     build/release/benchmarks/textures/tamor-textures-benchmarks --benchmark_filter=Image
//
// Blur and perlin stand beside a peer of the same work in the same run, and their ratio is what
// counts; the others are bytes read and written a second, to hold beside BM_ImageMemcpy.
#include "textures/Image.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#ifdef TAMOR_HAS_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef TAMOR_HAS_LIBNOISE
#include <libnoise/noise.h>
#endif

namespace
{
using tamor::Image;
using tamor::Vector;

constexpr std::int32_t blurRadius = 4;
constexpr std::int32_t octaves = 6;

/// Opaque pixels of random colours, -0.25 to 1.25.
Image scatteredImage(std::int32_t size)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> value(-0.25F, 1.25F);
    Image image;
    image.clear(size, size);
    for (std::size_t n = 0; n < image.pixelCount() * 4; n++)
        if (n % 4 != 3)
            image.pixels[n] = value(random);
    return image;
}

void countBytes(benchmark::State& state, const Image& image, int accesses)
{
    state.SetBytesProcessed(state.iterations() * accesses *
                            static_cast<std::int64_t>(image.pixelCount() * 4 * sizeof(float)));
}

/// Runs `change` on an image of the size that the benchmark gives, which it may find changed.
template <typename Change>
void measure(benchmark::State& state, int accesses, Change change)
{
    Image image = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state) {
        change(image);
        benchmark::ClobberMemory();
    }
    countBytes(state, image, accesses);
    delete[] image.pixels;
}

void BM_ImageMemcpy(benchmark::State& state)
{
    const Image source = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    measure(state, 2, [&source](Image& image) {
        std::memcpy(image.pixels, source.pixels, image.pixelCount() * 4 * sizeof(float));
    });
    delete[] source.pixels;
}
BENCHMARK(BM_ImageMemcpy)->Arg(256)->Arg(1024);

void BM_ImageInvert(benchmark::State& state)
{
    measure(state, 2, [](Image& image) { image.invert(false); });
}
BENCHMARK(BM_ImageInvert)->Arg(256)->Arg(1024);

void BM_ImageClamp(benchmark::State& state)
{
    measure(state, 2, [](Image& image) { image.clamp(); });
}
BENCHMARK(BM_ImageClamp)->Arg(256)->Arg(1024);

/// Reads the pixels twice.
void BM_ImageNormalise(benchmark::State& state)
{
    measure(state, 3, [](Image& image) { image.normalise(); });
}
BENCHMARK(BM_ImageNormalise)->Arg(256)->Arg(1024);

void BM_ImageScroll(benchmark::State& state)
{
    measure(state, 2, [](Image& image) { image.scroll(3, -5, 0, 0, Vector(), false); });
}
BENCHMARK(BM_ImageScroll)->Arg(256)->Arg(1024);

/// By alpha, which reads two pictures and writes one.
void BM_ImageBlend(benchmark::State& state)
{
    const Image other = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    measure(state, 3, [&other](Image& image) { image.blend(5, 3, other); });
    delete[] other.pixels;
}
BENCHMARK(BM_ImageBlend)->Arg(256)->Arg(1024);

void BM_ImageBlur_Radius4(benchmark::State& state)
{
    measure(state, 2, [](Image& image) { image.blur(blurRadius); });
}
BENCHMARK(BM_ImageBlur_Radius4)->Arg(256)->Arg(1024)->Unit(benchmark::kMillisecond);

/// The same with one transparent pixel in each four by four.
void BM_ImageBlur_Radius4WithHoles(benchmark::State& state)
{
    Image image = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        for (std::size_t n = 3; n < image.pixelCount() * 4; n += 64)
            image.pixels[n] = 0.0F;
        state.ResumeTiming();
        image.blur(blurRadius);
    }
    countBytes(state, image, 2);
    delete[] image.pixels;
}
BENCHMARK(BM_ImageBlur_Radius4WithHoles)->Arg(1024)->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_OPENCV
cv::Mat sameKernel()
{
    const double spread = blurRadius / 2.0 + 1.0;
    cv::Mat kernel(1, 2 * blurRadius + 1, CV_32F);
    double total = 0.0;
    for (int k = -blurRadius; k <= blurRadius; k++)
        total += std::exp(std::abs(k) / (-2.0 * spread * spread));
    for (int k = -blurRadius; k <= blurRadius; k++)
        kernel.at<float>(0, blurRadius + k) =
            static_cast<float>(std::exp(std::abs(k) / (-2.0 * spread * spread)) / total);
    return kernel;
}

/// Four float channels, one thread. Away from the border it has the same picture.
void BM_ImageBlurPeer_OpenCVSepFilter2D(benchmark::State& state)
{
    cv::setNumThreads(1);
    const auto size = static_cast<std::int32_t>(state.range(0));
    Image image = scatteredImage(size);
    const cv::Mat source(size, size, CV_32FC4, image.pixels);
    cv::Mat blurred(size, size, CV_32FC4);
    const cv::Mat kernel = sameKernel();
    for (auto _ : state)
        cv::sepFilter2D(source, blurred, CV_32F, kernel, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
    countBytes(state, image, 2);

    image.blur(blurRadius);
    const float difference = std::abs(blurred.at<cv::Vec4f>(size / 2, size / 2)[0] -
                                      image.pixels[4 * (size / 2 * size + size / 2)]);
    if (difference > 1e-5F)
        state.SkipWithError("the peer blurs otherwise");
    delete[] image.pixels;
}
BENCHMARK(BM_ImageBlurPeer_OpenCVSepFilter2D)->Arg(256)->Arg(1024)->Unit(benchmark::kMillisecond);
#endif

/// Six octaves from an eighth of the image down, as a terrain takes them.
void BM_ImagePerlin_SixOctaves(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0));
    Image image;
    image.clear(size, size);
    image.perlin(octaves, 0.125F, 1.0F, 0.5F, 0.5F);
    if (image.pixels[0] < -2.0F || image.pixels[0] > 2.0F || image.pixels[0] != image.pixels[2])
        state.SkipWithError("this is no noise");

    for (auto _ : state)
        image.perlin(octaves, 0.125F, 1.0F, 0.5F, 0.5F);
    state.SetItemsProcessed(state.iterations() * size * size);
    delete[] image.pixels;
}
BENCHMARK(BM_ImagePerlin_SixOctaves)->Arg(128)->Arg(512)->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_LIBNOISE
/// Six octaves of coherent noise over the same eight cells, at the library's usual quality.
void BM_ImagePerlinPeer_Libnoise(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0));
    noise::module::Perlin perlin;
    perlin.SetOctaveCount(octaves);
    perlin.SetFrequency(8.0);
    Image image;
    image.clear(size, size);
    for (auto _ : state)
        for (std::int32_t i = 0; i < size; i++)
            for (std::int32_t j = 0; j < size; j++)
                image.pixels[4 * (size * i + j)] += static_cast<float>(perlin.GetValue(
                    static_cast<double>(j) / size, static_cast<double>(i) / size, 0.0));
    state.SetItemsProcessed(state.iterations() * size * size);
    delete[] image.pixels;
}
BENCHMARK(BM_ImagePerlinPeer_Libnoise)->Arg(128)->Arg(512)->Unit(benchmark::kMillisecond);
#endif
} // namespace
