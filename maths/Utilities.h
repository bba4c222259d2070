/// \file
/// Whole-string work, reading a text file, and comparing floats.
#pragma once

#include "TamorExport.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamor
{
/// The text of the file at `path`, with one newline more than the file holds: the read that meets
/// the end still counts as a line. So "a\n" gives "a\n\n", "a" gives "a\n", and an empty file "\n".
/// \return the empty string, with nothing printed, when the file cannot be opened
TAMOR_EXPORT std::string readFile(const std::string& path);

/// How often `pattern`, which must not be empty, occurs in `text` without overlapping: "aa" occurs
/// twice in "aaaaa".
TAMOR_EXPORT std::int32_t countOccurrences(const std::string& text, const std::string& pattern);

/// `text` with every occurrence of `pattern`, which must not be empty, replaced. What was put in is
/// not looked at again: "ab" by "b" in "aabb" gives "abb".
TAMOR_EXPORT std::string replaceAll(const std::string& pattern, const std::string& replacement,
                                    std::string text);

/// Whether `index` is one of the indices of `items`.
template <typename Items>
bool hasIndex(const Items& items, std::int32_t index)
{
    // A negative index is a huge one here.
    return static_cast<std::size_t>(index) < items.size();
}

/// Whether `a` and `b` differ by strictly less than 0.008.
TAMOR_EXPORT bool almostEqual(float a, float b);
} // namespace tamor
