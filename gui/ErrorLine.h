/// \file
/// Lines on the standard error stream, where the GUI says what it reads and builds.
#pragma once

#include <iostream>
#include <locale>
#include <sstream>

namespace tamor
{
/// Prints a line of these parts in one write. Numbers are in the C locale, whatever locale the host
/// has set.
template <class... Parts>
void printLine(const Parts&... parts)
{
    std::ostringstream line;
    line.imbue(std::locale::classic());
    (line << ... << parts) << '\n';
    std::cerr << line.str();
}
} // namespace tamor
