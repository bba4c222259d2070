#include "tools/check/Check.h"
#include "tools/check/FieldReader.h"
#include "tools/check/Formats.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tamor::check
{
namespace
{
using CheckSource = void (*)(Source& source);

const FileKindName kindNames[] = {
    {FileKind::layout, "layout", {".gui"}},
    {FileKind::theme, "theme", {".theme"}},
    {FileKind::configuration, "config", {".conf"}},
    {FileKind::script, "script", {".script"}},
    {FileKind::model, "ms3d", {".ms3d"}},
    {FileKind::tga, "tga", {".tga"}},
    {FileKind::png, "png", {".png"}},
    {FileKind::shader, "glsl", {".vert", ".frag", ".glsl"}},
};

constexpr CheckSource checks[] = {checkLayout, checkTheme, checkConfig, checkScript,
                                  checkModel,  checkTGA,   checkPNG,    checkShader};
static_assert(std::size(checks) == std::size(kindNames));

/// Whether the lines hold what their formats say.
bool holds(const std::string& text, const std::vector<LineFormat>& lines)
{
    std::istringstream stream(text);
    std::string word;
    for (const LineFormat& line : lines) {
        for (const FieldFormat& field : line.fields) {
            float number = 0.0F;
            if (field.type == FieldType::word ? !(stream >> word) : !(stream >> number))
                return false;
        }
        std::getline(stream, word);
    }
    return true;
}

/// Whether the first line that is no remark begins with a directive.
bool isLayout(const std::string& text)
{
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        std::string word;
        std::istringstream(line) >> word;
        if (word.empty() || word.starts_with("//"))
            continue;
        const std::vector<LineFormat> directives = layoutDirectives();
        return std::any_of(directives.begin(), directives.end(),
                           [&](const LineFormat& each) { return each.word == word; });
    }
    return false;
}

/// True colour with run lengths or plain, and no colour map.
bool isTGA(std::string_view bytes)
{
    return bytes.size() >= 18 && bytes[1] == 0 && (bytes[2] == 10 || bytes[2] == 2) &&
           (bytes[16] == 24 || bytes[16] == 32);
}
} // namespace

std::span<const FileKindName> fileKinds()
{
    return kindNames;
}

std::optional<FileKind> kindOfName(std::string_view name)
{
    for (const FileKindName& kind : kindNames) {
        for (const std::string_view ending : kind.endings) {
            if (name.ends_with(ending))
                return kind.kind;
        }
    }
    return std::nullopt;
}

std::optional<FileKind> kindOfContent(std::string_view content)
{
    // What decides stands at the front.
    const std::string front(content.substr(0, 65536));
    if (front.starts_with("\x89PNG"))
        return FileKind::png;
    if (isTGA(front))
        return FileKind::tga;
    if (front.find('\0') != std::string::npos)
        return std::nullopt;
    if (front.find("Frames:") != std::string::npos && front.find("Meshes:") != std::string::npos)
        return FileKind::model;
    if (isLayout(front))
        return FileKind::layout;
    if (holds(front, themeLines()))
        return FileKind::theme;
    if (holds(front, configLines()))
        return FileKind::configuration;
    if (front.find("void main") != std::string::npos)
        return FileKind::shader;
    if (front.find(';') != std::string::npos)
        return FileKind::script;
    return std::nullopt;
}

void check(Source& source, FileKind kind)
{
    checks[static_cast<std::size_t>(kind)](source);
    sortFindings(source);
}

void sortFindings(Source& source)
{
    const auto isInFront = [](const Finding& a, const Finding& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    };
    std::stable_sort(source.findings.begin(), source.findings.end(), isInFront);
}

std::vector<Finding> checkText(const std::string& name, std::string text, FileKind kind)
{
    Source source(name, std::move(text));
    check(source, kind);
    return std::move(source.findings);
}

std::optional<std::string> readWhole(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream.is_open())
        return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    // A directory opens, and cannot be read.
    if (stream.bad())
        return std::nullopt;
    return text;
}
} // namespace tamor::check
