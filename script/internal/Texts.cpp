#include "script/internal/Texts.h"

#include <charconv>
#include <cmath>

namespace tamor::script
{
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
    case TYPE_FLOAT: {
        // As a stream with its default settings writes it: six significant digits. Not every standard
        // library writes what is no number in the same words.
        constexpr int digitCount = 6;
        const float number = value.asFloat();
        if (std::isnan(number)) {
            text += std::signbit(number) ? "-nan" : "nan";
            break;
        }
        const auto end = std::to_chars(digits, digits + sizeof digits, number,
                                       std::chars_format::general, digitCount);
        text.append(digits, end.ptr);
        break;
    }
    default:
        break;
    }
}
} // namespace tamor::script
