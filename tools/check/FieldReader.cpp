#include "tools/check/FieldReader.h"

#include "gui/FileFields.h"
#include "tools/check/Words.h"

#include <algorithm>

namespace tamor::check
{
namespace
{
constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::size_t longestSkipped = 10000;

std::string_view describe(FieldType type)
{
    switch (type) {
    case FieldType::integer:
        return "an integer";
    case FieldType::number:
        return "a number";
    case FieldType::flag:
        return "0 or 1";
    case FieldType::text:
        return "a text";
    case FieldType::word:
        break;
    }
    return "a word";
}
} // namespace

TextStream::TextStream(std::string_view text) : std::istream(static_cast<std::streambuf*>(this))
{
    // The buffer is only read.
    char* const begin = const_cast<char*>(text.data());
    setg(begin, begin, begin + text.size());
}

FieldReader::FieldReader(Source& newSource, std::string_view newFormat)
    : source(newSource), format(newFormat), stream(newSource.text())
{}

std::size_t FieldReader::nextField() const
{
    const std::size_t at = source.text().find_first_not_of(whiteSpace, offset());
    return std::min(at, source.text().size());
}

Field FieldReader::readFirstWord()
{
    Field field;
    field.begin = nextField();
    readField(stream, field.word);
    field.end = field.begin + field.word.size();
    return field;
}

std::optional<Field> FieldReader::read(const FieldFormat& fieldFormat, std::string_view owner)
{
    if (fieldFormat.type == FieldType::text)
        return readText(fieldFormat, owner);
    Field field;
    field.begin = nextField();
    if (fieldFormat.type == FieldType::word)
        readField(stream, field.word);
    else if (fieldFormat.type == FieldType::integer)
        readField(stream, field.integer);
    else if (fieldFormat.type == FieldType::number)
        readField(stream, field.number);
    else
        readField(stream, field.flag);
    field.end = offset();
    if (stream.fail()) {
        reportFailure(fieldFormat, owner, field.begin);
        return std::nullopt;
    }
    if (fieldFormat.type != FieldType::word)
        reportTail(field, fieldFormat);
    return field;
}

std::optional<Field> FieldReader::readText(const FieldFormat& fieldFormat, std::string_view owner)
{
    Field field;
    field.begin = offset();
    field.word = tamor::readText(stream);
    field.end = offset();
    if (!stream.fail())
        return field;
    source.report(code("-text"), field.begin,
                  "the " + std::string(fieldFormat.name) + " of " + std::string(owner) +
                      " is missing" +
                      (isAtEnd() ? "" : ": the program waits for ever; a blank is text enough"));
    return std::nullopt;
}

void FieldReader::reportFailure(const FieldFormat& fieldFormat, std::string_view owner,
                                std::size_t begin)
{
    const std::string_view rest = source.text().substr(begin);
    const std::string_view word = rest.substr(0, rest.find_first_of(whiteSpace));
    const std::string what = "the " + std::string(fieldFormat.name) + " of " + std::string(owner);
    if (word.empty()) {
        source.report(code("-short"), source.text().size(), "the file ends in front of " + what);
        return;
    }
    std::string message = inQuotes(word) + " stands in the place of " + what + ", " +
                          std::string(describe(fieldFormat.type));
    if (word.starts_with(',') || word.find(',') != std::string_view::npos)
        message += "; a fraction is written with a point";
    source.report(code("-field"), begin, message);
}

void FieldReader::reportTail(const Field& field, const FieldFormat& fieldFormat)
{
    const std::string_view text = source.text();
    if (field.end >= text.size() || whiteSpace.find(text[field.end]) != std::string_view::npos)
        return;
    const std::string_view rest = text.substr(field.end);
    source.report(code("-number-tail"), field.begin,
                  "the " + std::string(fieldFormat.name) + " ends in front of " +
                      inQuotes(rest.substr(0, rest.find_first_of(whiteSpace))) +
                      ", which is taken for what comes next");
}

void FieldReader::skipLine()
{
    const std::size_t begin = offset();
    const std::size_t lineEnd = std::min(source.text().find('\n', begin), source.text().size());
    if (lineEnd - begin > longestSkipped) {
        source.report(code("-line-long"), begin + longestSkipped,
                      "a line is skipped for 10000 characters: what is behind them is read as a "
                      "line of its own");
    }
    tamor::skipLine(stream);
}

std::string_view FieldReader::restOfLine() const
{
    const std::string_view text = source.text();
    const std::size_t begin = offset();
    std::string_view rest = text.substr(begin, text.find('\n', begin) - begin);
    rest.remove_prefix(std::min(rest.find_first_not_of(whiteSpace), rest.size()));
    return rest;
}

bool isOnLaterLine(const Source& source, std::size_t first, std::size_t second)
{
    const std::string_view between = source.text().substr(first, second - first);
    return second > first && between.find('\n') != std::string_view::npos;
}
} // namespace tamor::check
