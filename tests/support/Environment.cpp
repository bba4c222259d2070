#include "tests/support/Environment.h"

#include <cstdlib>

namespace tamor::test
{
void pinEnvironment()
{
    struct Variable
    {
        const char* name;
        const char* value;
    };
    static constexpr Variable variables[] = {
        // Mesa's software renderer, whatever the machine has.
        {"LIBGL_ALWAYS_SOFTWARE", "1"},
        {"GALLIUM_DRIVER", "llvmpipe"},
        // It makes code for the processor that it finds, which rounds colours by its width.
        {"LP_NATIVE_VECTOR_WIDTH", "128"},
        {"GALLIUM_OVERRIDE_CPU_CAPS", "sse4.1"},
        // It draws without threads of its own: tests run beside each other, and nobody waits for one.
        {"LP_NUM_THREADS", "0"},
        {"FREETYPE_PROPERTIES", "truetype:interpreter-version=40"},
        {"LC_ALL", "C"},
    };
    for (const Variable& variable : variables)
        setenv(variable.name, variable.value, 1);
}
} // namespace tamor::test
