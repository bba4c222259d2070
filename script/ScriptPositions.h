/// \file
/// Where the tokens of a text stand in it, for tools that tell people.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tamor
{
/// Where a token begins. Lines and columns count from 1, columns in bytes; a token that was not
/// parsed with its position has 0.
struct ScriptPosition
{
    std::uint32_t line = 0;   ///< ends with a line feed
    std::uint32_t column = 0; ///< within its line
    /// Those of the token's own list.
    std::vector<ScriptPosition> args;
};

/// Positions beside tokens: each entry is that of the token at the same place.
struct ScriptPositions
{
    /// Of the list that was parsed into.
    std::vector<ScriptPosition> list;
    /// Of the bodies of functions, by their names.
    std::map<std::string, std::vector<ScriptPosition>> bodies;
};
} // namespace tamor
