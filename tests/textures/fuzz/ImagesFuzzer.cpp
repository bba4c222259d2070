// Calls the image procedures in any order with any arguments: each must make of the image what the
// plain one makes of it, to the last bit. With libFuzzer's own main this is the fuzzer; with
// ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/support/FuzzFile.h"
#include "tests/support/FuzzInput.h"
#include "tests/textures/PlainImages.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <string>

namespace
{
using namespace tamor;
using namespace tamor::test;

/// Larger pictures and more octaves only take longer.
constexpr int longestSide = 24;
constexpr int mostOctaves = 6;
constexpr int mostCalls = 12;
/// The plain blur takes its time for each pixel of its radius.
constexpr std::int32_t largestComparedRadius = 60;

/// Whether all are the same, to the sign of a zero; any not-a-number equals any other.
bool areSame(const std::vector<float>& a, const std::vector<float>& b)
{
    for (std::size_t n = 0; n < a.size(); n++)
        if (std::bit_cast<std::uint32_t>(a[n]) != std::bit_cast<std::uint32_t>(b[n]) &&
            !(std::isnan(a[n]) && std::isnan(b[n])))
            return false;
    return a.size() == b.size();
}

/// An image and, beside it, the pixels that it must have.
class ComparedImage
{
public:
    /// Of any size, with pixels among which are a few of each kind.
    explicit ComparedImage(FuzzInput& input)
        : size{input.below(longestSide) + 1, input.below(longestSide) + 1}
    {
        image.clear(size.width, size.height);
        const float special[] = {input.take<float>(), input.take<float>(), 0.0F, 1.0F};
        const int spread = input.below(256);
        for (std::size_t n = 0; n < image.pixelCount() * 4; n++) {
            const std::size_t choice = n * 7 % (static_cast<std::size_t>(spread) + 5);
            image.pixels[n] = choice < 4 ? special[choice] : static_cast<float>(choice) / 64.0F;
        }
        expected = image.values();
    }

    /// One call of one procedure.
    void change(FuzzInput& input, ComparedImage& other)
    {
        const std::vector<float> pixels = expected;
        switch (input.below(7)) {
        case 0: {
            const bool withAlpha = input.below(2) == 1;
            image.invert(withAlpha);
            return expect("invert", plain::invert(pixels, withAlpha));
        }
        case 1:
            image.clamp();
            return expect("clamp", plain::clamp(pixels));
        case 2:
            image.normalise();
            return expect("normalise", plain::normalise(pixels));
        case 3:
            return blur(input.below(4) == 0 ? input.take<std::int32_t>() : input.below(40));
        case 4: {
            const auto dx = input.take<std::int32_t>();
            const auto dy = input.take<std::int32_t>();
            const Vector fill(input.take<float>(), 0.5F, 0.25F, 1.0F);
            image.scroll(dx, dy, 0, 0, fill, false);
            return expect("scroll", plain::scroll(pixels, size, dx, dy, fill));
        }
        case 5: {
            const auto thisCode = static_cast<unsigned>(input.below(10));
            const auto otherCode = static_cast<unsigned>(input.below(10));
            image.blend(thisCode, otherCode, other.image);
            return expect("blend", plain::blend(pixels, size, thisCode, otherCode, other.expected,
                                                other.size));
        }
        default: {
            const int octaves = input.below(mostOctaves + 2) - 1;
            float numbers[4];
            for (float& number : numbers)
                number = input.take<float>();
            image.perlin(octaves, numbers[0], numbers[1], numbers[2], numbers[3]);
            return expect("perlin", plain::perlin(pixels, size, octaves, numbers[0], numbers[1],
                                                  numbers[2], numbers[3]));
        }
        }
    }

private:
    void blur(std::int32_t radius)
    {
        image.blur(radius);
        if (radius <= largestComparedRadius)
            expect("blur", plain::blur(expected, size, radius));
        else
            expected = image.values();
    }

    void expect(const char* procedure, const std::vector<float>& newExpected)
    {
        expected = newExpected;
        if (!areSame(image.values(), expected))
            failFuzzing(std::string("the plain procedure differs: ") + procedure);
    }

    OwnedImage image;
    Size size;
    std::vector<float> expected;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    ComparedImage first(input);
    ComparedImage second(input);
    for (int call = 0; call < mostCalls && input.hasMore(); call++) {
        if (input.below(2) == 0)
            first.change(input, input.below(8) == 0 ? first : second);
        else
            second.change(input, first);
    }
    return 0;
}
