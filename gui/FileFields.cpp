#include "gui/FileFields.h"

#include "maths/Utilities.h"

#include <algorithm>
#include <cctype>
#include <locale>

namespace tamor
{
namespace
{
constexpr std::streamsize skippedCharacters = 10000;
constexpr std::streamsize textBufferSize = 512; // 511 characters and the closing zero

bool isWhiteSpace(char character)
{
    return std::isspace(static_cast<unsigned char>(character)) != 0;
}
} // namespace

std::ifstream openFields(const std::string& file)
{
    std::ifstream stream(file);
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios::badbit);
    return stream;
}

void skipLine(std::istream& stream)
{
    try {
        stream.ignore(skippedCharacters, '\n');
    } catch (const std::ios::failure&) {
        return;
    }
}

std::string readText(std::istream& stream)
{
    // Meant: get, which fails on an empty rest of the line and not on a long one; a layout with an
    // empty text field never finishes loading because of it.
    // `ReadText.FailsTheStreamWhenTheLineEndsAtOnce` holds it.
    char buffer[textBufferSize] = {};
    try {
        stream.get(buffer, textBufferSize);
    } catch (const std::ios::failure&) {
        return {};
    }

    const std::string text = buffer;
    return {std::find_if_not(text.begin(), text.end(), isWhiteSpace), text.end()};
}

std::string readTextWithLineEnds(std::istream& stream)
{
    return replaceAll("\\n", "\n", readText(stream));
}
} // namespace tamor
