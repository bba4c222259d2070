/// \file
/// Reading the fields of the GUI's text formats: layouts, themes and configurations.
///
/// In all three a field is known by its place. Blanks and line ends separate numbers and words
/// alike, and behind the last field of a line the rest of the line is a remark.
#pragma once

#include "TamorExport.h"

#include <fstream>
#include <string>
#include <type_traits>

namespace tamor
{
/// Opens a file to be read by the operations below: numbers are in the C locale, whatever locale the
/// host has set. A file that cannot be opened leaves the stream failed. A stream as such takes a lack
/// of memory for a failure; this one has it thrown as `std::bad_alloc`, and a file that cannot be
/// read as `std::ios::failure`, which the operations below take for what it is.
TAMOR_EXPORT std::ifstream openFields(const std::string& file);

#ifdef _LIBCPP_VERSION
/// Reads a number up to the first character that cannot go on with it. libc++ by itself takes letters
/// that stick to a number for a part of it, and numbers in base 16.
/// \param number  what was read; if there was no number, or none that a float can hold, it counts for
///                nothing
/// \return whether there was one that a float can hold; if not, the stream has failed
TAMOR_EXPORT bool readNumber(std::istream& stream, float& number);
#endif

/// Reads a number, a truth value (0 or 1) or a word. A field that cannot be read keeps what it
/// held, and leaves the stream failed, so that every later field keeps what it held too.
template <class Field>
void readField(std::istream& stream, Field& field)
{
    // A failing >> writes 0, so it must not see the field itself.
    Field value{};
    try {
#ifdef _LIBCPP_VERSION
        if constexpr (std::is_same_v<Field, float>) {
            if (readNumber(stream, value))
                field = value;
            return;
        }
#endif
        if (stream >> value)
            field = value;
    } catch (const std::ios::failure&) {
        return;
    }
}

/// Skips what is left of the line, up to 10000 characters of it.
TAMOR_EXPORT void skipLine(std::istream& stream);

/// Reads a text field: what is left of the line, up to 511 characters, without the white space in
/// front. The line end itself stays in the stream.
/// \return the text; empty, with the stream failed, if not even a blank was left of the line
TAMOR_EXPORT std::string readText(std::istream& stream);

/// As `readText`, and turns each backslash followed by an "n" into a line end.
TAMOR_EXPORT std::string readTextWithLineEnds(std::istream& stream);
} // namespace tamor
