#include "script/internal/Stretches.h"

#include "script/internal/Keywords.h"
#include "script/internal/Scanner.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tamor::script
{
namespace
{
/// What a character means to the number of tokens: 0 where it gives none. Two neighbours that share
/// one of the joining bits are of one token: a name, a path with its indices, a number, "<=", "&&".
enum CountClass : unsigned char
{
    OF_NAME = 1,
    OF_NUMBER = 2,
    OF_COMPARISON = 4,
    OF_AND = 8,
    OF_OR = 16,
    OF_PLUS = 32,
    JOINING = 63,
    SINGLE = 64,
    PARTICULAR = 128 ///< begins a string or a stretch, or is a brace
};

constexpr std::array<unsigned char, 256> countClasses = [] {
    std::array<unsigned char, 256> classes{};
    const auto set = [&](std::string_view characters, int bits) {
        for (const char c : characters)
            classes[static_cast<unsigned char>(c)] = static_cast<unsigned char>(bits);
    };
    for (std::size_t c = 0; c < classes.size(); ++c) {
        const unsigned of = characterClass(static_cast<char>(c));
        classes[c] = static_cast<unsigned char>(((of & NAME_CHARACTER) != 0 ? OF_NAME : 0) |
                                                ((of & NUMBER_CHARACTER) != 0 ? OF_NUMBER : 0));
    }
    set("[]", OF_NAME | OF_NUMBER);
    set("<>=", OF_COMPARISON);
    set("&", OF_AND);
    set("|", OF_OR);
    set("+", OF_PLUS);
    set("^*/%!);,", SINGLE);
    set("(\"{}", PARTICULAR);
    return classes;
}();

unsigned countClass(char character)
{
    return countClasses[static_cast<unsigned char>(character)];
}

/// A text without the space at its end.
std::string_view withoutSpace(std::string_view text)
{
    while (!text.empty() && (characterClass(text.back()) & SPACE_CHARACTER) != 0)
        text.remove_suffix(1);
    return text;
}

bool endsInWord(std::string_view text)
{
    return !text.empty() && (countClass(text.back()) & (OF_NAME | OF_NUMBER)) != 0;
}

/// Whether a text ends in the word of a header, which has a separator behind it.
bool endsInHeader(std::string_view text)
{
    return std::any_of(std::begin(headerKeywords), std::end(headerKeywords),
                       [&](const Keyword& keyword) { return text.ends_with(keyword.text); });
}
} // namespace

std::size_t Stretches::closing(std::size_t open)
{
    if (pairs.empty() || open < pairs.front().first || open >= scannedEnd)
        scan(open);
    return std::lower_bound(pairs.begin(), pairs.end(), std::pair{open, std::size_t{0}})->second;
}

/// Walks from a "(" to the ")" that closes it, or to the end of the text.
void Stretches::scan(std::size_t open)
{
    pairs.clear();
    openPairs.clear();
    const std::string_view all = text;
    std::size_t at = open;
    for (; at < all.size(); ++at) {
        if (all[at] == '(') {
            openPairs.push_back(pairs.size());
            pairs.emplace_back(at, std::string_view::npos);
        } else if (all[at] == ')') {
            pairs[openPairs.back()].second = at;
            openPairs.pop_back();
            if (openPairs.empty())
                break;
        }
    }
    scannedEnd = at + 1;
}

std::size_t Stretches::comma(std::size_t from)
{
    if (from < commaFrom || from > commaAt) {
        commaFrom = from;
        commaAt = text.find(',', from);
    }
    return commaAt;
}

std::size_t Stretches::countTokens(std::string_view piece)
{
    std::size_t count = 0;
    for (std::size_t at = 0; at < piece.size();) {
        unsigned last = countClass(piece[at]);
        if ((last & PARTICULAR) != 0) {
            at = countParticular(piece, at, count);
            continue;
        }
        ++at;
        if (last == 0)
            continue;
        ++count;
        for (; at < piece.size() && (last & countClass(piece[at]) & JOINING) != 0; ++at)
            last = countClass(piece[at]);
    }
    return count;
}

/// Counts a string, a brace, a group's parenthesis, or what a whole stretch gives beside its list.
/// \return where the piece goes on
std::size_t Stretches::countParticular(std::string_view piece, std::size_t at, std::size_t& count)
{
    if (piece[at] == '"') {
        ++count;
        for (++at; at < piece.size() && piece[at] != '"'; ++at)
            at += piece[at] == '\'' ? 1 : 0;
        return at + 1;
    }
    if (piece[at] != '(') {
        // A brace has a separator behind it.
        count += 2;
        return at + 1;
    }
    const std::string_view word = withoutSpace(piece.substr(0, at));
    const bool isStretch = endsInWord(word);
    count += !isStretch || endsInHeader(word) ? 1 : 0;
    if (!isStretch)
        return at + 1;
    const auto offset = static_cast<std::size_t>(piece.data() - text.data());
    return std::min(closing(offset + at) - offset, piece.size()) + 1;
}
} // namespace tamor::script
