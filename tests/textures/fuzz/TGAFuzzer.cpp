// Feeds the reader of TGA files with any bytes: it must read what the plain reader reads, and print
// the same. With libFuzzer's own main this is the fuzzer; with ReplayCorpus.cpp it runs the kept
// corpus, as ctest does.
#include "tests/textures/PlainPictures.h"
#include "tests/textures/fuzz/ReadingComparison.h"
#include "textures/TGAReader.h"

#include <cstdint>
#include <string>

namespace
{
using namespace tamor;

/// Larger pictures only take longer.
constexpr std::size_t mostPixels = 1 << 18;

/// A refused file stays open, on purpose, so that only so many can be read.
bool isOneRefusedTooMany(const test::PlainPicture& plain)
{
    constexpr int mostRefused = 200;
    static int refused = 0;
    return !plain.wasRead && ++refused > mostRefused;
}

/// The size that a header states; the reader takes what is missing for 0.
std::size_t statedPixels(const std::uint8_t* data, std::size_t size)
{
    const auto byteAt = [&](std::size_t at) { return at < size ? std::size_t{data[at]} : 0; };
    return (byteAt(12) + 256 * byteAt(13)) * (byteAt(14) + 256 * byteAt(15));
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (statedPixels(data, size) > mostPixels)
        return 0;
    const std::string bytes(data, data + size);
    const test::PlainPicture plain = test::readTGAPlainly(bytes);
    if (isOneRefusedTooMany(plain))
        return 0;

    const test::FuzzFile file(bytes);
    test::compareReading(readTGA, file, plain);
    return 0;
}
