// Feeds the reader of PNG files with any bytes: it must read what the plain reader reads, and print
// the same. With libFuzzer's own main this is the fuzzer; with ReplayCorpus.cpp it runs the kept
// corpus, as ctest does.
#include "tests/textures/PlainPictures.h"
#include "tests/textures/fuzz/ReadingComparison.h"
#include "textures/PNGReader.h"

#include <cstdint>
#include <string>

namespace
{
using namespace tamor;

/// Larger pictures only take longer.
constexpr std::size_t mostPixels = 1 << 18;
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const test::FuzzFile file(bytes);
    const test::PlainPicture plain = test::readPNGPlainly(bytes, file.path());
    if (plain.wasRead && plain.pixelCount() > mostPixels)
        return 0;

    test::compareReading(readPNG, file, plain);
    return 0;
}
