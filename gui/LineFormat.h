/// \file
/// What the lines of the GUI's text formats hold: for the readers, and for tools that check such
/// files or show what may stand in them.
#pragma once

#include "TamorExport.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tamor
{
/// How a field is written.
enum class FieldType : std::uint8_t
{
    word,    ///< characters up to a blank or a line end
    integer, ///< of 32 bits
    number,  ///< of single precision
    flag,    ///< 0 or 1
    text,    ///< what is left of the line, blanks and all; not empty
};

/// One field of a line.
struct FieldFormat
{
    std::string_view name;            ///< what it means, such as "parent" or "x"
    FieldType type = FieldType::word; ///< how it is read
};

/// One line: its fields in order, behind which everything is a remark, unless the last is a text.
struct LineFormat
{
    /// In a layout the directive that begins the line; in a theme or a configuration, where only
    /// the order counts, what the line is for.
    std::string_view word;
    std::span<const FieldFormat> fields; ///< in their order; they live as long as the program
};

/// The directives of a layout. The fields of `CADD` and `TADD` are followed by those of the kind,
/// which `widgetKinds` tells.
TAMOR_EXPORT std::vector<LineFormat> layoutDirectives();

/// The lines of a theme, in their order.
TAMOR_EXPORT std::vector<LineFormat> themeLines();

/// The lines of a configuration, in their order.
TAMOR_EXPORT std::vector<LineFormat> configLines();
} // namespace tamor
