#include "tools/check/Texts.h"

#include "maths/Utilities.h"

namespace tamor::check
{
namespace
{
// What Font::print writes at most.
constexpr std::size_t longestDrawn = 255;

/// Where a conversion begins, as printf reads the text; npos if there is none.
std::size_t findConversion(std::string_view text)
{
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at)) {
        if (at + 1 >= text.size() || text[at + 1] != '%')
            return at;
        at += 2;
    }
    return std::string_view::npos;
}

bool isNotDrawn(char c)
{
    return static_cast<unsigned char>(c) > 127;
}
} // namespace

void checkText(Source& source, const Field& text, bool wasCut)
{
    const std::string_view raw = source.text().substr(text.begin, text.end - text.begin);
    if (wasCut) {
        source.report("layout-text-long", text.end,
                      "a text is cut behind 511 characters: the rest of the line is lost");
    } else if (replaceAll("\\n", "\n", text.word).size() > longestDrawn) {
        source.report("layout-text-drawn", text.begin,
                      "of a text 255 characters are drawn: the rest is not seen");
    }
    const std::size_t percent = findConversion(raw);
    if (percent != std::string_view::npos) {
        source.report("layout-percent", text.begin + percent,
                      "a % in a text is read as printf reads it: write %% for a per cent sign");
    }
    const std::size_t comment = raw.find(" //");
    if (comment != std::string_view::npos) {
        source.report("layout-comment-in-text", text.begin + comment + 1,
                      "a text takes all of its line: this is no remark, but shown");
    }
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (!isNotDrawn(raw[i]))
            continue;
        source.report("layout-not-ascii", text.begin + i,
                      "the font has the 128 letters of ASCII: this one is not drawn");
        break;
    }
}
} // namespace tamor::check
