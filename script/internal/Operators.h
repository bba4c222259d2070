/// \file
/// The operators: one row each, with all that the rest of the language asks of one. Not for hosts.
#pragma once

#include "script/ScriptToken.h"

#include <cstdint>

namespace tamor::script
{
/// The rows of `operators` by name; the number is the kind of the operator's token.
enum OperatorKind : std::int32_t
{
    OPEN_PARENTHESIS,
    CLOSE_PARENTHESIS,
    INCREMENT,
    DECREMENT,
    POWER,
    MULTIPLY,
    DIVIDE,
    MODULO,
    ADD,
    SUBTRACT,
    NOT,
    AND,
    OR,
    LESS_OR_EQUAL,
    LESS,
    GREATER_OR_EQUAL,
    GREATER,
    EQUAL,
    NOT_EQUAL,
    ASSIGN
};

/// What an operator computes from two values; a missing operand is a `TYPE_NULL`.
using OperatorFunction = ScriptValue (*)(const ScriptValue& left, const ScriptValue& right);

/// One operator. Its text is its row of `scriptOperators`.
struct OperatorRow
{
    OperatorKind kind;
    const char* text;
    /// What it computes, where it writes to none of its operands; else null.
    OperatorFunction compute;
};

/// The row of a token's kind, which must be the kind of an operator.
const OperatorRow& operatorRow(std::int32_t kind);

/// The operators with operands: all but the parentheses.
inline bool isApplied(std::int32_t kind)
{
    return kind >= INCREMENT && kind < scriptOperatorCount;
}
} // namespace tamor::script
