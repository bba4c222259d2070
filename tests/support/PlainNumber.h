/// \file
/// A float out of a stream, as the formats mean it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <istream>
#include <limits>
#include <string>

namespace tamor::test
{
/// `stream >> number`. libc++ takes letters for parts of a number where the others end it, and what is
/// too large for infinite, so there it is read a character at a time.
inline void takePlainNumber(std::istream& stream, float& number)
{
#ifndef _LIBCPP_VERSION
    stream >> number;
#else
    constexpr float largest = std::numeric_limits<float>::max();
    std::string text;
    bool hasDigit = false;
    bool hasPoint = false;
    bool hasExponent = false;
    stream >> std::ws;
    for (;;) {
        const int next = stream.fail() ? EOF : stream.peek();
        const bool isFirst = text.empty() || text.back() == 'e' || text.back() == 'E';
        if (next >= '0' && next <= '9')
            hasDigit = true;
        else if (next == '.' && !hasPoint && !hasExponent)
            hasPoint = true;
        else if ((next == 'e' || next == 'E') && hasDigit && !hasExponent)
            hasExponent = true;
        else if (!((next == '+' || next == '-') && isFirst))
            break;
        text += static_cast<char>(stream.get());
    }
    number = 0.0F;
    const bool isWhole = hasDigit && text.find_last_of("0123456789.") == text.size() - 1;
    if (isWhole)
        number = std::strtof(text.c_str(), nullptr);
    if (!isWhole || number > largest || number < -largest)
        stream.setstate(std::ios::failbit);
    if (number > largest)
        number = largest;
    if (number < -largest)
        number = -largest;
#endif
}
} // namespace tamor::test
