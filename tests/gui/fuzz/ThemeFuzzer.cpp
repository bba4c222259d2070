// Feeds the reader of themes with any bytes: it must read and print what the plain reader reads and
// prints, and ask for the same texture. With libFuzzer's own main this is the fuzzer; with
// ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/gui/PlainFiles.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/PrintedBy.h"

#include <cstdint>
#include <string>

using namespace tamor;
using namespace tamor::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const FuzzFile file(bytes);
    // Neither all the same nor all 0, so that what is kept is told from what is read.
    Theme theme;
    theme.bodyColour = theme.fontSize = {0.125F, 0.25F, 0.375F};
    theme.listAlpha = theme.margin = theme.iconSize = 0.5F;
    theme.texture = 7;
    Theme plain = theme;

    const std::string echo = printedBy([&] { theme.read(file.path()); });

    const std::string plainEcho = readThemePlainly(plain, bytes, file.path());
    if (echo != plainEcho)
        failFuzzing("the plain reader prints:\n" + plainEcho + "and not:\n" + echo);
    const std::string found = difference(theme, plain);
    if (!found.empty())
        failFuzzing("the plain reader differs: " + found);
    const bool hasTexture = plain.textureFile != std::string("NULL");
    if (theme.texture != (hasTexture ? 1U : 7U) ||
        (hasTexture && lastTexture() != plain.textureFile))
        failFuzzing("the texture is another one");
    return 0;
}
