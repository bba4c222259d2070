// Feeds the reader of PNG files with any bytes: it must read what the plain reader reads, and print
// the same. With libFuzzer's own main this is the fuzzer; with ReplayCorpus.cpp it runs the kept
// corpus, as ctest does.
#include "tests/support/FuzzFile.h"
#include "tests/support/KeptArrays.h"
#include "tests/textures/PlainPictures.h"
#include "textures/PNGReader.h"

#include <cstdint>
#include <iostream>
#include <sstream>
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

    std::ostringstream errors;
    std::streambuf* const before = std::cerr.rdbuf(errors.rdbuf());
    const test::KeptArrays keptArrays;
    Image image;
    const bool wasRead = readPNG(image, {file.path(), 0});
    std::cerr.rdbuf(before);

    if (wasRead != plain.wasRead || errors.str() != plain.errors)
        test::failFuzzing("the plain reader prints: " + plain.errors);
    const std::string found = difference(image, plain);
    if (!found.empty())
        test::failFuzzing("the plain reader differs: " + found);
    return 0;
}
