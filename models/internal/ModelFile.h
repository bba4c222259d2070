/// \file
/// The lines of a model file, read fast.
#pragma once

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace tamor
{
/// A model file that is being read. Its lines are those of `readModelLine`, an eighth of the time
/// each.
class ModelFile
{
public:
    /// What fgets takes into a buffer of 256 characters.
    static constexpr std::size_t longestPiece = 255;

    /// \param newStream  open for reading; the caller closes it
    explicit ModelFile(std::FILE* newStream) : stream(newStream) {}
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;

    /// The next line that counts, as of `readModelLine`. Good until the next call.
    std::string_view line();

    /// Whether the last line was given again, as all further ones will be.
    bool hasEnded() const { return ended; }

private:
    void advance();
    void refill();

    std::FILE* stream;
    std::array<char, 65536> block;
    /// What is in the block and was not in a piece yet.
    std::string_view rest = std::string_view(block.data(), 0);
    /// The line, or the part of a long one, that was read last.
    std::string_view piece;
    bool streamEnded = false;
    bool ended = false;
};

// Inline, since models have a line for each vertex.

/// Goes on by one line with its newline, or by 255 characters of a longer line, and ends before the
/// first zero byte, if there is one. At the end of the file `piece` stays as it is.
inline void ModelFile::advance()
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

inline std::string_view ModelFile::line()
{
    do {
        advance();
        // Meant: at the end the last line stays, and if it is to be skipped, this goes on for ever,
        // as a reader with `fgets` does; `ModelFile.WaitsForEverForALineAfterALastComment` holds it.
    } while (piece.find("//") != std::string_view::npos || piece.starts_with('\n'));
    return piece.substr(0, piece.empty() ? 0 : piece.size() - 1);
}
} // namespace tamor
