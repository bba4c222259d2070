// The checkers of themes and configurations, in which only the order of the lines counts.

#include "tools/check/FieldReader.h"
#include "tools/check/Formats.h"
#include "tools/check/Words.h"

#include <cstdlib>
#include <functional>

namespace tamor::check
{
namespace
{
constexpr std::string_view whiteSpace = " \t\n\v\f\r";

// What Theme keeps of a path.
constexpr std::size_t longestTexturePath = 511;

using Values = std::vector<Field>;
using CheckLine = std::function<void(std::size_t line, const Values& values)>;

bool isNumber(std::string_view word)
{
    const std::string text(word);
    char* end = nullptr;
    std::strtof(text.c_str(), &end);
    return !text.empty() && *end == '\0';
}

/// Reads lines of a fixed order as the engine does, up to the first field that it cannot read.
class OrderedLines
{
public:
    OrderedLines(Source& newSource, std::string_view newFormat)
        : source(newSource), reader(newSource, newFormat), format(newFormat)
    {}

    void run(const std::vector<LineFormat>& lines, const CheckLine& checkLine)
    {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            Values values;
            if (!readLine(lines[i], i + 1, values)) {
                source.findings.back().message += ": this and all that follows stays unread";
                return;
            }
            checkLine(i + 1, values);
            reader.skipLine();
        }
    }

    std::string_view restOfLine() const { return reader.restOfLine(); }

private:
    bool readLine(const LineFormat& line, std::size_t number, Values& values)
    {
        const std::string owner =
            "line " + std::to_string(number) + " (" + std::string(line.word) + ")";
        for (const FieldFormat& field : line.fields) {
            const std::size_t begin = reader.nextField();
            const bool isLater = !values.empty() && isOnLaterLine(source, values[0].end, begin);
            std::optional<Field> value = reader.read(field, owner);
            if (!value)
                return false;
            if (isLater) {
                source.report(format + "-line-taken", begin,
                              "the " + std::string(field.name) + " of " + owner +
                                  " is missing in its line: this one is taken for it, and all "
                                  "behind it is wrong");
            }
            values.push_back(std::move(*value));
        }
        reportDropped(owner, values.back());
        return true;
    }

    void reportDropped(const std::string& owner, const Field& last)
    {
        const std::string_view rest = reader.restOfLine();
        const std::string_view word = rest.substr(0, rest.find_first_of(whiteSpace));
        if (isNumber(word)) {
            source.report(format + "-number-dropped", last.end,
                          "a number more than " + owner + " has is a remark: " + inQuotes(word));
        }
    }

    Source& source;
    FieldReader reader;
    std::string format;
};

/// Reports a number outside its range.
void checkRange(Source& source, std::string_view code, const Field& field, float least, float most,
                const std::string& range)
{
    if (field.number < least || field.number > most) {
        const std::string_view text = source.text().substr(field.begin, field.end - field.begin);
        source.report(code, field.begin, inQuotes(text) + " is not " + range);
    }
}

void checkThemeLine(Source& source, std::size_t line, const Values& values)
{
    if (line <= 6) { // colours and alphas
        for (const Field& value : values)
            checkRange(source, "theme-range", value, 0.0F, 1.0F, "from 0 to 1");
    }
    if (line == 11) { // the font
        for (const Field& value : values) {
            if (value.number <= 0.0F)
                source.report("theme-range", value.begin, "text of this size is not seen");
        }
        source.fontWidth = values[0].number;
        source.fontHeight = values[1].number;
    }
    if (line != 15) // the picture
        return;
    const Field& file = values[0];
    if (file.word.size() > longestTexturePath) {
        source.report("theme-texture-long", file.begin,
                      "a picture's path is cut behind 511 characters");
    } else if (file.word != "NULL") {
        source.references.push_back({Reference::Kind::texture, file.word, file.begin, ""});
    }
}

void checkConfigLine(Source& source, std::size_t line, const Values& values,
                     std::string_view restOfLine)
{
    if (line == 1) {
        const bool goesOn = restOfLine.find(".ttf") != std::string_view::npos ||
                            restOfLine.find(".otf") != std::string_view::npos;
        if (goesOn) {
            source.report("config-font-blank", values[0].end,
                          "a path has no blanks: the font's name ends here");
        }
        source.references.push_back({Reference::Kind::font, values[0].word, values[0].begin, ""});
    }
    if (line >= 3 && line <= 7) { // places in the picture
        for (const Field& value : values)
            checkRange(source, "config-range", value, 0.0F, 1.0F, "from 0 to 1");
        if (values[0].number >= values[2].number || values[1].number >= values[3].number) {
            source.report("config-range", values[0].begin,
                          "the order is left, bottom, right, top: this place is empty or turned");
        }
    }
    if (line == 8 && values[0].number <= 0.0F) {
        source.report("config-range", values[0].begin, "with this rate no widget ever lights up");
    }
}
} // namespace

void checkTheme(Source& source)
{
    OrderedLines(source, "theme").run(themeLines(), [&](std::size_t line, const Values& values) {
        checkThemeLine(source, line, values);
    });
}

void checkConfig(Source& source)
{
    OrderedLines lines(source, "config");
    lines.run(configLines(), [&](std::size_t line, const Values& values) {
        checkConfigLine(source, line, values, lines.restOfLine());
    });
}
} // namespace tamor::check
