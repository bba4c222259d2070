/// \file
/// Lines on the standard error stream, where the GUI says what it reads and builds.
#pragma once

#include <iostream>
#include <locale>
#include <sstream>
#include <type_traits>

namespace tamor
{
/// Writes one part of a line. A null pointer is 0, which not every standard library writes.
template <class Part>
void writePart(std::ostream& line, const Part& part)
{
    if constexpr (std::is_pointer_v<Part>)
        if (part == nullptr) {
            line << '0';
            return;
        }
    line << part;
}

/// Prints a line of these parts in one write. Numbers are in the C locale, whatever locale the host
/// has set.
template <class... Parts>
void printLine(const Parts&... parts)
{
    std::ostringstream line;
    line.imbue(std::locale::classic());
    (writePart(line, parts), ...);
    line << '\n';
    std::cerr << line.str();
}
} // namespace tamor
