/// \file
/// Files that are wrong in some way, made from right ones, and a limit of time for whoever reads
/// them.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::test
{
/// Makes one to three changes to a text: a letter, a word or a line goes, comes, changes or moves,
/// or the end is cut off.
/// \param words  what may come in as a word
std::string mutate(std::string text, std::uint32_t seed, const std::vector<std::string>& words);

/// Changes, adds or removes one to three bytes, or cuts the end off.
std::string mutateBytes(std::string bytes, std::uint32_t seed);

/// While it lives, a reader that takes more than five seconds, or crashes, ends the process after
/// writing `what` to the standard output.
class ReaderLimit
{
public:
    explicit ReaderLimit(const std::string& what);
    ~ReaderLimit();
    ReaderLimit(const ReaderLimit&) = delete;
    ReaderLimit& operator=(const ReaderLimit&) = delete;
};
} // namespace tamor::test
