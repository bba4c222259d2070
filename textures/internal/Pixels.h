/// \file
/// How pixels lie in an image's array, how many there are, and whole numbers from the floats in them.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tamor
{
constexpr std::size_t channels = 4;
constexpr std::size_t alphaChannel = 3;
/// What a pixel takes in the memory, in bytes.
constexpr std::size_t floatPixelSize = channels * sizeof(float);

/// A product of an image's sides as a size. Where addresses have 32 bits it may be larger than they
/// are; then it is the largest, for which no memory is ever found.
constexpr std::size_t toSize(std::uint64_t product)
{
    return static_cast<std::size_t>(
        std::min<std::uint64_t>(product, std::numeric_limits<std::size_t>::max()));
}

/// Toward zero. What no integer holds becomes the nearest that one does, and not-a-number 0.
inline std::int32_t truncated(float value)
{
    constexpr float tooLarge = 2147483648.0F;
    if (value >= tooLarge)
        return std::numeric_limits<std::int32_t>::max();
    if (value < -tooLarge)
        return std::numeric_limits<std::int32_t>::min();
    return std::isnan(value) ? 0 : static_cast<std::int32_t>(value);
}
} // namespace tamor
