#include "tests/support/CapturedErrors.h"
#include "textures/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

// Each procedure is held to the plain loops of the reference below, bit for bit.

namespace tamor
{
namespace
{
using test::CapturedErrors;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

struct Size
{
    std::int32_t width;
    std::int32_t height;
};

// Lengths of 1, odd ones, both orders of non-square, and more than a strip of noise or a vector.
constexpr Size sizes[] = {{1, 1}, {1, 7},  {7, 1},   {2, 3},   {3, 2},   {5, 5},
                          {8, 8}, {9, 20}, {33, 17}, {6, 131}, {131, 6}, {64, 64}};

/// An image whose array ends with it.
class OwnedImage : public Image
{
public:
    OwnedImage() = default;
    OwnedImage(std::int32_t newWidth, std::int32_t newHeight) { clear(newWidth, newHeight); }
    ~OwnedImage() { delete[] pixels; }
    OwnedImage(const OwnedImage&) = delete;
    OwnedImage& operator=(const OwnedImage&) = delete;

    std::vector<float> values() const { return {pixels, pixels + pixelCount() * 4}; }
    void set(const std::vector<float>& values) { std::copy(values.begin(), values.end(), pixels); }
};

/// Values from -0.25 to 1.25 in every channel. One alpha in four is 0, another 1.
std::vector<float> scatteredValues(Size size, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-0.25F, 1.25F);
    std::vector<float> values;
    for (std::int32_t k = 0; k < size.width * size.height; k++) {
        for (int c = 0; c < 4; c++)
            values.push_back(value(random));
        const unsigned choice = random() % 4;
        if (choice < 2)
            values.back() = static_cast<float>(choice);
    }
    return values;
}

void fillScattered(OwnedImage& image, Size size, unsigned seed)
{
    image.clear(size.width, size.height);
    image.set(scatteredValues(size, seed));
}

/// Compares the bits, so that the sign of a zero counts. Any not-a-number equals any other.
void expectSameBits(const std::vector<float>& actual, const std::vector<float>& expected,
                    const std::string& what)
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t n = 0; n < actual.size(); n++) {
        const bool areBothNotANumber = std::isnan(actual[n]) && std::isnan(expected[n]);
        if (areBothNotANumber ||
            std::bit_cast<std::uint32_t>(actual[n]) == std::bit_cast<std::uint32_t>(expected[n]))
            continue;
        FAIL() << what << ": float " << n << " is " << actual[n] << ", not " << expected[n];
    }
}

std::string named(Size size, const std::string& arguments)
{
    return std::to_string(size.width) + " by " + std::to_string(size.height) + ", " + arguments;
}

namespace reference
{
std::size_t at(Size size, std::int32_t i, std::int32_t j)
{
    return static_cast<std::size_t>(size.height * i + j) * 4;
}

float noise(std::int32_t x, std::int32_t y)
{
    std::uint32_t n = static_cast<std::uint32_t>(y) * 57 + static_cast<std::uint32_t>(x);
    n = n ^ (n << 13);
    const std::uint32_t hash = ((n * n * 15731 + 789221) * n + 1376312589) & 0x7fffffff;
    return static_cast<float>(1.0 - hash / 1073741824.0);
}

float smoothNoise(std::int32_t x, std::int32_t y)
{
    return noise(x, y) / 4.0F +
           (noise(x + 1, y) + noise(x - 1, y) + noise(x, y + 1) + noise(x, y - 1)) / 8.0F +
           (noise(x + 1, y + 1) + noise(x + 1, y - 1) + noise(x - 1, y + 1) + noise(x - 1, y - 1)) /
               16.0F;
}

float cosineInterpolate(float a, float b, float t)
{
    const float f = (1.0F - std::cos(t * 3.1415927F)) * 0.5F;
    return a * (1.0F - f) + b * f;
}

float interpolatedNoise(float x, float y)
{
    const auto ix = static_cast<std::int32_t>(x);
    const auto iy = static_cast<std::int32_t>(y);
    const float fx = x - static_cast<float>(ix);
    const float fy = y - static_cast<float>(iy);
    const float first = cosineInterpolate(smoothNoise(ix, iy), smoothNoise(ix + 1, iy), fx);
    const float second =
        cosineInterpolate(smoothNoise(ix, iy + 1), smoothNoise(ix + 1, iy + 1), fx);
    return cosineInterpolate(first, second, fy);
}

std::vector<float> perlin(std::vector<float> pixels, Size size, int octaves, float f, float a,
                          float frequencyFactor, float amplitudeFactor)
{
    const auto width = static_cast<float>(size.width);
    const auto height = static_cast<float>(size.height);
    for (int octave = 0; octave < octaves; octave++) {
        for (std::int32_t i = 0; i < size.width; i++)
            for (std::int32_t j = 0; j < size.height; j++) {
                const float x = static_cast<float>(j) / (width * f);
                const float y = static_cast<float>(i) / (height * f);
                pixels[at(size, i, j)] += interpolatedNoise(x, y) * a;
            }
        f *= frequencyFactor;
        a *= amplitudeFactor;
    }
    for (std::size_t n = 0; n < pixels.size(); n += 4)
        pixels[n + 1] = pixels[n + 2] = pixels[n];
    return pixels;
}

std::vector<float> blur(const std::vector<float>& pixels, Size size, std::int32_t radius)
{
    const float s = static_cast<float>(radius) / 2.0F + 1.0F;
    std::vector<float> kernel;
    for (std::int32_t k = -radius; k <= radius; k++) {
        const float distance = std::sqrt(static_cast<float>(k) * static_cast<float>(k));
        kernel.push_back(std::exp(distance / (-2.0F * s * s)) / (6.2831855F * s));
    }
    if (radius == 0)
        kernel = {1.0F};
    const auto weight = [&](std::int32_t k) { return *(kernel.data() + radius + k); };

    std::vector<float> across(pixels.size());
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++)
            for (std::size_t c = 0; c < 4; c++) {
                float sum = 0.0F;
                float total = 0.0F;
                for (std::int32_t k = -radius; k <= radius; k++) {
                    if (i + k < 0 || i + k > size.width - 1)
                        continue;
                    if (c < 3 && pixels[at(size, i + k, j) + 3] == 0.0F)
                        continue;
                    sum += weight(k) * pixels[at(size, i + k, j) + c];
                    total += weight(k);
                }
                across[at(size, i, j) + c] = total != 0.0F ? sum / total : sum;
            }

    std::vector<float> along(pixels.size());
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++)
            for (std::size_t c = 0; c < 4; c++) {
                float sum = 0.0F;
                float total = 0.0F;
                for (std::int32_t k = -radius; k <= radius; k++) {
                    if (j + k < 0 || j + k > size.height - 1)
                        continue;
                    sum += weight(k) * across[at(size, i, j + k) + c];
                    total += weight(k);
                }
                along[at(size, i, j) + c] = total != 0.0F ? sum / total : sum;
            }
    return along;
}

std::vector<float> scroll(std::vector<float> pixels, Size size, std::int32_t dx, std::int32_t dy,
                          Vector fill)
{
    const float colour[] = {fill.x, fill.y, fill.z, fill.w};
    const auto move = [&](std::int32_t stepX, std::int32_t stepY) {
        const std::vector<float> old = pixels;
        for (std::int32_t y = 0; y < size.height; y++)
            for (std::int32_t x = 0; x < size.width; x++)
                for (std::int32_t c = 0; c < 4; c++) {
                    const std::int32_t fromX = x - stepX;
                    const std::int32_t fromY = y - stepY;
                    const bool isInside =
                        fromX >= 0 && fromX < size.width && fromY >= 0 && fromY < size.height;
                    const auto to = (size.width * y + x) * 4 + c;
                    const auto from = (size.width * fromY + fromX) * 4 + c;
                    pixels[static_cast<std::size_t>(to)] =
                        isInside ? old[static_cast<std::size_t>(from)] : colour[c];
                }
    };
    move(dx, 0);
    move(0, dy);
    return pixels;
}

std::vector<float> blend(const std::vector<float>& pixels, Size size, unsigned thisCode,
                         unsigned otherCode, const std::vector<float>& others, Size otherSize)
{
    const auto match = [](std::int32_t place, std::int32_t length, std::int32_t otherLength) {
        return static_cast<std::int32_t>(static_cast<float>(place) / static_cast<float>(length) *
                                         static_cast<float>(otherLength));
    };
    std::vector<float> blended;
    for (std::int32_t i = 0; i < size.width; i++)
        for (std::int32_t j = 0; j < size.height; j++) {
            const std::int32_t oi = match(i, size.width, otherSize.width);
            const std::int32_t oj = match(j, size.height, otherSize.height);
            const float* const p = &pixels[at(size, i, j)];
            const float* const o = &others[at(otherSize, oi, oj)];
            const float factors[] = {0.0F,
                                     1.0F,
                                     p[3],
                                     o[3],
                                     1.0F - p[3],
                                     1.0F - o[3],
                                     (p[0] + p[1] + p[2]) / 3.0F,
                                     (o[0] + o[1] + o[2]) / 3.0F,
                                     1.0F - (p[0] + p[1] + p[2]) / 3.0F,
                                     1.0F - (o[0] + o[1] + o[2]) / 3.0F};
            for (int c = 0; c < 4; c++) {
                float sum = 0.0F;
                sum += p[c] * factors[thisCode];
                sum += o[c] * factors[otherCode];
                blended.push_back(sum < 0.0F ? 0.0F : sum > 1.0F ? 1.0F : sum);
            }
        }
    return blended;
}
} // namespace reference

TEST(ImageClear, MakesOpaqueBlackOfTheNewSize)
{
    OwnedImage image;

    EXPECT_TRUE(image.clear(2, 3));

    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 3);
    const std::vector<float> expected = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1,
                                         0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageClear, FollowedByInvertGivesOpaqueWhite)
{
    OwnedImage image(1, 2);

    EXPECT_TRUE(image.invert(false));

    EXPECT_EQ(image.values(), (std::vector<float>{1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST(ImageInvert, TurnsAlphaOnlyWhenAsked)
{
    OwnedImage image(1, 1);
    image.set({0.25F, 1.5F, -1.0F, 0.75F});

    image.invert(false);
    EXPECT_EQ(image.values(), (std::vector<float>{0.75F, -0.5F, 2.0F, 0.75F}));

    image.invert(true);
    EXPECT_EQ(image.values(), (std::vector<float>{0.25F, 1.5F, -1.0F, 0.25F}));
}

TEST(ImageInvert, ReachesEveryPixelOfEverySize)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 1);
        std::vector<float> expected = image.values();
        for (std::size_t n = 0; n < expected.size(); n++)
            expected[n] = n % 4 == 3 ? expected[n] : 1.0F - expected[n];

        image.invert(false);

        expectSameBits(image.values(), expected, named(size, "colours"));
    }
}

TEST(ImageNoise, IsFixedForALatticePoint)
{
    // At the origin the hash is 1376312589, which is 302570765 above 2^30.
    EXPECT_EQ(Image::noise(0, 0), static_cast<float>(-302570765 / 1073741824.0));
    EXPECT_EQ(Image::noise(3, 4), Image::noise(3, 4));
    EXPECT_NE(Image::noise(3, 4), Image::noise(4, 3));
}

TEST(ImageNoise, RepeatsARowEachFiftySevenColumns)
{
    EXPECT_EQ(Image::noise(0, 1), Image::noise(57, 0));
    EXPECT_EQ(Image::noise(-57, 5), Image::noise(0, 4));
}

TEST(ImageNoise, FollowsTheHashForAllIntegers)
{
    for (const std::int32_t x : {0, 1, -1, 12345, -98765, largest, least})
        for (const std::int32_t y : {0, 1, -1, 777, -31337, largest, least}) {
            EXPECT_EQ(Image::noise(x, y), reference::noise(x, y)) << x << ", " << y;
            EXPECT_LE(std::abs(Image::noise(x, y)), 1.0F);
        }
}

TEST(ImageNoise, IsSmoothedByAxisAndDiagonalNeighbours)
{
    for (const std::int32_t x : {0, 1, -7, 1000})
        for (const std::int32_t y : {0, 2, -9, 4321})
            EXPECT_EQ(Image::smoothNoise(x, y), reference::smoothNoise(x, y)) << x << ", " << y;
}

TEST(ImageNoise, WrapsAroundAtTheEndOfTheIntegers)
{
    EXPECT_EQ(Image::smoothNoise(largest, least),
              Image::noise(largest, least) / 4.0F +
                  (Image::noise(least, least) + Image::noise(largest - 1, least) +
                   Image::noise(largest, least + 1) + Image::noise(largest, largest)) /
                      8.0F +
                  (Image::noise(least, least + 1) + Image::noise(least, largest) +
                   Image::noise(largest - 1, least + 1) + Image::noise(largest - 1, largest)) /
                      16.0F);
}

TEST(ImageCosineInterpolate, GoesFromOneEndToTheOther)
{
    EXPECT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 0.0F), 2.0F);
    EXPECT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 1.0F), 6.0F);
    EXPECT_FLOAT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 0.5F), 4.0F);
    // A third of the half wave has risen by (1 - cos 60 degrees) / 2, a quarter.
    EXPECT_FLOAT_EQ(Image::cosineInterpolate(2.0F, 6.0F, 1.0F / 3.0F), 3.0F);
}

TEST(ImageInterpolatedNoise, IsTheSmoothNoiseOnALatticePoint)
{
    EXPECT_EQ(Image::interpolatedNoise(3.0F, 8.0F), Image::smoothNoise(3, 8));
}

TEST(ImageInterpolatedNoise, TruncatesTowardZeroOnBothSidesOfIt)
{
    for (const float x : {0.0F, 0.3F, 5.75F, -0.3F, -5.75F})
        for (const float y : {0.0F, 0.6F, 9.125F, -0.6F, -9.125F})
            EXPECT_EQ(Image::interpolatedNoise(x, y), reference::interpolatedNoise(x, y))
                << x << ", " << y;
}

TEST(ImageInterpolatedNoise, TakesAnyFloat)
{
    for (const float x : {infinity, -infinity, notANumber, 3e38F, -3e38F, 2147483648.0F})
        for (const float y : {0.0F, notANumber, infinity, -3e38F})
            Image::interpolatedNoise(x, y);
    EXPECT_TRUE(std::isnan(Image::interpolatedNoise(notANumber, 0.0F)));
}

TEST(ImagePerlin, OneOctaveOfAmplitudeOneStaysWithinMinusOneAndOne)
{
    OwnedImage image(40, 40);

    EXPECT_TRUE(image.perlin(1, 0.1F, 1.0F, 0.5F, 0.5F));

    const std::vector<float> values = image.values();
    bool hasNegative = false;
    for (std::size_t n = 0; n < values.size(); n += 4) {
        ASSERT_GE(values[n], -1.0F);
        ASSERT_LE(values[n], 1.0F);
        ASSERT_EQ(values[n + 1], values[n]);
        ASSERT_EQ(values[n + 2], values[n]);
        ASSERT_EQ(values[n + 3], 1.0F);
        hasNegative = hasNegative || values[n] < 0.0F;
    }
    EXPECT_TRUE(hasNegative);
}

TEST(ImagePerlin, EqualsThePlainLoopsBitForBit)
{
    struct Arguments
    {
        const char* name;
        int octaves;
        float frequency, amplitude, frequencyFactor, amplitudeFactor;
    };
    const Arguments rows[] = {
        {"halving cells", 5, 0.5F, 0.6F, 0.5F, 0.5F},
        {"cells of less than a pixel", 2, 0.001F, 1.0F, 0.3F, 0.7F},
        {"one wide cell", 1, 100.0F, 2.0F, 1.0F, 1.0F},
        {"growing cells", 4, 0.03F, 0.1F, 1.7F, 1.9F},
        {"a negative frequency", 3, -0.07F, 1.0F, 0.5F, -0.5F},
        {"no octave", 0, 1.0F, 1.0F, 1.0F, 1.0F},
        {"less than no octave", -3, 1.0F, 1.0F, 1.0F, 1.0F},
    };
    for (const Size size : sizes)
        for (const Arguments& row : rows) {
            OwnedImage image;
            fillScattered(image, size, 2);
            const std::vector<float> expected =
                reference::perlin(image.values(), size, row.octaves, row.frequency, row.amplitude,
                                  row.frequencyFactor, row.amplitudeFactor);

            image.perlin(row.octaves, row.frequency, row.amplitude, row.frequencyFactor,
                         row.amplitudeFactor);

            expectSameBits(image.values(), expected, named(size, row.name));
        }
}

TEST(ImagePerlin, TakesFrequenciesThatGiveNoFiniteCell)
{
    for (const float frequency : {0.0F, infinity, notANumber, 1e-38F, -1e-38F, 3e38F}) {
        OwnedImage image(5, 70);
        image.perlin(2, frequency, 1.0F, 0.5F, 0.5F);
        EXPECT_EQ(image.pixels[3], 1.0F);
    }
}

TEST(ImageClamp, LimitsColoursAndLeavesAlpha)
{
    OwnedImage image(1, 2);
    image.set({1.5F, -0.5F, 0.5F, 2.0F, notANumber, infinity, -infinity, -3.0F});

    EXPECT_TRUE(image.clamp());

    expectSameBits(image.values(), {1.0F, 0.0F, 0.5F, 2.0F, notANumber, 1.0F, 0.0F, -3.0F}, "");
}

TEST(ImageClamp, ReachesEveryPixelOfEverySize)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 3);
        std::vector<float> expected = image.values();
        for (std::size_t n = 0; n < expected.size(); n++)
            if (n % 4 != 3)
                expected[n] = std::min(std::max(expected[n], 0.0F), 1.0F);

        image.clamp();

        expectSameBits(image.values(), expected, named(size, "clamped"));
    }
}

TEST(ImageNormalise, StretchesRedAndCopiesItToGreenAndBlue)
{
    OwnedImage image(1, 3);
    image.set({-1, 7, 8, 0.1F, 3, 9, 9, 0.2F, 1, 0, 0, 0.3F});

    EXPECT_TRUE(image.normalise());

    const std::vector<float> expected = {0, 0, 0, 0.1F, 1, 1, 1, 0.2F, 0.5F, 0.5F, 0.5F, 0.3F};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageNormalise, DividesByZeroWhenRedIsTheSameEverywhere)
{
    OwnedImage image(1, 2);
    image.set({0.5F, 0, 1, 1, 0.5F, 0, 1, 1});

    EXPECT_TRUE(image.normalise());

    EXPECT_TRUE(std::isnan(image.pixels[0]));
    EXPECT_TRUE(std::isnan(image.pixels[6]));
    EXPECT_EQ(image.pixels[7], 1.0F);
}

TEST(ImageNormalise, EqualsThePlainLoopsBitForBit)
{
    for (const Size size : sizes) {
        OwnedImage image;
        fillScattered(image, size, 4);
        std::vector<float> expected = image.values();
        float smallest = expected[0];
        float largestRed = expected[0];
        for (std::size_t n = 0; n < expected.size(); n += 4) {
            if (expected[n] < smallest)
                smallest = expected[n];
            if (expected[n] > largestRed)
                largestRed = expected[n];
        }
        for (std::size_t n = 0; n < expected.size(); n += 4)
            expected[n] = expected[n + 1] = expected[n + 2] =
                (expected[n] - smallest) / (largestRed - smallest);

        image.normalise();

        expectSameBits(image.values(), expected, named(size, "normalised"));
    }
}

TEST(ImageBlur, OfRadiusZeroOnlyBlackensTransparentPixels)
{
    OwnedImage image(2, 1);
    image.set({0.5F, 2.0F, -1.0F, 0.25F, 0.5F, 2.0F, -1.0F, 0.0F});

    EXPECT_TRUE(image.blur(0));

    EXPECT_EQ(image.values(), (std::vector<float>{0.5F, 2.0F, -1.0F, 0.25F, 0, 0, 0, 0}));
}

TEST(ImageBlur, WeighsByTheExponentialOfTheDistance)
{
    // Radius 2 has a spread of 2, so a neighbour counts exp(-1 / 8) = 0.882497 of the middle and
    // the next one exp(-2 / 8) = 0.778801. All five together are 4.322596; a Gaussian's would be
    // less.
    OwnedImage image(5, 1);
    image.pixels[4 * 2] = 1.0F;

    image.blur(2);

    EXPECT_NEAR(image.pixels[4 * 2], 1.0F / 4.322596F, 1e-6F);
    // The outermost pixel has only three of the weights: 1, 0.882497 and 0.778801.
    EXPECT_NEAR(image.pixels[0], 0.778801F / 2.661298F, 1e-6F);
}

TEST(ImageBlur, CutsTheKernelAtTheBorderAndRenormalises)
{
    OwnedImage image(3, 1);
    image.set({1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1});

    image.blur(1);

    // The first pixel has itself and one neighbour, which counts exp(-1 / 4.5) = 0.800737 of it.
    EXPECT_NEAR(image.pixels[0], 1.0F / 1.800737F, 1e-6F);
    EXPECT_NEAR(image.pixels[3], 1.0F, 1e-6F);
    EXPECT_EQ(image.pixels[8], 0.0F);
}

TEST(ImageBlur, KeepsTheColourOfTransparentPixelsOutAcrossRowsOnly)
{
    const std::vector<float> redBesideInvisibleGreen = {1, 0, 0, 1, 0, 1, 0, 0};
    OwnedImage along(1, 2);
    along.set(redBesideInvisibleGreen);
    OwnedImage across(2, 1);
    across.set(redBesideInvisibleGreen);

    across.blur(1);
    along.blur(1);

    // Across rows both pixels become red, while alpha is shared out.
    EXPECT_EQ(across.pixels[1], 0.0F);
    EXPECT_FLOAT_EQ(across.pixels[4], 1.0F);
    EXPECT_NEAR(across.pixels[3], 1.0F / 1.800737F, 1e-6F);
    // Along the row the green pixel has turned black before, and dims the red one.
    EXPECT_EQ(along.pixels[1], 0.0F);
    EXPECT_NEAR(along.pixels[0], 1.0F / 1.800737F, 1e-6F);
}

TEST(ImageBlur, EqualsThePlainLoopsBitForBit)
{
    for (const Size size : sizes)
        for (const std::int32_t radius : {0, 1, 2, 4, 7, 40}) {
            OwnedImage image;
            fillScattered(image, size, 5);
            const std::vector<float> expected = reference::blur(image.values(), size, radius);

            image.blur(radius);

            expectSameBits(image.values(), expected,
                           named(size, "radius " + std::to_string(radius)));
        }
}

TEST(ImageBlur, EqualsThePlainLoopsWhereNoPixelIsTransparentOrOneIs)
{
    const Size size = {40, 21};
    for (const int transparentRow : {-1, 0, 20, 39}) {
        OwnedImage image;
        fillScattered(image, size, 6);
        for (std::size_t n = 3; n < image.pixelCount() * 4; n += 4)
            image.pixels[n] = 0.5F;
        if (transparentRow >= 0)
            image.pixels[reference::at(size, transparentRow, 20) + 3] = -0.0F;
        const std::vector<float> expected = reference::blur(image.values(), size, 4);

        image.blur(4);

        expectSameBits(image.values(), expected,
                       "transparent row " + std::to_string(transparentRow));
    }
}

TEST(ImageBlur, SpreadsInfinitiesAsThePlainLoopsDo)
{
    const Size size = {12, 12};
    OwnedImage image;
    fillScattered(image, size, 7);
    image.pixels[reference::at(size, 5, 5)] = infinity;
    image.pixels[reference::at(size, 5, 5) + 3] = 0.0F;
    image.pixels[reference::at(size, 9, 2)] = -infinity;
    image.pixels[reference::at(size, 9, 2) + 3] = 1.0F;
    const std::vector<float> expected = reference::blur(image.values(), size, 3);

    image.blur(3);

    expectSameBits(image.values(), expected, "infinities");
}

TEST(ImageBlur, LeavesNothingOfAnImageWhenTheRadiusIsNegative)
{
    for (const std::int32_t radius : {-1, -5, least}) {
        OwnedImage image(3, 2);
        image.invert(false);

        EXPECT_TRUE(image.blur(radius));

        EXPECT_EQ(image.values(), std::vector<float>(24, 0.0F));
    }
}

TEST(ImageBlur, TakesAnyLargeRadius)
{
    OwnedImage image(3, 2);
    image.invert(false);

    EXPECT_TRUE(image.blur(largest));

    EXPECT_EQ(image.values(), std::vector<float>(24, 1.0F));
}

TEST(ImageScroll, MovesRightAndDownAndFillsBehind)
{
    // Three columns and two rows, for scrolling takes rows of `width` pixels.
    OwnedImage image(3, 2);
    image.set({1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6});

    EXPECT_TRUE(image.scroll(1, 1, 99, -99, Vector(7, 8, 9, 0), true));

    const std::vector<float> expected = {7, 8, 9, 0, 7, 8, 9, 0, 7, 8, 9, 0,
                                         7, 8, 9, 0, 1, 1, 1, 1, 2, 2, 2, 2};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageScroll, MovesLeftAndUpAndFillsBehind)
{
    OwnedImage image(3, 2);
    image.set({1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6});

    image.scroll(-2, -1, 0, 0, Vector(7, 8, 9, 0), false);

    const std::vector<float> expected = {6, 6, 6, 6, 7, 8, 9, 0, 7, 8, 9, 0,
                                         7, 8, 9, 0, 7, 8, 9, 0, 7, 8, 9, 0};
    EXPECT_EQ(image.values(), expected);
}

TEST(ImageScroll, EqualsThePlainLoopsForAllDistances)
{
    const Vector fill(0.5F, -1.0F, 2.0F, 0.25F);
    for (const Size size : sizes)
        for (const std::int32_t dx : {0, 1, -1, 4, -5, 200, -200})
            for (const std::int32_t dy : {0, 1, -1, 3, -6, 200, -200}) {
                OwnedImage image;
                fillScattered(image, size, 8);
                const std::vector<float> expected =
                    reference::scroll(image.values(), size, dx, dy, fill);

                image.scroll(dx, dy, 0, 0, fill, false);

                expectSameBits(image.values(), expected,
                               named(size, std::to_string(dx) + " and " + std::to_string(dy)));
            }
}

TEST(ImageScroll, LeavesOnlyTheFillAtTheFarthestDistances)
{
    for (const std::int32_t distance : {largest, least, 2, -2}) {
        OwnedImage right(2, 2);
        right.scroll(distance, 0, 0, 0, Vector(3, 3, 3, 3), false);
        EXPECT_EQ(right.values(), std::vector<float>(16, 3.0F)) << distance;

        OwnedImage down(2, 2);
        down.scroll(0, distance, 0, 0, Vector(3, 3, 3, 3), false);
        EXPECT_EQ(down.values(), std::vector<float>(16, 3.0F)) << distance;
    }
}

TEST(ImageBlend, ReadsEachPixelOfASmallerImageForFourOfItsOwn)
{
    OwnedImage image(4, 4);
    OwnedImage other(2, 2);
    other.set({0.1F, 0, 0, 1, 0.2F, 0, 0, 1, 0.3F, 0, 0, 1, 0.4F, 0, 0, 1});

    EXPECT_TRUE(image.blend(0, 1, other));

    std::vector<float> reds;
    for (std::size_t n = 0; n < 64; n += 4)
        reds.push_back(image.pixels[n]);
    const std::vector<float> expected = {0.1F, 0.1F, 0.2F, 0.2F, 0.1F, 0.1F, 0.2F, 0.2F,
                                         0.3F, 0.3F, 0.4F, 0.4F, 0.3F, 0.3F, 0.4F, 0.4F};
    EXPECT_EQ(reds, expected);
}

TEST(ImageBlend, CodesOneAndZeroLeaveTheImageAsItWasButClamped)
{
    OwnedImage image(1, 1);
    image.set({0.5F, 1.5F, -0.5F, 2.0F});
    OwnedImage other(1, 1);
    other.set({infinity, infinity, infinity, infinity});

    image.blend(1, 0, other);

    EXPECT_EQ(image.values(), (std::vector<float>{0.5F, 1.0F, 0.0F, 1.0F}));
}

TEST(ImageBlend, LaysOneImageOverTheOtherByAlpha)
{
    const std::vector<float> pixel = {1.0F, 0.0F, 0.5F, 0.25F};
    OwnedImage other(1, 1);
    other.set({0.0F, 1.0F, 0.5F, 0.75F});

    OwnedImage above(1, 1);
    above.set(pixel);
    above.blend(2, 4, other);
    EXPECT_EQ(above.values(), (std::vector<float>{0.25F, 0.75F, 0.5F, 0.625F}));

    OwnedImage below(1, 1);
    below.set(pixel);
    below.blend(5, 3, other);
    EXPECT_EQ(below.values(), (std::vector<float>{0.25F, 0.75F, 0.5F, 0.625F}));
}

TEST(ImageBlend, TakesLuminanceAsTheUnweightedMean)
{
    OwnedImage image(1, 1);
    image.set({0.75F, 0.0F, 0.0F, 1.0F}); // luminance 0.25
    OwnedImage other(1, 1);
    other.set({0.0F, 1.5F, 0.0F, 0.5F}); // luminance 0.5

    image.blend(7, 8, other);

    EXPECT_EQ(image.values(), (std::vector<float>{0.375F, 1.0F, 0.0F, 0.875F}));
}

void expectPlainBlend(Size size, Size otherSize, unsigned thisCode, unsigned otherCode)
{
    OwnedImage image;
    fillScattered(image, size, 9);
    OwnedImage other;
    fillScattered(other, otherSize, 10);
    const std::vector<float> expected =
        reference::blend(image.values(), size, thisCode, otherCode, other.values(), otherSize);

    image.blend(thisCode, otherCode, other);

    expectSameBits(image.values(), expected,
                   named(size, "codes " + std::to_string(thisCode) + std::to_string(otherCode)));
}

TEST(ImageBlend, EqualsThePlainLoopsForAllCodes)
{
    for (unsigned codes = 0; codes < 100; codes++)
        expectPlainBlend({9, 20}, {7, 31}, codes / 10, codes % 10);
}

TEST(ImageBlend, EqualsThePlainLoopsForAllSizes)
{
    for (const Size size : sizes)
        for (const Size otherSize : sizes)
            expectPlainBlend(size, otherSize, 9, 3);
}

TEST(ImageBlend, WithItselfReadsThePixelsAsTheyWere)
{
    // For these sizes the relative place of a pixel is not always its own.
    const Size size = {49, 61};
    OwnedImage image;
    fillScattered(image, size, 11);
    const std::vector<float> expected =
        reference::blend(image.values(), size, 3, 6, image.values(), size);

    image.blend(3, 6, image);

    expectSameBits(image.values(), expected, "itself");
}

TEST(ImageBlend, SaysForEachPixelAndSourceThatACodeIsUnknown)
{
    OwnedImage image(1, 2);
    image.invert(false);
    OwnedImage other(1, 1);
    other.set({0.5F, 0.25F, 0.125F, 1.0F});
    const CapturedErrors errors;

    EXPECT_TRUE(image.blend(10, 1, other));

    EXPECT_EQ(errors.text(), "Unknown texture operation\nUnknown texture operation\n");
    EXPECT_EQ(image.values(),
              (std::vector<float>{0.5F, 0.25F, 0.125F, 1.0F, 0.5F, 0.25F, 0.125F, 1.0F}));
}

TEST(ImageBlend, SaysSoTwiceAPixelWhenBothCodesAreUnknown)
{
    OwnedImage image(1, 1);
    const OwnedImage other(1, 1);
    const CapturedErrors errors;

    EXPECT_TRUE(image.blend(4294967295U, 10, other));

    EXPECT_EQ(errors.text(), "Unknown texture operation\nUnknown texture operation\n");
    EXPECT_EQ(image.values(), std::vector<float>(4, 0.0F));
}

TEST(ImageBlend, WithAnImageWithoutPixelsChangesNothing)
{
    OwnedImage image(1, 1);
    const OwnedImage empty(0, 3);

    EXPECT_TRUE(image.blend(0, 1, empty));

    EXPECT_EQ(image.values(), (std::vector<float>{0, 0, 0, 1}));
}

TEST(ImageProcedures, TakeSizesWithoutPixels)
{
    const Size withoutPixels[] = {{0, 0},  {0, 5},   {5, 0},          {-3, 4},
                                  {4, -3}, {-2, -2}, {least, largest}};
    for (const Size size : withoutPixels) {
        OwnedImage image;
        const OwnedImage other(2, 2);
        EXPECT_TRUE(image.clear(size.width, size.height));
        EXPECT_EQ(image.width, size.width);
        EXPECT_EQ(image.height, size.height);
        EXPECT_EQ(image.pixelCount(), 0U);

        EXPECT_TRUE(image.invert(true));
        EXPECT_TRUE(image.perlin(2, 0.5F, 1.0F, 0.5F, 0.5F));
        EXPECT_TRUE(image.clamp());
        EXPECT_TRUE(image.normalise());
        EXPECT_TRUE(image.blur(3));
        EXPECT_TRUE(image.scroll(1, 1, 0, 0, Vector(), false));
        EXPECT_TRUE(image.blend(1, 1, other));
    }
}
/// Small numbers mostly, and now and then one of the largest.
std::int32_t anyInteger(std::mt19937& random)
{
    const std::int32_t extremes[] = {largest, least, -1000000007, 1 << 24};
    const auto number = static_cast<std::int32_t>(random() % 90) - 20;
    return random() % 8 == 0 ? extremes[random() % 4] : number;
}

float anyFloat(std::mt19937& random)
{
    const float extremes[] = {0.0F, infinity, -infinity, notANumber, 3e38F, -1e-40F};
    const float number = static_cast<float>(random() % 4000) / 1000.0F - 1.0F;
    return random() % 8 == 0 ? extremes[random() % 6] : number;
}

// The judge is the address sanitiser: images end with their arrays.
TEST(ImageProcedures, StayInsideTheirStorageWhateverTheArguments)
{
    std::mt19937 random(12);
    const CapturedErrors errors; // of unknown factor codes
    for (int round = 0; round < 400; round++) {
        OwnedImage image(static_cast<std::int32_t>(random() % 40) - 2,
                         static_cast<std::int32_t>(random() % 90) - 2);
        const OwnedImage other(static_cast<std::int32_t>(random() % 40) - 2,
                               static_cast<std::int32_t>(random() % 40) - 2);
        for (std::size_t n = 0; n < image.pixelCount() * 4; n++)
            image.pixels[n] = anyFloat(random);

        image.perlin(static_cast<std::int32_t>(random() % 4), anyFloat(random), anyFloat(random),
                     anyFloat(random), anyFloat(random));
        image.scroll(anyInteger(random), anyInteger(random), anyInteger(random), anyInteger(random),
                     Vector(), true);
        image.blur(anyInteger(random));
        const auto codes = static_cast<std::uint32_t>(random());
        image.blend(codes % 11, codes / 11 % 11, random() % 4 == 0 ? image : other);
        image.normalise();
        image.clamp();
        image.invert(true);
    }
}
} // namespace
} // namespace tamor
