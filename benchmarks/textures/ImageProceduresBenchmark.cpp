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

#include <algorithm>
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

using Floats = const float*;

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
/// \param isRight  told the pixels before and behind the first run, and the image's size: whether
///                 they differ as this procedure alone has it
template <typename Change, typename IsRight>
void measure(benchmark::State& state, int accesses, Change change, IsRight isRight)
{
    Image image = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    const std::vector<float> before(image.pixels, image.pixels + image.pixelCount() * 4);
    change(image);
    if (!isRight(before.data(), image.pixels, static_cast<std::size_t>(image.width))) {
        state.SkipWithError("this is another procedure");
        delete[] image.pixels;
        return;
    }
    std::ranges::copy(before, image.pixels);
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
    measure(
        state, 2,
        [&source](Image& image) {
            std::memcpy(image.pixels, source.pixels, image.pixelCount() * 4 * sizeof(float));
        },
        [&source](const float*, const float* after, std::size_t size) {
            return std::equal(after, after + 4 * size * size, source.pixels);
        });
    delete[] source.pixels;
}
BENCHMARK(BM_ImageMemcpy)->Arg(256)->Arg(1024);

void BM_ImageInvert(benchmark::State& state)
{
    measure(
        state, 2, [](Image& image) { image.invert(false); },
        [](Floats before, Floats after, std::size_t) {
            return after[4] == 1.0F - before[4] && after[7] == before[7];
        });
}
BENCHMARK(BM_ImageInvert)->Arg(256)->Arg(1024);

void BM_ImageClamp(benchmark::State& state)
{
    measure(
        state, 2, [](Image& image) { image.clamp(); },
        [](Floats before, Floats after, std::size_t size) {
            for (std::size_t n = 0; n < 4 * size * size; n++)
                if (after[n] != std::clamp(before[n], 0.0F, 1.0F))
                    return false;
            return true;
        });
}
BENCHMARK(BM_ImageClamp)->Arg(256)->Arg(1024);

/// Reads the pixels twice.
void BM_ImageNormalise(benchmark::State& state)
{
    measure(
        state, 3, [](Image& image) { image.normalise(); },
        [](Floats, Floats after, std::size_t size) {
            float smallest = after[0];
            float largest = after[0];
            for (std::size_t n = 0; n < 4 * size * size; n += 4) {
                smallest = std::min(smallest, after[n]);
                largest = std::max(largest, after[n]);
            }
            return smallest == 0.0F && largest == 1.0F && after[1] == after[0];
        });
}
BENCHMARK(BM_ImageNormalise)->Arg(256)->Arg(1024);

void BM_ImageScroll(benchmark::State& state)
{
    measure(
        state, 2, [](Image& image) { image.scroll(3, -5, 0, 0, Vector(), false); },
        [](Floats before, Floats after, std::size_t size) {
            return after[4 * 3] == before[4 * 5 * size] && after[0] == 0.0F;
        });
}
BENCHMARK(BM_ImageScroll)->Arg(256)->Arg(1024);

/// By alpha, which reads two pictures and writes one.
void BM_ImageBlend(benchmark::State& state)
{
    const Image other = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    // The other one is opaque, so all of it is seen.
    measure(
        state, 3, [&other](Image& image) { image.blend(5, 3, other); },
        [&other](Floats, Floats after, std::size_t) {
            return after[4] == std::clamp(other.pixels[4], 0.0F, 1.0F);
        });
    delete[] other.pixels;
}
BENCHMARK(BM_ImageBlend)->Arg(256)->Arg(1024);

/// Whether the first pixel is the mean of those around it by the exponential of their distance,
/// down each column that of the visible ones.
bool isBlurred(Floats before, Floats after, std::size_t size)
{
    double sum = 0.0;
    double total = 0.0;
    for (std::size_t j = 0; j <= blurRadius; j++) {
        const double columnWeight = std::exp(static_cast<double>(j) / -18.0);
        double columnSum = 0.0;
        double columnTotal = 0.0;
        for (std::size_t i = 0; i <= blurRadius; i++) {
            const Floats pixel = before + 4 * (size * i + j);
            if (pixel[3] == 0.0F)
                continue;
            const double weight = std::exp(static_cast<double>(i) / -18.0);
            columnSum += weight * static_cast<double>(pixel[0]);
            columnTotal += weight;
        }
        sum += columnWeight * columnSum / columnTotal;
        total += columnWeight;
    }
    return std::abs(sum / total - static_cast<double>(after[0])) < 1e-5;
}

void BM_ImageBlur_Radius4(benchmark::State& state)
{
    measure(
        state, 2, [](Image& image) { image.blur(blurRadius); }, isBlurred);
}
BENCHMARK(BM_ImageBlur_Radius4)->Arg(256)->Arg(1024)->Unit(benchmark::kMillisecond);

void punchHoles(Image& image)
{
    const auto size = static_cast<std::size_t>(image.width);
    for (std::size_t i = 0; i < size; i += 4)
        for (std::size_t j = 0; j < size; j += 4)
            image.pixels[4 * (size * i + j) + 3] = 0.0F;
}

/// The same with one transparent pixel in each four by four.
void BM_ImageBlur_Radius4WithHoles(benchmark::State& state)
{
    Image image = scatteredImage(static_cast<std::int32_t>(state.range(0)));
    punchHoles(image);
    const std::vector<float> before(image.pixels, image.pixels + image.pixelCount() * 4);
    image.blur(blurRadius);
    const bool fillsHoles = image.pixels[3] > 0.0F && image.pixels[3] < 1.0F;
    if (!fillsHoles ||
        !isBlurred(before.data(), image.pixels, static_cast<std::size_t>(image.width)))
        state.SkipWithError("this is another procedure");

    for (auto _ : state) {
        state.PauseTiming();
        punchHoles(image);
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

/// Whether a pixel has the sum of all octaves' noise at its place, as a clear image gets it.
bool isPerlin(const Image& image)
{
    constexpr std::int32_t i = 3;
    constexpr std::int32_t j = 5;
    float sum = 0.0F;
    float frequency = 0.125F;
    float amplitude = 1.0F;
    for (std::int32_t octave = 0; octave < octaves; octave++) {
        const float cell = static_cast<float>(image.width) * frequency;
        sum += Image::interpolatedNoise(j / cell, i / cell) * amplitude;
        frequency *= 0.5F;
        amplitude *= 0.5F;
    }
    const Floats pixel = image.pixels + 4 * (image.width * i + j);
    return pixel[0] == sum && pixel[2] == sum;
}

/// Six octaves from an eighth of the image down, as a terrain takes them.
void BM_ImagePerlin_SixOctaves(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0));
    Image image;
    image.clear(size, size);
    image.perlin(octaves, 0.125F, 1.0F, 0.5F, 0.5F);
    if (!isPerlin(image))
        state.SkipWithError("this is another noise");

    for (auto _ : state)
        image.perlin(octaves, 0.125F, 1.0F, 0.5F, 0.5F);
    state.SetItemsProcessed(state.iterations() * size * size);
    delete[] image.pixels;
}
BENCHMARK(BM_ImagePerlin_SixOctaves)->Arg(128)->Arg(512)->Unit(benchmark::kMillisecond);

#ifdef TAMOR_HAS_LIBNOISE
/// The sides of the first octave's cells, as many as `BM_ImagePerlin_SixOctaves` has.
constexpr std::int32_t cells = 8;

/// Whether the noise is 0 at the corners of the cells alone, as a noise of gradients is.
bool isGradientNoise(const Image& image)
{
    const std::int32_t cell = image.width / cells;
    const auto red = [&image](std::int32_t i, std::int32_t j) {
        return image.pixels[4 * (image.width * i + j)];
    };
    for (std::int32_t i = 0; i < cells; i++)
        for (std::int32_t j = 0; j < cells; j++)
            if (red(i * cell, j * cell) != 0.0F || red(i * cell + 1, j * cell + 1) == 0.0F)
                return false;
    return true;
}

/// Six octaves of coherent noise over the same eight cells, at the library's usual quality.
void BM_ImagePerlinPeer_Libnoise(benchmark::State& state)
{
    const auto size = static_cast<std::int32_t>(state.range(0));
    noise::module::Perlin perlin;
    perlin.SetOctaveCount(octaves);
    perlin.SetFrequency(cells);
    Image image;
    image.clear(size, size);
    const auto addNoise = [&] {
        for (std::int32_t i = 0; i < size; i++)
            for (std::int32_t j = 0; j < size; j++)
                image.pixels[4 * (size * i + j)] += static_cast<float>(perlin.GetValue(
                    static_cast<double>(j) / size, static_cast<double>(i) / size, 0.0));
    };
    addNoise();
    if (!isGradientNoise(image))
        state.SkipWithError("this is another noise");

    for (auto _ : state)
        addNoise();
    state.SetItemsProcessed(state.iterations() * size * size);
    delete[] image.pixels;
}
BENCHMARK(BM_ImagePerlinPeer_Libnoise)->Arg(128)->Arg(512)->Unit(benchmark::kMillisecond);
#endif
} // namespace
