#include "textures/Image.h"
#include "textures/internal/Pixels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

// The sums of a blur are worked out with the widest vectors that the processor has. Each sum keeps
// its order and its roundings whatever the width, so the pixels do not tell which one it was.
#if defined(__x86_64__)
#define TAMOR_WIDEST_VECTORS [[gnu::target_clones("arch=x86-64-v4", "avx2", "default")]]
#else
#define TAMOR_WIDEST_VECTORS
#endif

namespace tamor
{
namespace
{
constexpr float fullTurn = 6.2831855F;

/// The weights of the pixels at a distance of -reach to reach.
struct BlurKernel
{
    std::int32_t reach = 0;
    std::vector<float> weights;
};

/// The part of a kernel that lies inside the image around one pixel.
struct KernelPart
{
    std::int32_t first = 0; ///< distance of the first pixel; 0 or less
    std::size_t count = 0;
    const float* weights = nullptr; ///< the first pixel's
};

/// Entries further out than `farthest`, the largest distance in the image, are never used.
BlurKernel makeBlurKernel(std::int32_t radius, std::int32_t farthest)
{
    if (radius < 0)
        return {};
    if (radius == 0)
        return {0, {1.0F}};

    BlurKernel kernel;
    kernel.reach = std::min(radius, farthest);
    const float spread = static_cast<float>(radius) / 2.0F + 1.0F;
    for (std::int32_t k = -kernel.reach; k <= kernel.reach; k++) {
        // Meant: the distance, not its square, which makes the kernel an exponential rather than a
        // Gaussian; `ImageBlur.WeighsByTheExponentialOfTheDistance` holds it.
        const auto distance = static_cast<float>(std::abs(k));
        kernel.weights.push_back(std::exp(distance / (-2.0F * spread * spread)) /
                                 (fullTurn * spread));
    }
    return kernel;
}

/// The part for the pixel at `position` of a line of `length` pixels.
KernelPart cutKernel(const BlurKernel& kernel, std::int32_t position, std::int32_t length)
{
    if (kernel.weights.empty())
        return {};
    const std::int32_t first = std::max(-kernel.reach, -position);
    const std::int32_t last = std::min(kernel.reach, length - 1 - position);
    return {first, static_cast<std::size_t>(last - first + 1),
            kernel.weights.data() + (kernel.reach + first)};
}

/// What the sum of the weights divides by: itself unless it is 0, and then nothing.
float divisorOf(const KernelPart& part)
{
    float total = 0.0F;
    for (std::size_t k = 0; k < part.count; k++)
        total += part.weights[k];
    return total != 0.0F ? total : 1.0F;
}

/// Sets `count` floats of `means`: each is the weighted mean of the floats around its place in
/// `source`, which are `stride` apart.
TAMOR_WIDEST_VECTORS
void weightedMeans(float* __restrict means, const float* __restrict source, std::ptrdiff_t stride,
                   KernelPart part, float divisor, std::size_t count)
{
    // So many sums side by side stay in the processor's registers.
    constexpr std::size_t tile = 64;
    const float* const first = source + part.first * stride;
    std::size_t n = 0;
    for (; n + tile <= count; n += tile) {
        std::array<float, tile> sums = {};
        const float* place = first + n;
        for (std::size_t k = 0; k < part.count; k++, place += stride)
            for (std::size_t t = 0; t < tile; t++)
                sums[t] += part.weights[k] * place[t];
        for (std::size_t t = 0; t < tile; t++)
            means[n + t] = sums[t] / divisor;
    }
    for (; n < count; n++) {
        float sum = 0.0F;
        const float* place = first + n;
        for (std::size_t k = 0; k < part.count; k++, place += stride)
            sum += part.weights[k] * *place;
        means[n] = sum / divisor;
    }
}

/// The same across rows for whole pixels, where wholly transparent ones lend no colour.
///
/// Meant: the blur along a row has no such test, for it works on the result of this one, in which
/// every pixel has taken its visible neighbours' colour;
/// `ImageBlur.KeepsTheColourOfTransparentPixelsOutAcrossRowsOnly` holds it.
TAMOR_WIDEST_VECTORS
void weightedMeansOfVisible(float* __restrict means, const float* __restrict source,
                            std::ptrdiff_t stride, KernelPart part, std::size_t count)
{
    const float* const first = source + part.first * stride;
    for (std::size_t n = 0; n < count; n += channels) {
        std::array<float, channels> sums = {};
        std::array<float, channels> totals = {};
        for (std::size_t k = 0; k < part.count; k++) {
            const float* const pixel = first + static_cast<std::ptrdiff_t>(k) * stride + n;
            const float weight = part.weights[k];
            const bool isVisible = pixel[alphaChannel] != 0.0F;
            for (std::size_t c = 0; c < channels; c++) {
                const bool counts = isVisible || c == alphaChannel;
                sums[c] += counts ? weight * pixel[c] : 0.0F;
                totals[c] += counts ? weight : 0.0F;
            }
        }
        for (std::size_t c = 0; c < channels; c++)
            means[n + c] = sums[c] / (totals[c] != 0.0F ? totals[c] : 1.0F);
    }
}

TAMOR_WIDEST_VECTORS
bool hasTransparentPixel(const float* row, std::size_t count)
{
    // All channels are compared, which takes no longer, and alpha's results looked at in the end.
    constexpr std::size_t tile = 8 * channels;
    std::array<std::uint32_t, tile> isZero = {};
    std::size_t n = 0;
    for (; n + tile <= count; n += tile)
        for (std::size_t t = 0; t < tile; t++)
            isZero[t] |= row[n + t] == 0.0F ? 1U : 0U;
    for (std::size_t t = 0; n + t < count; t++)
        isZero[t] |= row[n + t] == 0.0F ? 1U : 0U;
    std::uint32_t result = 0;
    for (std::size_t t = alphaChannel; t < tile; t += channels)
        result |= isZero[t];
    return result != 0;
}

/// Blurs along a row of `length` pixels. Away from its ends all pixels have the whole kernel.
void blurAlongRow(float* blurred, const float* row, const BlurKernel& kernel, std::int32_t length)
{
    const std::int32_t wholeFrom = std::min(kernel.reach, length);
    const std::int32_t wholeTo = std::max(wholeFrom, length - kernel.reach);
    const auto blurPixels = [&](std::int32_t from, std::int32_t to) {
        const KernelPart part = cutKernel(kernel, from, length);
        const auto start = static_cast<std::size_t>(from) * channels;
        weightedMeans(blurred + start, row + start, channels, part, divisorOf(part),
                      static_cast<std::size_t>(to - from) * channels);
    };

    for (std::int32_t j = 0; j < wholeFrom; j++)
        blurPixels(j, j + 1);
    if (wholeFrom < wholeTo)
        blurPixels(wholeFrom, wholeTo);
    for (std::int32_t j = wholeTo; j < length; j++)
        blurPixels(j, j + 1);
}
} // namespace

bool Image::blur(std::int32_t radius)
{
    if (pixelCount() == 0)
        return true;

    const BlurKernel kernel = makeBlurKernel(radius, std::max(width, height) - 1);
    const std::size_t rowLength = static_cast<std::size_t>(height) * channels;
    const auto rowAt = [&](std::int32_t i) {
        return pixels + rowLength * static_cast<std::size_t>(i);
    };

    // The second pass, which replaces a row, stays behind until no row to come needs the old one.
    const std::int32_t delay = std::min(kernel.reach, width - 1);
    std::vector<float> betweenPasses(rowLength * static_cast<std::size_t>(delay + 1));
    const auto rowBetween = [&](std::int32_t i) {
        return betweenPasses.data() + rowLength * static_cast<std::size_t>(i % (delay + 1));
    };

    std::int32_t rowsSearched = 0;
    std::int32_t lastTransparentRow = -1;
    const auto blurAcrossRows = [&](std::int32_t i) {
        const KernelPart part = cutKernel(kernel, i, width);
        const std::int32_t rowsEnd = i + part.first + static_cast<std::int32_t>(part.count);
        for (; rowsSearched < rowsEnd; rowsSearched++)
            if (hasTransparentPixel(rowAt(rowsSearched), rowLength))
                lastTransparentRow = rowsSearched;

        const auto stride = static_cast<std::ptrdiff_t>(rowLength);
        if (lastTransparentRow >= i + part.first)
            weightedMeansOfVisible(rowBetween(i), rowAt(i), stride, part, rowLength);
        else
            weightedMeans(rowBetween(i), rowAt(i), stride, part, divisorOf(part), rowLength);
    };

    const auto finishRow = [&](std::int32_t i) {
        blurAlongRow(rowAt(i), rowBetween(i), kernel, height);
    };
    for (std::int32_t i = 0; i < width; i++) {
        blurAcrossRows(i);
        if (i >= delay)
            finishRow(i - delay);
    }
    for (std::int32_t i = width - delay; i < width; i++)
        finishRow(i);
    return true;
}
} // namespace tamor
