// The checker of layouts. It reads with the engine's functions by the engine's tables; what is made
// of the lines is the tree's business.

#include "gui/FileFields.h"
#include "gui/WidgetKinds.h"
#include "tools/check/Formats.h"
#include "tools/check/LayoutTree.h"
#include "tools/check/Texts.h"
#include "tools/check/Words.h"

#include <algorithm>

namespace tamor::check
{
namespace
{
constexpr std::string_view picture = "TEX";
constexpr FieldFormat pictureFields[] = {{"width", FieldType::number},
                                         {"height", FieldType::number}};

class LayoutCheck
{
public:
    explicit LayoutCheck(Source& newSource) : source(newSource), reader(newSource, "layout") {}

    void run()
    {
        while (!reader.isAtEnd() && isReadable) {
            readLine();
            if (isReadable)
                reader.skipLine();
        }
        if (isReadable)
            tree.end();
        reportCarriageReturn(source, "layout-carriage-return",
                             "behind a text they are drawn as a letter");
    }

private:
    void readLine();
    void act(const LineFormat& format);
    bool readFields(const LineFormat& format);
    std::optional<Field> readField(const FieldFormat& format, std::string_view owner);
    void explainFailure(const FieldFormat& format, std::string_view owner, std::size_t begin);
    void reportLine(const FieldFormat& format, std::string_view owner, const Field& field);
    void reportUnknown();
    void add(const LineFormat& format);
    void readKind(const WidgetKind& kind);
    void readButton(const Field& caption);
    void checkSizes(const WidgetKind& kind) const;
    void refer(Reference::Kind kind, std::string path, std::size_t offset, std::string reason = "");

    const Field& value(const LineFormat& format, std::string_view name) const
    {
        const auto named = [&](const FieldFormat& field) { return field.name == name; };
        const auto found = std::find_if(format.fields.begin(), format.fields.end(), named);
        return values[static_cast<std::size_t>(found - format.fields.begin())];
    }

    Source& source;
    FieldReader reader;
    LayoutTree tree{source};
    const std::vector<LineFormat> directives = layoutDirectives();
    Field directive;
    std::vector<Field> values;
    std::size_t lastEnd = 0; ///< of the field before
    bool isBroken = false;   ///< the line goes on in the next one, which has been said
    bool isReadable = true;  ///< the reader would go on
};

void LayoutCheck::readLine()
{
    directive = reader.readFirstWord();
    lastEnd = directive.end;
    isBroken = false;
    if (directive.word.empty() || directive.word.starts_with("//"))
        return;
    const auto hasWord = [&](const LineFormat& each) { return each.word == directive.word; };
    const auto found = std::find_if(directives.begin(), directives.end(), hasWord);
    if (found == directives.end()) {
        reportUnknown();
        return;
    }
    if (readFields(*found))
        act(*found);
    else
        isReadable = false;
}

void LayoutCheck::reportUnknown()
{
    std::vector<std::string_view> words;
    for (const LineFormat& each : directives)
        words.push_back(each.word);
    const std::string guess = source.guess(directive.word, words);
    source.report("layout-directive", directive.begin,
                  inQuotes(directive.word) + " is no directive: the line does nothing" +
                      (guess.empty() ? "; a remark begins with //" : guess));
}

bool LayoutCheck::readFields(const LineFormat& format)
{
    values.clear();
    for (const FieldFormat& field : format.fields) {
        // The reader leaves such a line alone behind the word.
        if (format.word == "TEXT" && !values.empty() && values[0].word == "NULL")
            break;
        std::optional<Field> read = readField(field, format.word);
        if (!read)
            return false;
        values.push_back(std::move(*read));
    }
    return true;
}

std::optional<Field> LayoutCheck::readField(const FieldFormat& format, std::string_view owner)
{
    const std::size_t begin = reader.nextField();
    std::optional<Field> field = reader.read(format, owner);
    if (field && format.type == FieldType::text)
        checkText(source, *field, !reader.restOfLine().empty());
    else if (field)
        reportLine(format, owner, *field);
    else if (format.type != FieldType::text && !reader.isAtEnd())
        explainFailure(format, owner, begin);
    if (field)
        lastEnd = field->end;
    return field;
}

void LayoutCheck::explainFailure(const FieldFormat& format, std::string_view owner,
                                 std::size_t begin)
{
    std::string& message = source.findings.back().message;
    message += ": the program waits for ever";
    if (isOnLaterLine(source, lastEnd, begin))
        message += "; a field of the line above is missing";
    else if (owner == "TADD" && format.name == "tab")
        message += "; the order of TADD is tab, parent, kind, name";
}

void LayoutCheck::reportLine(const FieldFormat& format, std::string_view owner, const Field& field)
{
    if (!isOnLaterLine(source, lastEnd, field.begin))
        return;
    const auto isTaken = [&](const LineFormat& each) { return each.word == field.word; };
    if (std::any_of(directives.begin(), directives.end(), isTaken)) {
        source.report("layout-line-taken", field.begin,
                      "this line is lost: its first word is taken for the " +
                          std::string(format.name) + " of " + std::string(owner) +
                          ", which is missing above");
    } else if (!isBroken) {
        isBroken = true;
        source.report("layout-line-break", field.begin,
                      "the " + std::string(format.name) + " of " + std::string(owner) +
                          " is missing in its line, and this word is taken for it");
    }
}

void LayoutCheck::act(const LineFormat& format)
{
    const std::string_view word = format.word;
    if (word == "CADD" || word == "TADD") {
        add(format);
    } else if (word == "CONF") {
        tree.readConfig();
        refer(Reference::Kind::configuration, values[0].word, values[0].begin);
    } else if (word == "THEM") {
        refer(Reference::Kind::theme, values[0].word, values[0].begin);
    } else if (word == "NTAB") {
        tree.nameTab(value(format, "window"), value(format, "tab"));
    } else if (word == "TEXT") {
        tree.addText(value(format, "widget"));
    } else if (word == "SOLID") {
        tree.finish(directive);
    } else if (word.starts_with("CENTRE")) {
        tree.centre(directive, value(format, "widget"));
    }
}

void LayoutCheck::add(const LineFormat& format)
{
    const Field& kindWord = value(format, "kind");
    const std::span<const WidgetKind> kinds = widgetKinds();
    const auto hasWord = [&](const WidgetKind& kind) { return kind.word == kindWord.word; };
    const auto kind = std::find_if(kinds.begin(), kinds.end(), hasWord);
    if (kind == kinds.end()) {
        std::vector<std::string_view> words;
        for (const WidgetKind& each : kinds)
            words.push_back(each.word);
        source.report("layout-kind", kindWord.begin,
                      inQuotes(kindWord.word) + " is no kind of widget: nothing is made" +
                          source.guess(kindWord.word, words));
        return;
    }
    Add line{&*kind, value(format, "name"), value(format, "parent"), std::nullopt};
    if (format.word == "TADD")
        line.tab = value(format, "tab");
    tree.add(line);
    readKind(*kind);
}

void LayoutCheck::readKind(const WidgetKind& kind)
{
    const LineFormat format{kind.word, kind.fields};
    if (!readFields(format)) {
        isReadable = false;
        return;
    }
    if (kind.word == "Butt")
        readButton(values[0]);
    if (kind.word == "Combo")
        refer(Reference::Kind::theme, "combo_button.theme", directive.begin, "a Combo");
    if (kind.word == "TWin")
        refer(Reference::Kind::theme, "tabwin_button.theme", directive.begin, "a TWin");
    if (isReadable)
        checkSizes(kind);
}

void LayoutCheck::readButton(const Field& caption)
{
    if (caption.word == picture) {
        isReadable = readFields({"Butt", pictureFields});
        return;
    }
    checkText(source, caption, false);
    const std::string_view rest = reader.restOfLine();
    if (!rest.empty() && !rest.starts_with("//")) {
        source.report("layout-caption", reader.nextField(),
                      "the caption of a button is one word: " + inQuotes(rest) + " is dropped");
    }
}

void LayoutCheck::checkSizes(const WidgetKind& kind) const
{
    if (kind.word == "Slide") {
        const bool hasX = values[0].number != 0.0F;
        const bool hasY = values[1].number != 0.0F;
        if (hasX == hasY) {
            source.report("layout-slider", values[0].begin,
                          "one of a slider's lengths is 0 and the other is not, or it cannot be "
                          "moved");
        }
    }
    if (kind.word == "Text" && (values[0].integer < 1 || values[1].integer < 1)) {
        source.report("layout-size", values[0].begin,
                      "a text box has at least one column and one row");
    }
}

void LayoutCheck::refer(Reference::Kind kind, std::string path, std::size_t offset,
                        std::string reason)
{
    source.references.push_back({kind, std::move(path), offset, std::move(reason)});
}
} // namespace

void checkLayout(Source& source)
{
    LayoutCheck(source).run();
}
} // namespace tamor::check
