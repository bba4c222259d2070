#include "script/ScriptValue.h"

#include "script/internal/Arithmetic.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace tamor
{
ScriptValue& ScriptValue::arrayElement(unsigned index)
{
    type = TYPE_ARRAY;
    // Meant: no limit, so an index of -1, read as unsigned, asks for all memory there is;
    // `ScriptValueArrayElement.ANegativeIndexRunsOutOfMemory` holds it.
    if (index >= items.size())
        items.resize(std::size_t{index} + 1);
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
    return arithmetic::isLess(b, a);
}

// Meant: operands that are no numbers give TYPE_NULL here and false in greaterThan;
// `ScriptValueOrder.LessThanOfAnythingButNumbersIsNull` holds it.
ScriptValue lessThan(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::lessThan(result, a, b);
    return result;
}

ScriptValue add(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::add(result, a, b);
    return result;
}

ScriptValue subtract(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::subtract(result, a, b);
    return result;
}

ScriptValue multiply(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::multiply(result, a, b);
    return result;
}

ScriptValue divide(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::divide(result, a, b);
    return result;
}

ScriptValue modulo(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::modulo(result, a, b);
    return result;
}

ScriptValue power(const ScriptValue& a, const ScriptValue& b)
{
    ScriptValue result;
    arithmetic::power(result, a, b);
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

namespace arithmetic
{
namespace
{
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
// `ScriptValueModulo.ByZeroEndsInTheArithmeticTrap` holds it, also under the sanitisers.
__attribute__((noinline, no_sanitize("undefined"))) int remainder(int dividend, int divisor)
{
    return dividend % divisor; // NOLINT(clang-analyzer-core.DivideZero)
}
} // namespace

void assignElements(ScriptValue& to, const ScriptValue& from)
{
    ScriptValue copy(from);
    to = std::move(copy);
}

void modulo(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (isNumber(a) && isNumber(b))
        result.setInt(remainder(truncated(a), truncated(b)));
    else
        result.type = TYPE_NULL;
}

void power(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (!isNumber(a) || !isNumber(b)) {
        result.type = TYPE_NULL;
        return;
    }
    const float value = std::pow(single(a), single(b));
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        result.setInt(truncated(value));
    else
        result.setFloat(value);
}

void appendText(std::string& text, const ScriptValue& value)
{
    char digits[32];
    switch (value.type) {
    case TYPE_NULL:
        text += "NULL";
        break;
    case TYPE_INT:
        text.append(digits, std::to_chars(digits, digits + sizeof digits, value.number).ptr);
        break;
    case TYPE_STRING:
        text += value.text;
        break;
    case TYPE_FLOAT:
        // As a stream with its default settings writes it.
        std::snprintf(digits, sizeof digits, "%g", static_cast<double>(value.asFloat()));
        text += digits;
        break;
    default:
        break;
    }
}

void addTexts(ScriptValue& result, const ScriptValue& a, const ScriptValue& b)
{
    if (a.type != TYPE_STRING && b.type != TYPE_STRING) {
        result.type = TYPE_NULL;
        return;
    }
    std::string text;
    // Meant: a string and an array write nothing at all, not even the string;
    // `ScriptValueAdd.AStringAndAnArrayGiveTheEmptyString` holds it.
    if (a.type != TYPE_ARRAY && b.type != TYPE_ARRAY) {
        if (&result == &a && a.type == TYPE_STRING)
            text.swap(result.text);
        else
            appendText(text, a);
        appendText(text, b);
    }
    result.type = TYPE_STRING;
    result.text.swap(text);
}
} // namespace arithmetic
} // namespace tamor
