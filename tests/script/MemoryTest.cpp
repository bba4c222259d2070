// What a long run leaves behind.
#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <string>

namespace tamor::test
{
namespace
{
/// Runs `steps` steps of a loop with calls, strings, arrays and odd expressions, and gives the
/// bytes that are in use afterwards.
std::size_t bytesAfter(Script& script, int steps)
{
    script.interpreter.variables["end"] = ScriptValue(steps);
    script.run("i = 0;"
               "while (i < end) {"
               "    i = i + 1;"
               "    s = \"a string that is too long for its own record: \" + i % 10;"
               "    s = s + \"x\";"
               "    a[3] = s;"
               "    b = a;"
               "    x = (f(i, 0, \"another long string of the same kind\") + 1) * 2;"
               "    !x;"
               "    x++;"
               "}");
    return mallinfo2().uordblks;
}
} // namespace

TEST(Memory, AfterAHundredThousandStepsIsWhatItWasAfterAHundred)
{
    Script script("func f(p, q) { r = q; p + 1; }");
    bytesAfter(script, 100);

    const std::size_t afterFew = bytesAfter(script, 100);
    const std::size_t afterMany = bytesAfter(script, 100000);

    // Freed pieces that the C library keeps at hand count as used; a byte a step would be 100,000.
    EXPECT_LT(afterMany, afterFew + 4096);
}
} // namespace tamor::test
