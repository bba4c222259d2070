/// \file
/// Plain values, which the fast instructions work on: a tag and a number, and nothing left over
/// from an earlier value. Not for hosts.
#pragma once

#include "script/ScriptValue.h"

#include <cstdint>

namespace tamor::script
{
/// Whether tags, joined by "or", are those of integers and floats: the two without other bits.
inline bool areNumbers(std::int32_t types)
{
    constexpr std::int32_t numberBits = TYPE_INT | TYPE_FLOAT;
    static_assert((TYPE_NULL & ~numberBits) != 0 && (TYPE_STRING & ~numberBits) != 0 &&
                  (TYPE_ARRAY & ~numberBits) != 0);
    return (types & ~numberBits) == 0;
}

/// Whether a tag is that of a value without text and elements.
inline bool isSimple(std::int32_t type)
{
    return areNumbers(type) || type == TYPE_NULL;
}

/// Whether a value that is simple has nothing left over; true for any other value, which the fast
/// instructions tell by its tag.
inline bool isPlain(const ScriptValue& value)
{
    return !isSimple(value.type) ||
           (value.reserved == 0 && value.items.empty() && value.text.empty());
}

/// Makes one plain value a copy of another.
inline void copyPlain(ScriptValue& to, const ScriptValue& from)
{
    to.type = from.type;
    to.number = from.number;
}

inline bool isTrueNumber(const ScriptValue& number)
{
    return number.type == TYPE_INT ? number.number != 0 : number.asFloat() != 0.0F;
}

/// Lets a plain number be the value of a list, if it is true.
inline void keepNumber(ScriptValue& list, const ScriptValue& number)
{
    if (!isTrueNumber(number))
        return;
    copyPlain(list, number);
    list.reserved = 0;
}
} // namespace tamor::script
