// What a long run holds on to, and what it leaves behind.
#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <array>
#include <string>

namespace tamor::test
{
namespace
{
/// The bytes in use at each call of the script's `measure`.
std::array<std::size_t, 2> measured;
std::size_t measuredCount = 0;

// The signature is that of a ScriptBuiltin.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
ScriptValue measure(std::string, std::int32_t, ScriptValue*)
{
    measured.at(measuredCount++) = mallinfo2().uordblks;
    return {};
}

/// Calls, strings, arrays and odd expressions: ten statements a step, with those of the function.
/// Freed pieces that the C library keeps at hand count as used; a byte a step would be 100,000.
constexpr const char* function = "func f(p, q) { r = q; p + 1; }";
constexpr const char* loop = "i = 0;"
                             "while (i < 100000) {"
                             "    i = i + 1;"
                             "    s = \"a string that is too long for its own record: \" + i % 10;"
                             "    s = s + \"x\";"
                             "    a[3] = s;"
                             "    b = a;"
                             "    x = (f(i, 0, \"another long string of the same kind\") + 1) * 2;"
                             "    !x;"
                             "    x++;"
                             "    if (i == 100) { measure(); }"
                             "}";
constexpr std::size_t tolerance = 4096;
} // namespace

TEST(Memory, AfterAMillionStatementsIsWhatItWasAfterAThousand)
{
    Script script(function);
    script.interpreter.builtins["measure"] = measure;
    measuredCount = 0;

    script.run(std::string(loop) + "measure();");

    ASSERT_EQ(measuredCount, 2U);
    EXPECT_LT(measured[1], measured[0] + tolerance);
}

TEST(Memory, IsGivenBackAtTheEndOfARun)
{
    Script script(function);
    script.interpreter.builtins["measure"] = measure;
    measuredCount = 0;
    script.run(loop);
    const std::size_t afterOne = mallinfo2().uordblks;

    for (int run = 0; run < 3; ++run) {
        measuredCount = 0;
        script.run(loop);
    }

    EXPECT_LT(mallinfo2().uordblks, afterOne + tolerance);
}
} // namespace tamor::test
