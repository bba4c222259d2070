/// \file
/// The words of the language. Not for hosts.
#pragma once

#include "script/ScriptToken.h"

#include <algorithm>
#include <string_view>

namespace tamor::script
{
struct Keyword
{
    /// As it is looked for, with the space that is part of some.
    std::string_view text;
    std::int32_t kind;
};

inline constexpr Keyword returnKeyword = {"return ", TOK_RETURN};

/// The words that open a header, in the order in which they are looked for.
inline constexpr Keyword headerKeywords[] = {
    {"while", TOK_WHILE},
    {"func ", TOK_FUNC},
    {"for", TOK_FOR},
    {"if", TOK_IF},
};

/// The letters with which a keyword begins.
inline constexpr std::string_view keywordLetters = "rfwi";
static_assert(keywordLetters[0] == returnKeyword.text.front() &&
              std::all_of(std::begin(headerKeywords), std::end(headerKeywords),
                          [](const Keyword& keyword) {
                              return keywordLetters.find(keyword.text.front()) !=
                                     std::string_view::npos;
                          }));

/// The word of a control form's kind; empty for any other.
inline std::string_view textOfHeader(std::int32_t kind)
{
    for (const Keyword& keyword : headerKeywords)
        if (keyword.kind == kind)
            return keyword.text;
    return {};
}
} // namespace tamor::script
