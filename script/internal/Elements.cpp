#include "script/internal/Elements.h"

#include <iostream>
#include <new>

namespace tamor::script
{
ScriptValue* findElement(ScriptValue& array, unsigned index)
{
    try {
        return &array.arrayElement(index);
    } catch (const std::bad_alloc&) {
        std::cerr << "no memory for element " << index << " of an array" << std::endl;
        return nullptr;
    }
}
} // namespace tamor::script
