/// \file
/// Text that is a format string and comes from a user: formatted as by `printf`, but with nothing
/// behind it.
#pragma once

#include <span>
#include <string_view>

namespace tamor
{
/// Formats as `printf` would if each conversion found a zero: numbers print 0, strings and
/// characters nothing, pointers "(nil)", and "%%" prints one per cent sign.
///
/// `%n` writes nothing, and a conversion that is unknown or not complete stands as it is. Flags,
/// widths and precisions hold; a `*` is 0. So no text whatever can read or write memory or take
/// long.
/// \param format  ends in a zero character
/// \param buffer  not empty; the text is cut to one character less. Written only if there is a per
///                cent sign in `format`
/// \return the text, which lies in `buffer` or, without a per cent sign, in `format`. Only in the
///         first case a zero character stands behind it for certain
std::string_view formatWithoutArguments(const char* format, std::span<char> buffer);
} // namespace tamor
