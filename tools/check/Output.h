/// \file
/// How findings are shown.
#pragma once

#include "tools/check/Finding.h"

#include <ostream>
#include <span>

namespace tamor::check
{
/// Writes one finding a line, as compilers do:
///
///     my.gui:12:6: error: no widget "pages" is made above this line [layout-parent]
void writeText(std::ostream& stream, std::span<const Finding> findings, bool inColour);

/// Writes how many errors and warnings there are, in how many files, as one line.
void writeSummary(std::ostream& stream, std::span<const Finding> findings, std::size_t files);

/// Writes one array of objects, each with "file", "line", "column", "severity", "code" and
/// "message". Bytes that are no ASCII stand as they are if they are UTF-8, and else as U+FFFD.
void writeJSON(std::ostream& stream, std::span<const Finding> findings);
} // namespace tamor::check
