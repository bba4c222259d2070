/// \file
/// The operations on values with the result's place given, for the evaluator: no value is made or
/// destroyed on the way. `ScriptValue.h` tells what each computes. Not for hosts.
///
/// `result` may be one of the operands, and its array must be empty unless it is an array.
#pragma once

#include "script/ScriptValue.h"

namespace tamor::arithmetic
{
inline bool isNumber(const ScriptValue& value)
{
    return value.type == TYPE_INT || value.type == TYPE_FLOAT;
}

/// As `tamor::isTrue`, with the usual cases at hand.
inline bool holds(const ScriptValue& value)
{
    if (value.type == TYPE_INT)
        return value.number != 0;
    return value.type == TYPE_FLOAT ? value.asFloat() != 0.0F : isTrue(value);
}

/// A number in the widest floating type at hand, in which float results are computed.
inline long double wide(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<long double>(value.number)
                                  : static_cast<long double>(value.asFloat());
}

/// A number as a single-precision float, in which numbers are compared and powers computed.
inline float single(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<float>(value.number) : value.asFloat();
}

/// Whether a value is a float, or an integer that a float holds without loss.
inline bool isSingle(const ScriptValue& value)
{
    constexpr std::int32_t limit = 1 << 24;
    return value.type == TYPE_FLOAT ||
           (value.type == TYPE_INT && value.number >= -limit && value.number <= limit);
}

/// Computes on two integers as unsigned ones, which wrap, and on other pairs of numbers as floats.
template <typename Operation>
void combine(ScriptValue& result, const ScriptValue& a, const ScriptValue& b, Operation operation)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT) {
        const auto x = static_cast<std::uint32_t>(a.number);
        const auto y = static_cast<std::uint32_t>(b.number);
        result.setInt(static_cast<int>(operation(x, y)));
        return;
    }
    // Two floats need no wider type: 24 bits from more than twice as many are rounded as at once,
    // for sums, differences, products and quotients alike.
    if (isSingle(a) && isSingle(b)) {
        result.setFloat(operation(single(a), single(b)));
        return;
    }
    if (!isNumber(a) || !isNumber(b)) {
        result.type = TYPE_NULL;
        return;
    }
    result.setFloat(static_cast<float>(operation(wide(a), wide(b))));
}

/// The sum of which at least one operand is no number.
void addTexts(ScriptValue& result, const ScriptValue& a, const ScriptValue& b);

inline void add(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (isNumber(a) && isNumber(b))
        combine(result, a, b, [](auto x, auto y) { return x + y; });
    else
        addTexts(result, a, b);
}

inline void subtract(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    combine(result, a, b, [](auto x, auto y) { return x - y; });
}

inline void multiply(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    combine(result, a, b, [](auto x, auto y) { return x * y; });
}

inline void divide(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (isNumber(a) && isNumber(b))
        result.setFloat(static_cast<float>(wide(a) / wide(b)));
    else
        result.type = TYPE_NULL;
}

void modulo(ScriptValue& result, const ScriptValue& a, const ScriptValue& b);
void power(ScriptValue& result, const ScriptValue& a, const ScriptValue& b);

inline bool isLess(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return a.number < b.number;
    return isNumber(a) && isNumber(b) && single(a) < single(b);
}

inline void lessThan(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (isNumber(a) && isNumber(b))
        result.setInt(isLess(a, b) ? 1 : 0);
    else
        result.type = TYPE_NULL;
}

/// Appends the text of a string, a number or a `TYPE_NULL`, as a string's sum has it.
void appendText(std::string& text, const ScriptValue& value);

/// The assignment where one of the two has elements.
void assignElements(ScriptValue& to, const ScriptValue& from);

/// Makes `to` a copy of `from`, as an assignment does, but writes a payload only where the tag
/// selects it or where something must go. Either may be an element of the other.
inline void assign(ScriptValue& to, const ScriptValue& from)
{
    // Arrays are replaced whole: indexing a former array must not find its old elements.
    if (!from.items.empty() || !to.items.empty())
        return assignElements(to, from);
    to.type = from.type;
    to.number = from.number;
    to.reserved = from.reserved;
    if (from.type == TYPE_STRING)
        to.text = from.text;
    else
        to.text.clear();
}

/// Makes `to` what `from` was, without a copy. What `from` holds afterwards is of no meaning.
inline void transfer(ScriptValue& to, ScriptValue& from)
{
    to.type = from.type;
    to.number = from.number;
    to.reserved = from.reserved;
    if (from.type == TYPE_STRING)
        to.text.swap(from.text);
    else
        to.text.clear();
    to.items.swap(from.items);
}
} // namespace tamor::arithmetic
