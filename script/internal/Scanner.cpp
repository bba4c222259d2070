#include "script/internal/Scanner.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace tamor
{
std::string_view Scanner::readVariablePath()
{
    Scanner ahead = *this;
    while (ahead.startsWith(NAME_CHARACTER) || ahead.startsWith('[')) {
        while (ahead.skip("["))
            ahead.readNumberText();
        // Behind a name character this is the character itself, behind an index its "]". Meant:
        // or whatever else stands there, so a computed index cannot be written;
        // `ReadVariablePath.TakesOneCharacterBehindAnIndexWhateverItIs` holds it.
        ahead.take(1);
    }
    return take(rest.size() - ahead.rest.size());
}

std::string Scanner::readStringLiteral()
{
    take(1);
    std::string content;
    while (!startsWith('"')) {
        const std::size_t plain = std::min(rest.find_first_of("\"'"), rest.size());
        content += take(plain);
        if (skip("'") || atEnd())
            content += take(1);
    }
    take(1);
    return content;
}

std::string_view Scanner::readParenthesised()
{
    // Meant: strings are not looked for, so a parenthesis inside quotes counts;
    // `ParseText.CountsAParenthesisInsideAString` holds it.
    std::size_t length = 1;
    for (int depth = 1; depth > 0 && length < rest.size(); ++length) {
        if (rest[length] == '(')
            ++depth;
        else if (rest[length] == ')')
            --depth;
    }
    const std::string_view stretch = take(length);
    return stretch.size() < 2 ? std::string_view() : stretch.substr(1, stretch.size() - 2);
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
    float value = 0;
    const std::errc error =
        std::from_chars(text.data(), text.data() + length, value, std::chars_format::fixed).ec;
    if (error == std::errc::result_out_of_range) {
        // Too large or too small for a float, as a stream would have it.
        value = std::strtof(std::string(text.substr(0, length)).c_str(), nullptr);
        constexpr float largest = std::numeric_limits<float>::max();
        return std::min(std::max(value, -largest), largest);
    }
    return value;
}

int integerFromText(std::string_view text)
{
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}
} // namespace tamor
