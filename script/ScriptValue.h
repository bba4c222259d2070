/// \file
/// The one value record of the script language, its conversions, its arithmetic and its text.
///
/// The folder script/ is a small, dynamically typed script language that stands alone: it knows
/// nothing but the standard library, and a host includes `script/ScriptInterpreter.h`. What a value
/// means to a scene, a widget or a file is the host's business, through built-in functions.
#pragma once

#include "TamorExport.h"

#include <bit>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace tamor
{
/// What a `ScriptValue` holds. There is no boolean: comparisons give integer 0 or 1.
enum ScriptType : std::int32_t
{
    TYPE_NULL = -1,  ///< no value
    TYPE_INT = 0,    ///< a signed 32-bit integer
    TYPE_STRING = 1, ///< bytes, in no particular encoding
    TYPE_FLOAT = 2,  ///< a single-precision float
    TYPE_ARRAY = 3   ///< values in a row, as many as were asked for
};

/// A value of the script language: a tag, and one payload that the tag selects.
///
/// A copy is deep, so two values never share an array. A payload that the tag does not select may
/// hold anything: the setters leave the other payloads as they stand.
struct TAMOR_EXPORT ScriptValue
{
    /// No value: `TYPE_NULL`.
    ScriptValue() = default;
    /// A value of `TYPE_INT`.
    ScriptValue(int initial) : type(TYPE_INT), number(initial) {}
    /// A value of `TYPE_STRING`.
    ScriptValue(const std::string& initial) : type(TYPE_STRING), text(initial) {}

    /// Makes the value a `TYPE_INT`.
    void setInt(int value)
    {
        type = TYPE_INT;
        number = value;
    }

    /// Makes the value a `TYPE_FLOAT`.
    void setFloat(float value)
    {
        type = TYPE_FLOAT;
        number = std::bit_cast<std::int32_t>(value);
    }

    /// Makes the value a `TYPE_STRING`.
    void setString(const std::string& value)
    {
        type = TYPE_STRING;
        text = value;
    }

    /// The number as a float; for a value of `TYPE_FLOAT`.
    float asFloat() const { return std::bit_cast<float>(number); }

    /// Makes the value an array, whatever it was, that holds more than `index` elements, and gives
    /// the element at `index`. New elements are `TYPE_NULL`. There is no limit but memory.
    /// \return good until the array grows
    ScriptValue& arrayElement(unsigned index);

    std::int32_t type = TYPE_NULL; ///< a `TYPE_…`
    /// The integer of a `TYPE_INT`, or the bits of the float of a `TYPE_FLOAT`.
    std::int32_t number = 0;
    std::string text;               ///< of a `TYPE_STRING`
    std::vector<ScriptValue> items; ///< of a `TYPE_ARRAY`
    /// For a later use: 0, and copied with the rest.
    std::uint32_t reserved = 0;
};

/// True for a number other than 0 (a NaN too) and for the string "true"; false for all else.
TAMOR_EXPORT bool isTrue(const ScriptValue& value);

/// True for values of the same tag and the same content. Integer 1 and float 1.0 differ; two values
/// of `TYPE_NULL` are equal; a NaN equals nothing.
TAMOR_EXPORT bool equals(const ScriptValue& a, const ScriptValue& b);

/// Compares two numbers; false for anything else. An integer beside a float counts as a float.
TAMOR_EXPORT bool greaterThan(const ScriptValue& a, const ScriptValue& b);

/// Compares two numbers as `greaterThan` does.
/// \return `TYPE_INT` 0 or 1, or `TYPE_NULL` where an operand is not a number
TAMOR_EXPORT ScriptValue lessThan(const ScriptValue& a, const ScriptValue& b);

/// The sum of two numbers, an integer for two integers, else a float; or the texts of the two, one
/// behind the other, where one is a string and the other a string, a number or `TYPE_NULL`.
/// A string and an array give the empty string, and any other pair `TYPE_NULL`.
TAMOR_EXPORT ScriptValue add(const ScriptValue& a, const ScriptValue& b);

/// The difference of two numbers, an integer for two integers, else a float; else `TYPE_NULL`.
/// Integers wrap at 32 bits, here and in `add` and `multiply`.
TAMOR_EXPORT ScriptValue subtract(const ScriptValue& a, const ScriptValue& b);

/// The product of two numbers, an integer for two integers, else a float; else `TYPE_NULL`.
TAMOR_EXPORT ScriptValue multiply(const ScriptValue& a, const ScriptValue& b);

/// The quotient of two numbers, always a float: 7 / 2 is 3.5. Else `TYPE_NULL`.
TAMOR_EXPORT ScriptValue divide(const ScriptValue& a, const ScriptValue& b);

/// The remainder of two numbers, cut to integers first, with the sign of `a`; else `TYPE_NULL`.
///
/// A divisor of 0, and the most negative integer with -1, end in the processor's arithmetic trap.
TAMOR_EXPORT ScriptValue modulo(const ScriptValue& a, const ScriptValue& b);

/// `a` to the power of `b`, in single precision: cut to an integer for two integers, else a float;
/// `TYPE_NULL` where one is not a number.
TAMOR_EXPORT ScriptValue power(const ScriptValue& a, const ScriptValue& b);

/// Writes the value as a script's user sees it, and returns the stream: "NULL", numbers as the
/// stream writes them, strings without quotes, arrays as `Array { [0]=1 [1]=2 }`.
TAMOR_EXPORT std::ostream& printValue(std::ostream& stream, const ScriptValue& value);
} // namespace tamor
