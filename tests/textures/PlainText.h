/// \file
/// The font's text once more, for the tests alone: formatting, lines and widths as plain as their
/// rules.
#pragma once

#include "textures/Font.h"

#include <string>
#include <vector>

namespace tamor::test
{
/// The text as `printf` would print it if each conversion found a zero, cut to `longest` characters.
/// `%n` prints nothing, and what is no conversion stands as it is. Numbers in it have up to four
/// digits.
std::string formatPlainly(const std::string& format, std::size_t longest);

/// The lines that a font draws: the text between line ends, one behind the last too.
std::vector<std::string> linesPlainly(const std::string& text);

/// The width of a text that is already formatted.
float textWidthPlainly(const Font& font, const std::string& text);
} // namespace tamor::test
