// Feeds the reader of configurations with any bytes: it must read what the plain reader reads, and
// ask for the same font. With libFuzzer's own main this is the fuzzer; with ReplayCorpus.cpp it runs
// the kept corpus, as ctest does.
#include "gui/GLWidget.h"
#include "tests/gui/PlainFiles.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/PrintedBy.h"

#include <cstdint>
#include <cstring>
#include <string>

using namespace tamor;
using namespace tamor::test;

namespace
{
/// Whether two have the same bits.
template <class Field>
bool areSame(const Field& a, const Field& b)
{
    return std::memcmp(static_cast<const void*>(&a), static_cast<const void*>(&b), sizeof a) == 0;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const FuzzFile file(bytes);
    Vector* const rectangles[] = {&GLWidget::optionFrame, &GLWidget::optionMark,
                                  &GLWidget::checkFrame, &GLWidget::checkMark,
                                  &GLWidget::sliderKnob};
    PlainConfig plain;
    plain.glowRate = GLWidget::glowRate = 9.0F;
    for (std::size_t k = 0; k < plain.rectangles.size(); k++)
        plain.rectangles[k] = *rectangles[k] = Vector(9.0F, 8.0F, 7.0F, 6.0F);

    const std::string errors = printedBy([&] { GLWidget::readConfig(file.path()); });

    readConfigPlainly(plain, bytes);
    for (std::size_t k = 0; k < plain.rectangles.size(); k++)
        if (!areSame(*rectangles[k], plain.rectangles[k]))
            failFuzzing("the plain reader differs in rectangle " + std::to_string(k));
    if (!areSame(GLWidget::glowRate, plain.glowRate))
        failFuzzing("the plain reader differs in the glow rate");
    if (errors != "Loading " + plain.fontFile + "\nError loading the font\nLoaded.\n")
        failFuzzing("this was printed:\n" + errors);
    // A path ends at its first zero byte.
    if (lastFont() != plain.fontFile.substr(0, plain.fontFile.find('\0')))
        failFuzzing("the font is another one");
    return 0;
}
