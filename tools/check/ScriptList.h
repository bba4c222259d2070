/// \file
/// What the evaluator's steps make of a list of tokens, whatever the values are.
#pragma once

#include "tools/check/ScriptParse.h"

#include <span>

namespace tamor::check
{
/// Reports what is wrong with an expression: whether it comes to one value at all, and what is
/// probably not meant by it. Its calls' arguments are expressions too.
/// \return false if it does not come to a value
bool checkExpression(Source& source, std::span<const PlacedToken> list);

/// Reports an expression that never comes to one value, or would evaluate an operator; nothing
/// else, and nothing of the calls in it.
bool checkReduction(Source& source, std::span<const PlacedToken> list);
} // namespace tamor::check
