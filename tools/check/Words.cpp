#include "tools/check/Words.h"

#include <algorithm>
#include <numeric>

namespace tamor::check
{
namespace
{
constexpr std::size_t farthest = 2;
constexpr std::size_t longestWord = 64; // nothing that is misspelled is longer
constexpr std::size_t longestQuote = 40;

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool differsInCapitalsOnly(std::string_view a, std::string_view b)
{
    const auto same = [](char x, char y) { return lower(x) == lower(y); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}
} // namespace

std::size_t editDistance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t k = 0; k < to.size(); ++k) {
            const std::size_t replaced = diagonal + (from[i] == to[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({replaced, row[k] + 1, row[k + 1] + 1});
        }
    }
    return row.back();
}

std::string_view nearest(std::string_view word, const std::vector<std::string_view>& candidates)
{
    if (word.size() > longestWord)
        return {};
    std::string_view best;
    std::size_t least = farthest + 1;
    for (const std::string_view candidate : candidates) {
        if (candidate == word || candidate.size() > word.size() + farthest ||
            word.size() > candidate.size() + farthest)
            continue;
        const bool sameLetters = differsInCapitalsOnly(word, candidate);
        const std::size_t distance = sameLetters ? 0 : editDistance(word, candidate);
        // Of a short word two other letters leave nothing.
        if (distance < least && 2 * distance < std::max(word.size(), candidate.size())) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

std::string didYouMean(std::string_view word, const std::vector<std::string_view>& candidates)
{
    const std::string_view best = nearest(word, candidates);
    return best.empty() ? "" : "; did you mean " + inQuotes(best) + "?";
}

std::string inQuotes(std::string_view word)
{
    std::string text = "\"";
    for (const char c : word.substr(0, longestQuote))
        text += c >= ' ' && c <= '~' ? c : '?';
    return text + (word.size() > longestQuote ? "...\"" : "\"");
}
} // namespace tamor::check
