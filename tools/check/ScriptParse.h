/// \file
/// A script's tokens as the engine's parser makes them, and where they are.
#pragma once

#include "script/ScriptToken.h"
#include "tools/check/Source.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::check
{
/// One token; kinds and lists are those of the engine's `ScriptToken`.
struct PlacedToken
{
    std::int32_t kind = TOK_ARGEND;
    std::size_t begin = 0;
    std::size_t end = 0; ///< behind the name, the number or the string
    std::vector<PlacedToken> args;
};

/// A function that a script defines.
struct PlacedFunction
{
    std::size_t begin = 0; ///< of the name
    std::vector<PlacedToken> parameters;
    std::vector<PlacedToken> body;
};

/// What the parser makes of a text.
struct ParsedScript
{
    std::vector<PlacedToken> list;
    std::map<std::string, PlacedFunction> functions;
    bool isWhole = true; ///< false if the parser stops, or what it makes is not worth a look
};

/// Parses a script, and reports what gets lost on the way.
ParsedScript parseScript(Source& source);
} // namespace tamor::check
