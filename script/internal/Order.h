/// \file
/// The order in which an expression is evaluated, for the evaluator. Not for hosts.
#pragma once

#include "script/ScriptToken.h"

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tamor
{
// The rows of scriptOperators that have a name.
inline constexpr std::int32_t openParenthesis = 0;
inline constexpr std::int32_t closeParenthesis = 1;
inline constexpr std::int32_t increment = 2;
inline constexpr std::int32_t decrement = 3;
inline constexpr std::int32_t multiplication = 5;
inline constexpr std::int32_t addition = 8;
inline constexpr std::int32_t lessThanOperator = 14;
inline constexpr std::int32_t assignment = 19;

/// The operators with operands: all but the parentheses.
inline bool isApplied(std::int32_t kind)
{
    return kind >= increment && kind <= assignment;
}

/// The order in which the operators of a list are applied. It depends on the kinds of the tokens
/// alone, so it is worked out when a list is first evaluated and kept for the run.
struct ScriptOrder
{
    /// The place of an operand that is missing.
    static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

    /// A group in parentheses: the position of the opening one, and the length between the two.
    struct Group
    {
        std::uint32_t open;
        std::uint32_t length;
    };

    /// An operator and its operands, by their positions; an operand that is an operator or a
    /// parenthesis stands for its result.
    struct Step
    {
        std::uint32_t position;
        std::uint32_t left;
        std::uint32_t right;
        std::int32_t kind;
        /// Whether it is the sum in a list like `s = s + x`.
        bool isAppending;
        bool isLast;
    };

    std::size_t length = 0; ///< of the list
    std::vector<Group> groups;
    std::vector<Step> steps;
    /// The operator whose result is the list's value; nowhere in a list of an unusual shape.
    std::uint32_t result = nowhere;
    /// What is left behind the last step.
    std::vector<std::uint32_t> rest;
    /// Whether the steps end at an operator beside another one, or with no operand at all. Such a
    /// list means nothing and has no value.
    bool isBroken = false;
};

/// Works out the order of a list: groups first, then a sweep for each row of the operators.
ScriptOrder ordered(std::span<const ScriptToken> list);
} // namespace tamor
