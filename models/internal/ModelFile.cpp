#include "models/internal/ModelFile.h"

#include <algorithm>
#include <cstring>

namespace tamor
{
namespace
{
// What fgets takes into a buffer of 256 characters.
constexpr std::size_t longestPiece = 255;
} // namespace

void ModelFile::refill()
{
    std::memmove(block.data(), rest.data(), rest.size());
    const std::size_t free = block.size() - rest.size();
    const std::size_t count = std::fread(block.data() + rest.size(), 1, free, stream);
    rest = std::string_view(block.data(), rest.size() + count);
    streamEnded = count < free;
}

/// Goes on by one line with its newline, or by 255 characters of a longer line, and ends before the
/// first zero byte, if there is one. At the end of the file `piece` stays as it is.
void ModelFile::advance()
{
    if (rest.size() < longestPiece && !streamEnded)
        refill();
    if (rest.empty()) {
        ended = true;
        return;
    }
    const std::string_view window = rest.substr(0, longestPiece);
    const std::size_t newline = window.find('\n');
    const std::size_t size = newline == std::string_view::npos ? window.size() : newline + 1;
    rest.remove_prefix(size);
    piece = window.substr(0, std::min(size, window.find('\0')));
}

std::string_view ModelFile::line()
{
    do {
        advance();
        // Meant: at the end the last line stays, and if it is to be skipped, this goes on for ever,
        // as a reader with `fgets` does; `ModelFile.WaitsForEverForALineAfterALastComment` holds it.
    } while (piece.find("//") != std::string_view::npos || piece.starts_with('\n'));
    return piece.substr(0, piece.empty() ? 0 : piece.size() - 1);
}
} // namespace tamor
