/// \file
/// What the script parser looks at: the classes of characters, and the text between parentheses.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tamor::check
{
/// What the engine's tests say of each character.
struct CharacterClasses
{
    CharacterClasses();

    std::array<bool, 256> space = {};
    std::array<bool, 256> number = {};
    std::array<bool, 256> name = {};
};

/// The one table of them.
const CharacterClasses& classes();

/// Why the text between parentheses does not come out in the pieces that it is written in.
struct ArgumentFault
{
    std::string_view code;
    std::size_t offset;
    const char* message;
};

/// Looks at the text between the parentheses of a call or a header, from `begin` to `innerEnd`: the
/// parser counts parentheses and commas in strings, too.
/// \param text  up to where the parser looks for the closing parenthesis
std::optional<ArgumentFault> faultOfArguments(std::string_view text, std::size_t begin,
                                              std::size_t innerEnd);
} // namespace tamor::check
