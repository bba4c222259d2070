/// \file
/// The image procedures once more, for the tests alone: plain loops in the order of their rules, over
/// copies of the pixels. What they and the engine's procedures make of an image must be the same bits.
#pragma once

#include "maths/Vector.h"
#include "tests/textures/ImageValues.h"

#include <cstdint>
#include <vector>

/// The pixels are first to last, four floats each, as many as the size says: at least one.
namespace tamor::test::plain
{
/// The noise at a lattice point. The lattice wraps at the end of the integers, here and below.
float noise(std::int32_t x, std::int32_t y);

/// The noise with its eight neighbours.
float smoothNoise(std::int32_t x, std::int32_t y);

/// The noise between lattice points. A coordinate that no integer holds becomes the nearest that one
/// does, and not-a-number 0.
float interpolatedNoise(float x, float y);

/// Adds octaves of noise.
std::vector<float> perlin(std::vector<float> pixels, Size size, int octaves, float f, float a,
                          float frequencyFactor, float amplitudeFactor);

/// Blurs by a radius; with one below 0 nothing is left.
std::vector<float> blur(const std::vector<float>& pixels, Size size, std::int32_t radius);

/// Moves the picture, and fills what comes in.
std::vector<float> scroll(std::vector<float> pixels, Size size, std::int32_t dx, std::int32_t dy,
                          Vector fill);

/// Blends with another image. Codes are 0 to 9.
std::vector<float> blend(const std::vector<float>& pixels, Size size, unsigned thisCode,
                         unsigned otherCode, const std::vector<float>& others, Size otherSize);

/// One minus each colour, and alpha if asked.
std::vector<float> invert(std::vector<float> pixels, bool withAlpha);

/// Limits the colours to 0 to 1.
std::vector<float> clamp(std::vector<float> pixels);

/// Stretches red to 0 to 1 and copies it to green and blue.
std::vector<float> normalise(std::vector<float> pixels);
} // namespace tamor::test::plain
