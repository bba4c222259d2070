#include "gui/FileFields.h"

#include "maths/Utilities.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string_view>

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

#ifdef _LIBCPP_VERSION
bool readNumber(std::istream& stream, float& number)
{
    const std::istream::sentry isReady(stream);
    if (!isReady)
        return false;
    std::string text;
    const auto takesOneOf = [&](std::string_view characters) {
        const int next = stream.rdbuf()->sgetc();
        if (next == EOF || characters.find(static_cast<char>(next)) == std::string_view::npos)
            return false;
        text += static_cast<char>(stream.rdbuf()->sbumpc());
        return true;
    };
    const auto takeDigits = [&] {
        while (takesOneOf("0123456789"))
            ;
    };

    takesOneOf("+-");
    takeDigits();
    if (takesOneOf("."))
        takeDigits();
    if (text.find_first_of("0123456789") != std::string::npos && takesOneOf("eE")) {
        takesOneOf("+-");
        takeDigits();
    }
    std::ios::iostate state = stream.rdbuf()->sgetc() == EOF ? std::ios::eofbit : std::ios::goodbit;

    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    char* end = nullptr;
    number = strtof_l(text.c_str(), &end, classic);
    if (text.empty() || *end != '\0' || std::isinf(number))
        state |= std::ios::failbit;
    stream.setstate(state);
    return !stream.fail();
}
#endif

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
