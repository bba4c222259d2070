#include "script/internal/Elements.h"

#include "script/internal/Machine.h"

#include <iostream>
#include <new>

namespace tamor::script
{
ScriptValue* findElement(ScriptInterpreter& interpreter, ScriptValue& array, unsigned index)
{
    if (index >= array.items.size() && !machineOf(interpreter).mayGrow(array, index))
        return nullptr;
    try {
        return &array.arrayElement(index);
    } catch (const std::bad_alloc&) {
        std::cerr << "no memory for element " << index << " of an array" << std::endl;
        return nullptr;
    }
}
} // namespace tamor::script
