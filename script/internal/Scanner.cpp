#include "script/internal/Scanner.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace tamor
{
std::string_view Scanner::readVariablePath()
{
    Scanner ahead = *this;
    for (;;) {
        ahead.readName();
        if (!ahead.startsWith('['))
            break;
        while (ahead.skip("["))
            ahead.readNumberText();
        // The "]". Meant: or whatever else stands there, so a computed index cannot be written;
        // `ReadVariablePath.TakesOneCharacterBehindAnIndexWhateverItIs` holds it.
        ahead.take(1);
    }
    return take(rest.size() - ahead.rest.size());
}

bool Scanner::readIndices(std::vector<unsigned>& indices)
{
    while (skip("[")) {
        skipSpace();
        if (!startsWith(NUMBER_CHARACTER))
            return false;
        indices.push_back(static_cast<unsigned>(integerFromText(readNumberText())));
        takeRun(INDEX_END_CHARACTER);
    }
    return atEnd();
}

std::string Scanner::readStringLiteral()
{
    take(1);
    std::string content;
    while (!startsWith('"')) {
        std::size_t plain = 0;
        while (plain < rest.size() && rest[plain] != '"' && rest[plain] != '\'')
            ++plain;
        content += take(plain);
        if (skip("'") || atEnd())
            content += take(1);
    }
    take(1);
    return content;
}

void Scanner::throwPastTheEnd()
{
    throw std::out_of_range("the script ends inside a string or an index");
}

float numberFromText(std::string_view text)
{
    // What a stream would take: a sign, digits, and one point among them.
    std::size_t length = text.starts_with('-') ? 1 : 0;
    bool hasPoint = false;
    for (; length < text.size(); ++length) {
        const char c = text[length];
        if (c == '-' || (c == '.' && hasPoint))
            break;
        hasPoint = hasPoint || c == '.';
    }
    // Nine digits are an integer of 32 bits, which converts to the same float in less time.
    if (!hasPoint && length <= 9)
        return static_cast<float>(integerFromText(text.substr(0, length)));
    constexpr float largest = std::numeric_limits<float>::max();
#ifdef __cpp_lib_to_chars
    float value = 0;
    const std::errc error =
        std::from_chars(text.data(), text.data() + length, value, std::chars_format::fixed).ec;
    if (error != std::errc::result_out_of_range)
        return value;
    // Too large for a float, or too small, as a stream would have it.
    const std::size_t firstDigit = text.find_first_not_of("-0");
    const float magnitude = text[firstDigit] == '.' ? 0.0F : largest;
    return text.front() == '-' ? -magnitude : magnitude;
#else // libc++ has it for integers alone
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    const std::string digits(text.substr(0, length));
    return std::clamp(strtof_l(digits.c_str(), nullptr, classic), -largest, largest);
#endif
}

int integerFromText(std::string_view text)
{
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}
} // namespace tamor
