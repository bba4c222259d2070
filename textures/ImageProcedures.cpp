#include "textures/Image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iostream>
#include <limits>
#include <optional>
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
constexpr std::size_t channels = 4;
constexpr std::size_t alphaChannel = 3;
constexpr float halfTurn = 3.1415927F;
constexpr float fullTurn = 6.2831855F;

// ---------------------------------------------------------------------------------------- Noise

/// Noise is worked out for so many pixels of a row at a time.
constexpr std::size_t stripLength = 64;

/// One coordinate of a sample: the lattice point before it, and how much the point behind counts.
struct Cell
{
    std::int32_t point = 0;
    float weight = 0.0F;
};

/// What neighbouring samples share: the noise between two points of a lattice row, for each pixel
/// of the strip.
using NoiseLine = std::array<float, stripLength>;

/// Toward zero. What no integer holds becomes the nearest that one does, and not-a-number 0.
std::int32_t truncated(float value)
{
    constexpr float tooLarge = 2147483648.0F;
    if (value >= tooLarge)
        return std::numeric_limits<std::int32_t>::max();
    if (value < -tooLarge)
        return std::numeric_limits<std::int32_t>::min();
    return std::isnan(value) ? 0 : static_cast<std::int32_t>(value);
}

/// The lattice wraps at the end of the integers.
std::int32_t wrapped(std::int32_t point, std::uint32_t offset)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(point) + offset);
}

std::int32_t next(std::int32_t point)
{
    return wrapped(point, 1);
}

std::int32_t previous(std::int32_t point)
{
    return wrapped(point, std::numeric_limits<std::uint32_t>::max());
}

float cosineWeight(float t)
{
    return (1.0F - std::cos(t * halfTurn)) * 0.5F;
}

float mix(float a, float b, float weight)
{
    return a * (1.0F - weight) + b * weight;
}

Cell cellOf(float coordinate)
{
    const std::int32_t point = truncated(coordinate);
    return {point, cosineWeight(coordinate - static_cast<float>(point))};
}

/// Fills `line` with the noise along the lattice row `y`, at each of the `columns`. Neighbouring
/// columns mostly lie in one cell, whose two lattice values are carried along.
void fillNoiseLine(NoiseLine& line, const std::array<Cell, stripLength>& columns, std::int32_t y)
{
    std::int32_t point = columns[0].point;
    float before = Image::smoothNoise(point, y);
    float after = Image::smoothNoise(next(point), y);
    for (std::size_t c = 0; c < stripLength; c++) {
        const std::int32_t newPoint = columns[c].point;
        if (newPoint != point) {
            before = newPoint == next(point) ? after : Image::smoothNoise(newPoint, y);
            after = Image::smoothNoise(next(newPoint), y);
            point = newPoint;
        }
        line[c] = mix(before, after, columns[c].weight);
    }
}

/// Adds one octave of noise to the red of up to `stripLength` columns from `firstColumn` on, in all
/// rows. A row's cosine is worked out once for the strip, a column's once for all rows, and the
/// noise along a lattice row once for all pixel rows beside it.
void addNoiseToStrip(const Image& image, std::size_t firstColumn, float frequency, float amplitude)
{
    const auto rowLength = static_cast<std::size_t>(image.height);
    const float columnsPerCell = static_cast<float>(image.width) * frequency;
    const float rowsPerCell = static_cast<float>(image.height) * frequency;

    std::array<Cell, stripLength> columns;
    for (std::size_t c = 0; c < stripLength; c++)
        columns[c] = cellOf(static_cast<float>(firstColumn + c) / columnsPerCell);
    const std::size_t stripEnd = std::min(rowLength - firstColumn, stripLength);

    NoiseLine before;
    NoiseLine after;
    std::optional<std::int32_t> point;
    for (std::int32_t i = 0; i < image.width; i++) {
        const Cell row = cellOf(static_cast<float>(i) / rowsPerCell);
        if (row.point != point) {
            if (point && row.point == next(*point))
                before = after;
            else
                fillNoiseLine(before, columns, row.point);
            fillNoiseLine(after, columns, next(row.point));
            point = row.point;
        }
        float* const strip =
            image.pixels + channels * (rowLength * static_cast<std::size_t>(i) + firstColumn);
        for (std::size_t c = 0; c < stripEnd; c++)
            strip[channels * c] += mix(before[c], after[c], row.weight) * amplitude;
    }
}

// ----------------------------------------------------------------------------------------- Blur

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
    constexpr std::size_t tile = 16;
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

bool hasTransparentPixel(const float* row, std::size_t count)
{
    for (std::size_t n = 0; n < count; n += channels)
        if (row[n + alphaChannel] == 0.0F)
            return true;
    return false;
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

// ---------------------------------------------------------------------------------------- Blend

float luminance(const float* pixel)
{
    return (pixel[0] + pixel[1] + pixel[2]) / 3.0F;
}

/// Limits to 0 to 1; not-a-number stays.
float clamped(float value)
{
    const float capped = value > 1.0F ? 1.0F : value;
    return capped < 0.0F ? 0.0F : capped;
}

/// Adds to the `sums` of a row its `source` times the factors of `code`, which depend on the pixels
/// of `row` and their matches. The four arrays are one length.
void addToBlend(std::vector<float>& sums, const float* source, std::uint32_t code, const float* row,
                const float* matches)
{
    const auto addTimes = [&](auto factorOf) {
        for (std::size_t n = 0; n < sums.size(); n += channels) {
            const float factor = factorOf(row + n, matches + n);
            for (std::size_t c = 0; c < channels; c++)
                sums[n + c] += source[n + c] * factor;
        }
    };
    using Pixel = const float*;
    switch (code) {
    case 0:
        return;
    case 1:
        return addTimes([](Pixel, Pixel) { return 1.0F; });
    case 2:
        return addTimes([](Pixel pixel, Pixel) { return pixel[alphaChannel]; });
    case 3:
        return addTimes([](Pixel, Pixel other) { return other[alphaChannel]; });
    case 4:
        return addTimes([](Pixel pixel, Pixel) { return 1.0F - pixel[alphaChannel]; });
    case 5:
        return addTimes([](Pixel, Pixel other) { return 1.0F - other[alphaChannel]; });
    case 6:
        return addTimes([](Pixel pixel, Pixel) { return luminance(pixel); });
    case 7:
        return addTimes([](Pixel, Pixel other) { return luminance(other); });
    case 8:
        return addTimes([](Pixel pixel, Pixel) { return 1.0F - luminance(pixel); });
    case 9:
        return addTimes([](Pixel, Pixel other) { return 1.0F - luminance(other); });
    default:
        for (std::size_t n = 0; n < sums.size(); n += channels)
            std::cerr << "Unknown texture operation" << std::endl;
    }
}

/// The place among `otherLength` that is relatively where `place` is among `length`.
std::size_t matchingPlace(std::int32_t place, std::int32_t length, std::int32_t otherLength)
{
    const float match =
        static_cast<float>(place) / static_cast<float>(length) * static_cast<float>(otherLength);
    // Past 2^24 pixels a place rounds up to the length.
    return static_cast<std::size_t>(std::min(truncated(match), otherLength - 1));
}

// --------------------------------------------------------------------------------- Whole pixels

void fillPixels(float* pixels, std::size_t count, Vector colour)
{
    for (std::size_t k = 0; k < count; k++) {
        pixels[channels * k] = colour.x;
        pixels[channels * k + 1] = colour.y;
        pixels[channels * k + 2] = colour.z;
        pixels[channels * k + alphaChannel] = colour.w;
    }
}
} // namespace

bool Image::clear(std::int32_t newWidth, std::int32_t newHeight)
{
    allocate(newWidth, newHeight);
    fillPixels(pixels, pixelCount(), Vector(0.0F, 0.0F, 0.0F, 1.0F));
    return true;
}

bool Image::invert(bool withAlpha)
{
    const std::size_t inverted = withAlpha ? channels : alphaChannel;
    const std::size_t end = pixelCount() * channels;
    for (std::size_t n = 0; n < end; n += channels)
        for (std::size_t c = 0; c < inverted; c++)
            pixels[n + c] = 1.0F - pixels[n + c];
    return true;
}

bool Image::perlin(std::int32_t octaves, float frequency, float amplitude, float frequencyFactor,
                   float amplitudeFactor)
{
    const std::size_t count = pixelCount();
    if (count == 0)
        return true;

    for (std::int32_t octave = 0; octave < octaves; octave++) {
        for (std::size_t j = 0; j < static_cast<std::size_t>(height); j += stripLength)
            addNoiseToStrip(*this, j, frequency, amplitude);
        frequency *= frequencyFactor;
        amplitude *= amplitudeFactor;
    }
    for (std::size_t n = 0; n < count * channels; n += channels)
        pixels[n + 1] = pixels[n + 2] = pixels[n];
    return true;
}

bool Image::clamp()
{
    const std::size_t end = pixelCount() * channels;
    for (std::size_t n = 0; n < end; n += channels)
        for (std::size_t c = 0; c < alphaChannel; c++)
            pixels[n + c] = clamped(pixels[n + c]);
    return true;
}

bool Image::normalise()
{
    const std::size_t end = pixelCount() * channels;
    if (end == 0)
        return true;

    float smallest = pixels[0];
    float largest = pixels[0];
    for (std::size_t n = 0; n < end; n += channels) {
        smallest = pixels[n] < smallest ? pixels[n] : smallest;
        largest = pixels[n] > largest ? pixels[n] : largest;
    }
    const float range = largest - smallest;
    for (std::size_t n = 0; n < end; n += channels)
        pixels[n] = pixels[n + 1] = pixels[n + 2] = (pixels[n] - smallest) / range;
    return true;
}

bool Image::blur(std::int32_t radius)
{
    if (pixelCount() == 0)
        return true;

    const BlurKernel kernel = makeBlurKernel(radius, std::max(width, height) - 1);
    const std::size_t rowLength = static_cast<std::size_t>(height) * channels;
    const auto rowAt = [&](std::int32_t i) {
        return pixels + rowLength * static_cast<std::size_t>(i);
    };

    // A blurred row is held back until no row to come needs the old one that it replaces.
    const std::int32_t delay = std::min(kernel.reach + 1, width);
    std::vector<float> heldBack(rowLength * static_cast<std::size_t>(delay));
    const auto heldRow = [&](std::int32_t i) {
        return heldBack.data() + rowLength * static_cast<std::size_t>(i % delay);
    };
    const auto store = [&](std::int32_t i) { std::copy_n(heldRow(i), rowLength, rowAt(i)); };

    std::vector<float> acrossRows(rowLength);
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
            weightedMeansOfVisible(acrossRows.data(), rowAt(i), stride, part, rowLength);
        else
            weightedMeans(acrossRows.data(), rowAt(i), stride, part, divisorOf(part), rowLength);
    };

    for (std::int32_t i = 0; i < width; i++) {
        blurAcrossRows(i);
        if (i >= delay)
            store(i - delay);
        blurAlongRow(heldRow(i), acrossRows.data(), kernel, height);
    }
    for (std::int32_t i = width - delay; i < width; i++)
        store(i);
    return true;
}

bool Image::scroll(std::int32_t dx, std::int32_t dy, std::int32_t, std::int32_t, Vector fill, bool)
{
    if (pixelCount() == 0)
        return true;

    // Meant: rows of `width` pixels, where all other procedures take rows of `height`, so that the
    // picture of an image from a file, whose rows are its width long, moves as it is seen;
    // `ImageScroll.MovesRightAndDownAndFillsBehind` holds it.
    const std::int32_t right = std::clamp(dx, -width, width);
    const auto kept = static_cast<std::size_t>(width - std::abs(right));
    const auto rowLength = static_cast<std::size_t>(width);
    const auto rowAt = [&](std::int64_t y) {
        return pixels + channels * rowLength * static_cast<std::size_t>(y);
    };

    const auto from = channels * static_cast<std::size_t>(std::max(-right, 0));
    const auto to = channels * static_cast<std::size_t>(std::max(right, 0));
    const auto filled = right > 0 ? 0 : channels * kept;
    for (std::int32_t n = 0; n < height; n++) {
        // Against the direction of the move, so that a row is read before it is written.
        const std::int32_t y = dy > 0 ? height - 1 - n : n;
        const std::int64_t source = std::int64_t{y} - dy;
        if (source < 0 || source >= height) {
            fillPixels(rowAt(y), rowLength, fill);
            continue;
        }
        std::memmove(rowAt(y) + to, rowAt(source) + from, kept * channels * sizeof(float));
        fillPixels(rowAt(y) + filled, rowLength - kept, fill);
    }
    return true;
}

bool Image::blend(std::uint32_t thisFactor, std::uint32_t otherFactor, Image other)
{
    const std::size_t otherCount = other.pixelCount();
    if (pixelCount() == 0 || otherCount == 0 || other.pixels == nullptr)
        return true;

    // An image that shares these pixels is read as it was before the blend.
    std::vector<float> copy;
    if (other.pixels == pixels)
        copy.assign(other.pixels, other.pixels + otherCount * channels);
    const float* const otherPixels = copy.empty() ? other.pixels : copy.data();

    std::vector<std::size_t> matchingColumns;
    matchingColumns.reserve(static_cast<std::size_t>(height));
    for (std::int32_t j = 0; j < height; j++)
        matchingColumns.push_back(channels * matchingPlace(j, height, other.height));

    const std::size_t rowLength = channels * static_cast<std::size_t>(height);
    std::vector<float> matches(rowLength);
    std::vector<float> sums;
    for (std::int32_t i = 0; i < width; i++) {
        float* const row = pixels + rowLength * static_cast<std::size_t>(i);
        const float* const otherRow = otherPixels + channels *
                                                        static_cast<std::size_t>(other.height) *
                                                        matchingPlace(i, width, other.width);
        float* match = matches.data();
        for (const std::size_t column : matchingColumns)
            match = std::copy_n(otherRow + column, channels, match);

        sums.assign(rowLength, 0.0F);
        addToBlend(sums, row, thisFactor, row, matches.data());
        addToBlend(sums, matches.data(), otherFactor, row, matches.data());
        std::ranges::transform(sums, row, clamped);
    }
    return true;
}

float Image::noise(std::int32_t x, std::int32_t y)
{
    std::uint32_t n = static_cast<std::uint32_t>(y) * 57U + static_cast<std::uint32_t>(x);
    n ^= n << 13U;
    const std::uint32_t hash = ((n * n * 15731U + 789221U) * n + 1376312589U) & 0x7fffffffU;
    return static_cast<float>(1.0 - hash / 1073741824.0);
}

float Image::smoothNoise(std::int32_t x, std::int32_t y)
{
    const std::int32_t left = previous(x);
    const std::int32_t right = next(x);
    const std::int32_t above = previous(y);
    const std::int32_t below = next(y);
    const float sides = noise(right, y) + noise(left, y) + noise(x, below) + noise(x, above);
    const float corners =
        noise(right, below) + noise(right, above) + noise(left, below) + noise(left, above);
    return noise(x, y) / 4.0F + sides / 8.0F + corners / 16.0F;
}

float Image::cosineInterpolate(float a, float b, float t)
{
    return mix(a, b, cosineWeight(t));
}

float Image::interpolatedNoise(float x, float y)
{
    const Cell column = cellOf(x);
    const Cell row = cellOf(y);
    const float before = mix(smoothNoise(column.point, row.point),
                             smoothNoise(next(column.point), row.point), column.weight);
    const float after = mix(smoothNoise(column.point, next(row.point)),
                            smoothNoise(next(column.point), next(row.point)), column.weight);
    return mix(before, after, row.weight);
}
} // namespace tamor
