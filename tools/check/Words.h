/// \file
/// Words that are nearly others.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tamor::check
{
/// How many letters must be added, taken away or replaced to turn one word into the other; capitals
/// are letters of their own.
std::size_t editDistance(std::string_view from, std::string_view to);

/// The candidate that is one or two letters from the word, or differs in capitals only; of several
/// the nearest. Empty if there is none, or if the word is too short to say.
std::string_view nearest(std::string_view word, const std::vector<std::string_view>& candidates);

/// `; did you mean "<nearest>"?`, or nothing.
std::string didYouMean(std::string_view word, const std::vector<std::string_view>& candidates);

/// The word between double quotes, with what cannot be printed as "?", and cut at 40 characters.
std::string inQuotes(std::string_view word);
} // namespace tamor::check
