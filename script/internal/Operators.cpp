#include "script/internal/Operators.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tamor::script
{
namespace
{
using Value = ScriptValue;

Value negation(const Value&, const Value& right)
{
    return isTrue(right) ? 0 : 1;
}

Value both(const Value& left, const Value& right)
{
    return isTrue(left) && isTrue(right) ? 1 : 0;
}

Value either(const Value& left, const Value& right)
{
    return isTrue(left) || isTrue(right) ? 1 : 0;
}

// Meant: "<=", ">=" and "!=" compare truth and not size, so 5 <= 3 holds;
// `ApplyOperator.ComparesTruthInThreeOfTheSixComparisons` holds it.
Value lessOrEqualTruth(const Value& left, const Value& right)
{
    return isTrue(left) <= isTrue(right) ? 1 : 0;
}

Value greaterOrEqualTruth(const Value& left, const Value& right)
{
    return isTrue(left) >= isTrue(right) ? 1 : 0;
}

Value unequalTruth(const Value& left, const Value& right)
{
    return isTrue(left) != isTrue(right) ? 1 : 0;
}

Value greater(const Value& left, const Value& right)
{
    return greaterThan(left, right) ? 1 : 0;
}

Value equal(const Value& left, const Value& right)
{
    return equals(left, right) ? 1 : 0;
}

/// In the order of `scriptOperators`, which is the order in which they are applied.
constexpr OperatorRow operators[] = {
    {OPEN_PARENTHESIS, "(", nullptr},
    {CLOSE_PARENTHESIS, ")", nullptr},
    {INCREMENT, "++", nullptr},
    {DECREMENT, "--", nullptr},
    {POWER, "^", power},
    {MULTIPLY, "*", multiply},
    {DIVIDE, "/", divide},
    {MODULO, "%", modulo},
    {ADD, "+", add},
    {SUBTRACT, "-", subtract},
    {NOT, "!", negation},
    {AND, "&&", both},
    {OR, "||", either},
    {LESS_OR_EQUAL, "<=", lessOrEqualTruth},
    {LESS, "<", lessThan},
    {GREATER_OR_EQUAL, ">=", greaterOrEqualTruth},
    {GREATER, ">", greater},
    {EQUAL, "==", equal},
    {NOT_EQUAL, "!=", unequalTruth},
    {ASSIGN, "=", nullptr},
};

/// Whether each row stands at its kind's place, with the text that the scanner looks for.
constexpr bool rowsMatchTheirKinds()
{
    std::int32_t kind = 0;
    return std::size(operators) == scriptOperatorCount &&
           std::all_of(std::begin(operators), std::end(operators), [&](const OperatorRow& row) {
               const std::string_view text = scriptOperators[kind];
               return row.kind == kind++ && row.text == text;
           });
}
static_assert(rowsMatchTheirKinds());
} // namespace

const OperatorRow& operatorRow(std::int32_t kind)
{
    return operators[kind];
}
} // namespace tamor::script
