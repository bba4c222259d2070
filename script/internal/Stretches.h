/// \file
/// Where the parentheses of a text are closed, where its commas are, and how many tokens stand between
/// them. Not for hosts.
#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace tamor::script
{
/// Remembers what it has come across, so that a text with calls within calls is walked once and not
/// once for each level.
class Stretches
{
public:
    explicit Stretches(std::string_view wholeText) : text(wholeText) {}

    /// The position of the ")" that closes the "(" at a position, or npos. Parentheses in strings
    /// count.
    std::size_t closing(std::size_t open);

    /// The position of the first comma from a position on, or npos.
    std::size_t comma(std::size_t from);

    /// About how many tokens a piece of the text gives outside of the parentheses of its calls and
    /// headers: hardly ever fewer, and never many more than it has characters outside of strings.
    std::size_t countTokens(std::string_view piece);

private:
    void scan(std::size_t open);
    std::size_t countParticular(std::string_view piece, std::size_t at, std::size_t& count);

    std::string_view text;
    /// Positions of parentheses and of what closes them, in the order of the former; all of those
    /// from the first one's position to `scannedEnd`.
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    std::size_t scannedEnd = 0;
    /// Which of them are open at `scannedEnd`.
    std::vector<std::size_t> openPairs;
    /// The first comma from `commaFrom` on.
    std::size_t commaFrom = 1;
    std::size_t commaAt = 0;
};
} // namespace tamor::script
