// Measures and prints any text as a font does, which takes it for a format: the text, its width and
// the lines that are drawn must be the plain ones. With libFuzzer's own main this is the fuzzer;
// with ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/support/FuzzFile.h"
#include "tests/textures/PlainText.h"
#include "textures/Font.h"
#include "textures/internal/FormatText.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace
{
std::vector<std::string> drawnLines;
} // namespace

// There is no OpenGL here, which takes all other calls for none.
extern "C" void glCallLists(GLsizei count, GLenum /*type*/, const void* lists)
{
    drawnLines.emplace_back(static_cast<const char*>(lists), static_cast<std::size_t>(count));
}

namespace
{
using namespace tamor;
using namespace tamor::test;

/// Whether a width is so large that the plain text would be.
bool hasLongNumber(const std::string& format)
{
    int digits = 0;
    for (const char character : format) {
        digits = character >= '0' && character <= '9' ? digits + 1 : 0;
        if (digits > 4)
            return true;
    }
    return false;
}

/// Formats into a buffer of so many characters.
void compareFormatted(const std::string& format, std::size_t size)
{
    std::vector<char> buffer(size);
    const std::string text(formatWithoutArguments(format.c_str(), buffer));
    if (hasLongNumber(format))
        return;
    const std::string expected = formatPlainly(format, size - 1);
    if (text != expected)
        failFuzzing("formatted as '" + text + "', not '" + expected + "'");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // It ends at its first zero character.
    const std::string format(data, std::find(data, data + size, 0));
    for (const std::size_t room : {1U, 2U, 16U, 256U, 512U})
        compareFormatted(format, room);

    Font font;
    for (std::size_t code = 0; code < font.advance.size(); code++)
        font.advance[code] = static_cast<float>(code % 7) - 0.5F;
    font.setScale(0.25F, 2.0F);
    const float width = font.textWidth(format.c_str());
    drawnLines.clear();
    font.print(format.c_str());
    if (hasLongNumber(format))
        return 0;
    const float plainWidth = textWidthPlainly(font, formatPlainly(format, 511));
    if (width != plainWidth)
        failFuzzing("the width is not " + std::to_string(plainWidth));
    if (drawnLines != linesPlainly(formatPlainly(format, 255)))
        failFuzzing("the plain lines differ");
    return 0;
}
