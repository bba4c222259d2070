/// \file
/// How the statements of a token list lie: where each ends, and what a control form spans. For the
/// walk along a host's list and for the lowering of all others. Not for hosts.
#pragma once

#include "script/ScriptToken.h"

#include <cstddef>
#include <span>

namespace tamor::script
{
using Tokens = std::span<const ScriptToken>;

/// The first separator or `return` from `start` on, or the list's size.
std::size_t endOfStatement(Tokens list, std::size_t start);

/// Whether there is a call among the tokens, or in what stands between parentheses of theirs.
bool holdsCall(Tokens list);

/// Whether the tokens of a statement are a control form.
bool isControlStatement(Tokens statement);

/// Where a list goes on behind an `if` that does not hold; may be past the list's end.
/// \param separator  the position behind the header
std::size_t behindFalseIf(Tokens list, std::size_t separator);

/// Where the body of a loop ends, which begins with the header's separator; past the list's end
/// where nothing closes it.
std::size_t endOfBody(Tokens list, std::size_t separator);

/// The parts of a loop's header: of a `while`, the condition alone.
struct Clauses
{
    Tokens first;
    Tokens condition;
    Tokens step;
};
Clauses clausesOf(const ScriptToken& header);
} // namespace tamor::script
