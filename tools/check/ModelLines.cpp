#include "tools/check/ModelLines.h"

#include <algorithm>

namespace tamor::check
{
namespace
{
constexpr std::size_t longestPiece = 255; // what the reader takes at once
constexpr std::string_view blanks = " \t\r\n";
} // namespace

bool ModelLines::advance()
{
    const std::string_view text = source.text();
    if (at >= text.size())
        return false;
    const std::string_view window = text.substr(at, longestPiece);
    const std::size_t newline = window.find('\n');
    const std::size_t size = newline == std::string_view::npos ? window.size() : newline + 1;
    begin = at;
    at += size;
    piece = window.substr(0, std::min(size, window.find('\0')));
    const std::size_t remark = piece.find("//");
    isSkipped = remark != std::string_view::npos || piece.starts_with('\n');
    if (isSkipped) {
        if (piece.find_first_not_of(blanks) < remark && remark != std::string_view::npos) {
            source.report("ms3d-remark", begin + remark,
                          "a remark hides all of its line: what stands in front of it is not read");
        }
        return true;
    }
    if (newline == std::string_view::npos && at < text.size()) {
        source.report("ms3d-long-line", begin,
                      "a line of more than 254 characters is cut into pieces, and each loses its "
                      "last character");
    } else if (newline == std::string_view::npos) {
        source.report("ms3d-last-line", text.size(),
                      "the last line has no line end, and loses its last character instead");
    }
    return true;
}

bool ModelLines::next()
{
    if (isGivenAgain) {
        isGivenAgain = false;
        return true;
    }
    do {
        if (!advance()) {
            if (isSkipped) {
                source.report("ms3d-endless", source.text().size(),
                              "the file ends too early, in a remark or an empty line: the program "
                              "waits for ever");
            } else {
                source.report("ms3d-short", source.text().size(),
                              "the file ends too early: its last line is read again and again");
            }
            return false;
        }
    } while (isSkipped);
    content = piece.substr(0, piece.empty() ? 0 : piece.size() - 1);
    return true;
}

void ModelLines::reportRest()
{
    while (advance()) {
        if (isSkipped || piece.find_first_not_of(blanks) == std::string_view::npos)
            continue;
        source.report("ms3d-rest", begin, "what stands behind the last bone is not read");
        return;
    }
}
} // namespace tamor::check
