#include "tools/script/HostFunctions.h"

#include <cmath>

namespace tamor::scripts
{
namespace
{
// A built-in receives copies of the arguments, whatever their number and types, and looks at both
// before it uses them. For what makes no sense it gives TYPE_NULL, as the language itself does.

ScriptValue squareRoot(std::string, std::int32_t count, ScriptValue* values)
{
    ScriptValue result;
    if (count == 1 && values[0].type == TYPE_INT)
        result.setFloat(std::sqrt(static_cast<float>(values[0].number)));
    else if (count == 1 && values[0].type == TYPE_FLOAT)
        result.setFloat(std::sqrt(values[0].asFloat()));
    return result;
}

ScriptValue length(std::string, std::int32_t count, ScriptValue* values)
{
    if (count == 1 && values[0].type == TYPE_ARRAY)
        return {static_cast<int>(values[0].items.size())};
    if (count == 1 && values[0].type == TYPE_STRING)
        return {static_cast<int>(values[0].text.size())};
    return {};
}

ScriptValue item(std::string, std::int32_t count, ScriptValue* values)
{
    if (count != 2 || values[0].type != TYPE_ARRAY || values[1].type != TYPE_INT)
        return {};
    const auto index = static_cast<std::size_t>(values[1].number);
    return index < values[0].items.size() ? values[0].items[index] : ScriptValue();
}
} // namespace

void addHostFunctions(ScriptInterpreter& interpreter)
{
    interpreter.builtins["sqrt"] = squareRoot;
    interpreter.builtins["length"] = length;
    interpreter.builtins["item"] = item;
}
} // namespace tamor::scripts
