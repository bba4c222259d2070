#include "tests/gui/LayoutWalk.h"

#include "gui/FileFields.h"
#include "gui/LineFormat.h"
#include "gui/WidgetKinds.h"

#include <algorithm>
#include <locale>
#include <map>
#include <span>
#include <sstream>

namespace tamor::test
{
namespace
{
/// The fields of one line, by their names.
using Fields = std::map<std::string_view, std::string>;

template <class Number>
std::string readAs(std::istream& stream)
{
    Number number{};
    readField(stream, number);
    return std::to_string(number);
}

std::string readOne(std::istream& stream, FieldType type)
{
    switch (type) {
    case FieldType::integer:
        return readAs<std::int32_t>(stream);
    case FieldType::number:
        return readAs<float>(stream);
    case FieldType::flag:
        return readAs<bool>(stream);
    case FieldType::text:
        return readText(stream);
    case FieldType::word:
        break;
    }
    std::string word;
    stream >> word;
    return word;
}

void readFields(std::istream& stream, std::span<const FieldFormat> formats, Fields& fields)
{
    for (const FieldFormat& format : formats) {
        fields[format.name] = readOne(stream, format.type);
        // No line is read for a widget that is none.
        if (format.name == "widget" && formats.size() == 2 && fields["widget"] == "NULL")
            return;
    }
}

void readKind(std::istream& stream, const Fields& fields, LayoutWalk& walk)
{
    for (const WidgetKind& kind : widgetKinds()) {
        if (kind.word != fields.at("kind"))
            continue;
        walk.containers += kind.isDeferred ? 1 : 0;
        Fields own;
        readFields(stream, kind.fields, own);
        if (kind.word == "Butt" && own["caption"] == "TEX") {
            readAs<float>(stream);
            readAs<float>(stream);
        }
    }
}
} // namespace

bool LayoutWalk::isModest() const
{
    constexpr std::int32_t mostTabs = 40;
    constexpr int mostContainersTwice = 6;
    return largestTab <= mostTabs &&
           (solids < 2 || (solids < 4 && containers <= mostContainersTwice));
}

LayoutWalk walkLayout(const std::string& text)
{
    LayoutWalk walk;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    const std::vector<LineFormat> directives = layoutDirectives();
    while (!stream.eof()) {
        if (stream.fail()) {
            walk.ends = false;
            return walk;
        }
        std::string word;
        stream >> word;
        const auto directive =
            std::find_if(directives.begin(), directives.end(),
                         [&](const LineFormat& line) { return line.word == word; });
        if (directive != directives.end()) {
            Fields fields;
            readFields(stream, directive->fields, fields);
            if (fields.contains("kind"))
                readKind(stream, fields, walk);
            if (fields.contains("tab"))
                walk.largestTab = std::max(walk.largestTab, std::stoi(fields["tab"]));
            walk.leavesFolder = walk.leavesFolder || fields["file"].find('/') != std::string::npos;
            walk.solids += word == "SOLID" ? 1 : 0;
        }
        skipLine(stream);
    }
    return walk;
}
} // namespace tamor::test
