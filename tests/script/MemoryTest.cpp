// What a long run holds on to, and what it leaves behind.
#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <array>
#include <string>
#include <vector>

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

namespace
{
/// The bytes that the tokens of a text take, in and out of lists that there are already.
std::size_t memoryOfTokens(const std::string& text, std::vector<ScriptToken>& list)
{
    ScriptInterpreter interpreter;
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    parseText(interpreter, list, text);
    return mallinfo2().uordblks + mallinfo2().hblkhd - before;
}

std::string repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}
} // namespace

TEST(Memory, OfALongStringIsTwiceItsLengthAtMost)
{
    std::vector<ScriptToken> list;

    EXPECT_LT(memoryOfTokens("x = 1; s = \"" + repeated("a", 10000000) + "\";", list), 20100000U);
}

TEST(Memory, OfNestedCallsIsInProportionToThem)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "under the sanitiser a level takes ten times the stack, which ends before";
#endif
    std::vector<ScriptToken> list;

    const std::size_t bytes =
        memoryOfTokens(repeated("f(", 3000) + "1" + repeated(")", 3000) + ";", list);

    // A call, and the end of its arguments.
    EXPECT_LT(bytes, 3000 * 3 * sizeof(ScriptToken));
}

TEST(Memory, OfNestedGroupsIsInProportionToThem)
{
    std::vector<ScriptToken> list;

    const std::size_t bytes =
        memoryOfTokens(repeated("(", 100000) + "1" + repeated(")", 100000) + ";", list);

    EXPECT_LT(bytes, 200002 * 2 * sizeof(ScriptToken));
}

TEST(Memory, OfListsIsWhatTheirTokensTake)
{
    const std::string text =
        "sum = a[0][12] + 2 * (b - -1.5);\n"
        "if (sum <= limit && x++) { print(\"a (string) that it''s '\"so'\" = 1\", f(1) == g); }\n"
        "for (i = 0; i < 3; i = i + 1) { h( ); }\n";
    std::vector<ScriptToken> list;

    memoryOfTokens(repeated(text, 100), list);

    const std::size_t tokens = 28;
    ASSERT_EQ(list.size(), tokens * 100);
    EXPECT_EQ(list.capacity(), list.size());
    for (const std::size_t at : {12U, 16U, 20U, 24U})
        EXPECT_EQ(list[at].args.capacity(), list[at].args.size()) << at;
}

TEST(Memory, OfAListThatIsParsedIntoAgainGrowsAsTheListDoes)
{
    std::vector<ScriptToken> list;
    memoryOfTokens(repeated("x = 1; ", 5000), list);
    ASSERT_EQ(list.size(), 20000U);

    EXPECT_LT(memoryOfTokens("f(1); y = 2;" + std::string(100000, ' '), list),
              20000 * 2 * sizeof(ScriptToken));
}

TEST(Memory, OfAListOfManyTextsGrowsInFewSteps)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    std::size_t capacity = 0;
    int steps = 0;

    for (int i = 0; i < 2000; ++i) {
        parseText(interpreter, list, "x = 1;");
        steps += list.capacity() != capacity ? 1 : 0;
        capacity = list.capacity();
    }

    EXPECT_EQ(list.size(), 8000U);
    EXPECT_LT(steps, 20);
}

TEST(Memory, OfAValueInNestedGroupsIsInProportionToThem)
{
    Script script;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list,
              "x = " + repeated("(", 16000) + "7" + repeated(")", 16000) + ";");
    const std::size_t before = mallinfo2().uordblks;

    runTokens(script.interpreter, list);

    EXPECT_EQ(script["x"], "int 7");
    EXPECT_LT(mallinfo2().uordblks - before, 16000U * 300);
}

TEST(Memory, StaysWhereItIsInRunsWithinRuns)
{
    Script script("func f(p) { q = p; r = q + 1; s = r; }");
    static ScriptInterpreter* interpreter = nullptr;
    static std::vector<ScriptToken> list;
    interpreter = &script.interpreter;
    list.clear();
    parseText(script.interpreter, list, "f(1);");
    script.interpreter.builtins["run"] = [](std::string, std::int32_t, ScriptValue*) {
        return runTokens(*interpreter, list);
    };
    script.interpreter.builtins["measure"] = measure;
    measuredCount = 0;

    script.run(
        "for (i = 0; i < 20000; i = i + 1) { run(); if (i == 100) { measure(); } } measure();");

    ASSERT_EQ(measuredCount, 2U);
    EXPECT_LT(measured[1], measured[0] + tolerance);
    interpreter = nullptr;
}
} // namespace tamor::test
