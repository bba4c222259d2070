#include "textures/Image.h"
#include "textures/internal/Pixels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace tamor
{
namespace
{
constexpr float halfTurn = 3.1415927F;

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
} // namespace

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
