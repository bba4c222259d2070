/// \file
/// The lines of a model file, read fast.
#pragma once

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
} // namespace tamor
