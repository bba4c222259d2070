#include "script/ScriptValue.h"

#include "script/internal/Texts.h"

#include <cmath>
#include <csignal>
#include <limits>
#include <new>

namespace tamor
{
namespace
{
bool isNumber(const ScriptValue& value)
{
    return value.type == TYPE_INT || value.type == TYPE_FLOAT;
}

/// A number in the widest floating type at hand, in which float results are computed.
long double wide(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<long double>(value.number)
                                  : static_cast<long double>(value.asFloat());
}

/// A number as a single-precision float, in which numbers are compared and powers computed.
float single(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<float>(value.number) : value.asFloat();
}

bool isLess(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return a.number < b.number;
    return isNumber(a) && isNumber(b) && single(a) < single(b);
}

/// Computes on two integers as unsigned ones, which wrap, and on other pairs of numbers in the
/// widest type.
template <typename Operation>
ScriptValue combined(const ScriptValue& a, const ScriptValue& b, Operation operation)
{
    ScriptValue result;
    if (a.type == TYPE_INT && b.type == TYPE_INT) {
        const auto x = static_cast<std::uint32_t>(a.number);
        const auto y = static_cast<std::uint32_t>(b.number);
        result.setInt(static_cast<int>(operation(x, y)));
    } else if (isNumber(a) && isNumber(b)) {
        result.setFloat(static_cast<float>(operation(wide(a), wide(b))));
    }
    return result;
}

/// The sum of which at least one operand is no number.
ScriptValue joined(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    if (a.type != TYPE_STRING && b.type != TYPE_STRING)
        return result;
    result.type = TYPE_STRING;
    // Meant: a string and an array write nothing at all, not even the string;
    // `ScriptValueAdd.AStringAndAnArrayGiveTheEmptyString` holds it.
    if (a.type != TYPE_ARRAY && b.type != TYPE_ARRAY) {
        script::appendText(result.text, a);
        script::appendText(result.text, b);
    }
    return result;
}

/// Cuts the fraction off. What no integer can hold becomes the nearest one, and a NaN 0.
int truncated(float value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value))
        return 0;
    // 2^31 is the first float past the integers; the least integer is a float itself.
    if (value >= 2147483648.0F)
        return Limits::max();
    if (value < -2147483648.0F)
        return Limits::min();
    return static_cast<int>(value);
}

int truncated(const ScriptValue& value)
{
    return value.type == TYPE_INT ? value.number : truncated(value.asFloat());
}

// Meant: the processor's own division with no test of the divisor, whose trap ends the process;
// `ScriptValueModulo.ByZeroEndsInTheArithmeticTrap` holds it, also under the sanitisers. A processor
// that has no such trap is helped out.
__attribute__((noinline, no_sanitize("undefined"))) int remainder(int dividend, int divisor)
{
#if !defined(__x86_64__) && !defined(__i386__)
    if (divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<int>::min()))
        std::raise(SIGFPE);
#endif
    return dividend % divisor; // NOLINT(clang-analyzer-core.DivideZero)
}
} // namespace

ScriptValue& ScriptValue::arrayElement(unsigned index)
{
    type = TYPE_ARRAY;
    // Meant: no limit, so an index of -1, read as unsigned, asks for all memory there is;
    // `ScriptValueArrayElement.ANegativeIndexRunsOutOfMemory` holds it.
    if (index >= items.size()) {
        // More than there are addresses, where these have 32 bits.
        if (index >= items.max_size())
            throw std::bad_alloc();
        items.resize(std::size_t{index} + 1);
    }
    return items[index];
}

bool isTrue(const ScriptValue& value)
{
    switch (value.type) {
    case TYPE_INT:
        return value.number != 0;
    case TYPE_FLOAT:
        return value.asFloat() != 0.0F;
    case TYPE_STRING:
        return value.text == "true";
    default:
        return false;
    }
}

bool equals(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type != b.type)
        return false;
    switch (a.type) {
    case TYPE_INT:
        return a.number == b.number;
    case TYPE_FLOAT:
        return a.asFloat() == b.asFloat();
    case TYPE_STRING:
        return a.text == b.text;
    case TYPE_ARRAY:
        if (a.items.size() != b.items.size())
            return false;
        for (std::size_t i = 0; i < a.items.size(); ++i)
            if (!equals(a.items[i], b.items[i]))
                return false;
        return true;
    default:
        return true;
    }
}

bool greaterThan(const ScriptValue& a, const ScriptValue& b)
{
    return isLess(b, a);
}

// Meant: operands that are no numbers give TYPE_NULL here and false in greaterThan;
// `ScriptValueOrder.LessThanOfAnythingButNumbersIsNull` holds it.
ScriptValue lessThan(const ScriptValue& a, const ScriptValue& b)
{
    if (!isNumber(a) || !isNumber(b))
        return {};
    return isLess(a, b) ? 1 : 0;
}

ScriptValue add(const ScriptValue& a, const ScriptValue& b)
{
    if (isNumber(a) && isNumber(b))
        return combined(a, b, [](auto x, auto y) { return x + y; });
    return joined(a, b);
}

ScriptValue subtract(const ScriptValue& a, const ScriptValue& b)
{
    return combined(a, b, [](auto x, auto y) { return x - y; });
}

ScriptValue multiply(const ScriptValue& a, const ScriptValue& b)
{
    return combined(a, b, [](auto x, auto y) { return x * y; });
}

ScriptValue divide(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    if (isNumber(a) && isNumber(b))
        result.setFloat(static_cast<float>(wide(a) / wide(b)));
    return result;
}

ScriptValue modulo(const ScriptValue& a, const ScriptValue& b)
{
    if (!isNumber(a) || !isNumber(b))
        return {};
    return remainder(truncated(a), truncated(b));
}

ScriptValue power(const ScriptValue& a, const ScriptValue& b)
{
    if (!isNumber(a) || !isNumber(b))
        return {};
    const float value = std::pow(single(a), single(b));
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return truncated(value);
    ScriptValue result;
    result.setFloat(value);
    return result;
}

std::ostream& printValue(std::ostream& stream, const ScriptValue& value)
{
    switch (value.type) {
    case TYPE_NULL:
        return stream << "NULL";
    case TYPE_INT:
        return stream << value.number;
    case TYPE_STRING:
        return stream << value.text;
    case TYPE_FLOAT:
        return stream << value.asFloat();
    case TYPE_ARRAY:
        stream << "Array {";
        for (std::size_t i = 0; i < value.items.size(); ++i)
            printValue(stream << " [" << i << "]=", value.items[i]);
        return stream << " }";
    default:
        return stream;
    }
}
} // namespace tamor
