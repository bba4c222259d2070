/// \file
/// The numbers of a line, read fast where that is certain to give what `sscanf` gives.
#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace tamor
{
/// Takes decimal numbers off a line, one after the other, until one is not plain.
///
/// A plain number starts with a digit, perhaps after a minus, is in the range of its type, and is
/// followed by white space or the end of the line. For these `%d` and `%f` of `sscanf` give the
/// same value, to the last bit. At any other number the reading stops, that number's target and all
/// later ones keep their values, and the caller reads the whole line again with `sscanf`.
class NumberFields
{
public:
    explicit NumberFields(std::string_view line) : next(line.data()), end(line.data() + line.size())
    {}

    template <typename Number>
    NumberFields& read(Number& target)
    {
        while (next != end && isSpace(*next))
            ++next;
        Number number = {};
        const auto [after, error] = fromChars(next, end, number);
        plain =
            plain && startsWithDigit() && error == std::errc() && (after == end || isSpace(*after));
        if (plain) {
            target = number;
            next = after;
        }
        return *this;
    }

    /// Reads an integer and drops it.
    NumberFields& skipInteger()
    {
        std::int32_t dropped = 0;
        return read(dropped);
    }

    /// Whether every number asked for was plain.
    bool arePlain() const { return plain; }

private:
    /// The white space of the C locale.
    static bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    template <typename Number>
    static std::from_chars_result fromChars(const char* first, const char* last, Number& number)
    {
#ifndef __cpp_lib_to_chars // libc++ has it for integers alone
        if constexpr (std::is_floating_point_v<Number>)
            return {first, std::errc::invalid_argument};
        else
#endif
            return std::from_chars(first, last, number);
    }

    /// Refuses what only one of the two ways takes, or both take with other names: "+1", "nan".
    bool startsWithDigit() const
    {
        const char* first = next != end && *next == '-' ? next + 1 : next;
        return first != end && *first >= '0' && *first <= '9';
    }

    const char* next;
    const char* end;
    bool plain = true;
};
} // namespace tamor
