#include "textures/internal/FormatText.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace tamor
{
namespace
{
/// One conversion of a format, such as "%-08.3lf".
struct Conversion
{
    std::string flags;
    std::size_t width = 0;
    std::size_t precision = 0;
    bool hasPrecision = false;
    char type = 0;             ///< 0 where the format ends before it
    const char* end = nullptr; ///< behind the conversion
};

/// Reads a width or a precision, and passes over a `*`, which stands for 0.
std::size_t readNumber(const char*& at)
{
    constexpr std::uint64_t limit = 1000000000; // about what `printf` takes
    if (*at == '*') {
        at++;
        return 0;
    }
    std::uint64_t number = 0;
    while (*at >= '0' && *at <= '9') {
        number = std::min(number * 10 + static_cast<std::uint64_t>(*at - '0'), limit);
        at++;
    }
    return static_cast<std::size_t>(number);
}

/// \param at  behind the per cent sign
Conversion readConversion(const char* at)
{
    constexpr const char* flagCharacters = "-+ #0'";
    constexpr const char* sizeCharacters = "hlqLjzZt";
    Conversion conversion;
    while (*at != 0 && std::strchr(flagCharacters, *at) != nullptr)
        conversion.flags += *at++;
    conversion.width = readNumber(at);
    if (*at == '.') {
        at++;
        conversion.hasPrecision = true;
        conversion.precision = readNumber(at);
    }
    while (*at != 0 && std::strchr(sizeCharacters, *at) != nullptr)
        at++;
    conversion.type = *at;
    conversion.end = *at == 0 ? at : at + 1;
    return conversion;
}

/// Whether each digit of the precision is one more 0 of the text.
bool growsWithPrecision(const Conversion& conversion)
{
    const bool isShortest = conversion.type == 'g' || conversion.type == 'G';
    if (isShortest && conversion.flags.find('#') == std::string::npos)
        return false;
    return std::strchr("diouxXaAeEfFgG", conversion.type) != nullptr;
}

/// Brings both numbers down, so that the text is printed in no time and its first `room` characters
/// are the same.
void shorten(Conversion& conversion, std::size_t room)
{
    // A zero takes no more, apart from what the precision adds.
    constexpr std::size_t longestZero = 32;
    if (conversion.precision > room) {
        const std::size_t cut = conversion.precision - room;
        if (growsWithPrecision(conversion))
            conversion.width -= std::min(conversion.width, cut);
        conversion.precision = room;
    }
    conversion.width = std::min(conversion.width, 2 * room + longestZero);
}

/// Where the next characters of a text go; what does not fit is dropped.
class Output
{
public:
    explicit Output(std::span<char> newBuffer) : buffer(newBuffer) { buffer[0] = 0; }

    bool isFull() const { return length + 1 >= buffer.size(); }
    std::string_view text() const { return {buffer.data(), length}; }

    void append(std::string_view text)
    {
        const std::size_t count = std::min(text.size(), buffer.size() - 1 - length);
        std::memcpy(buffer.data() + length, text.data(), count);
        length += count;
        buffer[length] = 0;
    }

    template <typename Zero>
    void appendZero(Conversion conversion, Zero zero)
    {
        const std::size_t room = buffer.size() - length;
        shorten(conversion, room);
        std::string format = "%" + conversion.flags;
        if (conversion.width > 0)
            format += std::to_string(conversion.width);
        if (conversion.hasPrecision)
            format += "." + std::to_string(conversion.precision);
        format += conversion.type;
        const int written = std::snprintf(buffer.data() + length, room, format.c_str(), zero);
        if (written > 0)
            length += std::min(static_cast<std::size_t>(written), room - 1);
    }

private:
    std::span<char> buffer;
    std::size_t length = 0;
};

/// \param start  the per cent sign of the conversion
void appendConversion(Output& output, const char* start, Conversion conversion)
{
    switch (conversion.type) {
    case '%':
        output.append("%");
        return;
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X':
        output.appendZero(conversion, 0);
        return;
    case 'a':
    case 'A':
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
        output.appendZero(conversion, 0.0);
        return;
    case 'c':
    case 'C':
    case 's':
    case 'S':
        conversion.type = 's';
        output.appendZero(conversion, "");
        return;
    case 'p':
        output.appendZero(conversion, static_cast<void*>(nullptr));
        return;
    case 'n':
        return;
    default:
        output.append({start, conversion.end});
    }
}
} // namespace

std::string_view formatWithoutArguments(const char* format, std::span<char> buffer)
{
    const char* sign = std::strchr(format, '%');
    if (sign == nullptr)
        return {format, strnlen(format, buffer.size() - 1)};

    Output output(buffer);
    const char* rest = format;
    while (sign != nullptr && !output.isFull()) {
        output.append({rest, sign});
        const Conversion conversion = readConversion(sign + 1);
        appendConversion(output, sign, conversion);
        rest = conversion.end;
        sign = std::strchr(rest, '%');
    }
    output.append(rest);
    return output.text();
}
} // namespace tamor
