/// \file
/// Reading the GUI's text formats with the engine's own functions, and knowing where each field is.
#pragma once

#include "gui/LineFormat.h"
#include "tools/check/Source.h"

#include <istream>
#include <optional>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>

namespace tamor::check
{
/// A text in memory as a stream that tells where it is.
class TextStream : private std::streambuf, public std::istream
{
public:
    explicit TextStream(std::string_view text);

    /// The byte that is read next.
    std::size_t offset() const { return static_cast<std::size_t>(gptr() - eback()); }
};

/// A field that was read.
struct Field
{
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string word; ///< of a word or a text, as the file has it
    float number = 0.0F;
    std::int32_t integer = 0;
    bool flag = false;
};

/// Reads a layout, a theme or a configuration field by field, in the reader's steps, and reports
/// what goes wrong in a field under the format's own codes: "<format>-field", "-short",
/// "-number-tail" and "-line-long".
class FieldReader
{
public:
    /// \param newFormat  the first word of its codes, such as "layout"
    FieldReader(Source& newSource, std::string_view newFormat);

    /// Reads one word, which begins a line, without a report: empty at the end of the file.
    Field readFirstWord();

    /// Reads a field of the type; nothing, after a report, where the reader's stream fails.
    /// \param owner  what the field belongs to, for the report: "CADD"
    std::optional<Field> read(const FieldFormat& format, std::string_view owner);

    /// Where the next field begins; the text's size if nothing but blanks is left.
    std::size_t nextField() const;

    /// Goes to the next line, and reports a line that is too long for the reader to skip.
    void skipLine();

    /// What is left of the line, without the blanks in front.
    std::string_view restOfLine() const;

    /// Whether the reader has seen the end of the file.
    bool isAtEnd() const { return stream.eof(); }
    std::size_t offset() const { return stream.eof() ? source.text().size() : stream.offset(); }

private:
    std::string code(std::string_view suffix) const { return format + std::string(suffix); }
    std::optional<Field> readText(const FieldFormat& field, std::string_view owner);
    void reportFailure(const FieldFormat& field, std::string_view owner, std::size_t begin);
    void reportTail(const Field& field, const FieldFormat& fieldFormat);

    Source& source;
    std::string format;
    TextStream stream;
};

/// Whether the line of `first` ends in front of `second`.
bool isOnLaterLine(const Source& source, std::size_t first, std::size_t second);
} // namespace tamor::check
