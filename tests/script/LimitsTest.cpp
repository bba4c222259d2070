// What ends a run that has limits, and what it leaves.
#include "script/ScriptInterpreter.h"

#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace tamor::test
{
namespace
{
constexpr std::uint64_t steps = 10000;
constexpr std::uint64_t bytes = 1000000;
constexpr std::uint32_t depth = 50;

TEST(ScriptLimits, AreNotThereAtFirst)
{
    Script script;
    const CapturedErrors errors;

    script.run("i = 0; while (i < 100000) { i = i + 1; }"
               "func f() { n = n + 1; if (n < 1000) { f(); } } n = 0; f();"
               "s = \"a\"; length = 0; while (length < 20) { s = s + s; length = length + 1; }");

    EXPECT_EQ(script["i"], "int 100000");
    EXPECT_EQ(script["n"], "int 1000");
    EXPECT_EQ(script.interpreter.variables["s"].text.size(), 1U << 20);
    EXPECT_EQ(script.interpreter.reachedLimit, ScriptLimit::NONE);
    EXPECT_EQ(errors.text(), "");
}

/// A script that would not end, and the limit that ends it.
struct Endless
{
    const char* name;
    const char* text;
    ScriptLimits limits;
    ScriptLimit reached;
    const char* words;

    friend void PrintTo(const Endless& row, std::ostream* stream) { *stream << row.name; }
};

class ScriptLimitsEnd : public testing::TestWithParam<Endless>
{};

TEST_P(ScriptLimitsEnd, TheRun)
{
    const CommaLocale locale;
    Script script;
    script.interpreter.limits = GetParam().limits;
    const CapturedErrors errors;

    script.run(std::string("before = 1; ") + GetParam().text + " after = 1;");

    EXPECT_EQ(script.interpreter.reachedLimit, GetParam().reached);
    EXPECT_EQ(errors.text(),
              std::string("The script ends at its limit of ") + GetParam().words + "\n");
    EXPECT_EQ(script["before"], "int 1");
    EXPECT_EQ(script["after"], "none");
}

constexpr const char* inSteps = "10000 steps";
constexpr const char* inBytes = "1000000 bytes";
constexpr const char* inDepth = "50 calls within calls";

INSTANTIATE_TEST_SUITE_P(
    Rows, ScriptLimitsEnd,
    testing::Values(
        Endless{
            "OfALoop", "while (true) { i = i + 1; }", {steps, 0, 0}, ScriptLimit::STEPS, inSteps},
        Endless{"OfAnEmptyLoop", "while (1 == 1) { }", {steps, 0, 0}, ScriptLimit::STEPS, inSteps},
        Endless{"OfAFor",
                "for (i = 0; 1 == 1; i = i + 1) { }",
                {steps, 0, 0},
                ScriptLimit::STEPS,
                inSteps},
        Endless{"OfALoopInAFunction",
                "func f() { while (true) { i = i + 1; } } f();",
                {steps, bytes, depth},
                ScriptLimit::STEPS,
                inSteps},
        Endless{"OfLoopsInLoops",
                "while (true) { i = 0; while (i < 3) { i = i + 1; } }",
                {steps, 0, 0},
                ScriptLimit::STEPS,
                inSteps},
        Endless{"OfAFunctionThatCallsItself",
                "func f() { f(); } f();",
                {0, 0, depth},
                ScriptLimit::DEPTH,
                inDepth},
        Endless{"OfAFunctionThatCallsItselfInSteps",
                "func f() { f(); } f();",
                {1000, 0, 0},
                ScriptLimit::STEPS,
                "1000 steps"},
        Endless{"OfTwoFunctionsThatCallEachOther",
                "func f(a) { g(a + 1); } func g(b) { f(b + 1); } f(1);",
                {steps, 0, depth},
                ScriptLimit::DEPTH,
                inDepth},
        Endless{
            "OfAListThatNothingReduces", "a = 1; 1 a;", {0, 0, depth}, ScriptLimit::DEPTH, inDepth},
        Endless{"OfAListThatNothingReducesInSteps",
                "a = 1; 1 a;",
                {steps, bytes, 0},
                ScriptLimit::STEPS,
                inSteps},
        Endless{"OfAListThatNothingReducesInBytes",
                "a = 1; 1 a;",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfATextThatDoubles",
                "s = \"12345678\"; while (true) { s = s + s; }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfATextThatGrows",
                "s = \"\"; while (true) { s = s + \"12345678\"; }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfATextThatDoublesByAnElement",
                "a[0] = \"12345678\"; while (true) { a[0] = a[0] + a[0]; }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfATextThatDoublesByAnUnusualPath",
                "s = \"12345678\"; while (true) { s = a[0]s + a[0]s; }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfALongArray", "a[100000] = 1;", {0, bytes, 0}, ScriptLimit::BYTES, inBytes},
        Endless{"OfAnArrayAsLongAsCanBe", "a[-1] = 1;", {0, bytes, 0}, ScriptLimit::BYTES, inBytes},
        Endless{"OfALongArrayByAnUnusualPath",
                "x = a[0]b[100000];",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfAnArrayInItself",
                "while (true) { b[0] = a; b[1] = a; a = b; }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes},
        Endless{"OfATextThatIsHandedOver",
                "func f(t) { u = t; } s = \"1234567812345678\"; while (true) { f(s); }",
                {0, bytes, 0},
                ScriptLimit::BYTES,
                inBytes}),
    [](const auto& row) { return row.param.name; });

TEST(ScriptLimits, LetARunEndThatStaysWithinThem)
{
    Script script;
    script.interpreter.limits = {steps, bytes, depth};
    const CapturedErrors errors;

    script.run("func f() { n = n + 1; if (n < 50) { f(); } } n = 0; f();"
               "i = 0; while (i < 1000) { i = i + 1; } s = \"a\"; s = s + s; a[100] = s;");

    EXPECT_EQ(script["n"], "int 50");
    EXPECT_EQ(script["i"], "int 1000");
    EXPECT_EQ(script.interpreter.variables["a"].items.size(), 101U);
    EXPECT_EQ(script.interpreter.reachedLimit, ScriptLimit::NONE);
    EXPECT_EQ(errors.text(), "");
}

TEST(ScriptLimits, CountEachRunAnew)
{
    Script script;
    script.interpreter.limits.steps = steps;
    const CapturedErrors errors;

    for (int run = 0; run < 3; ++run)
        script.run("i = 0; while (i < 1500) { i = i + 1; }");
    EXPECT_EQ(script.interpreter.reachedLimit, ScriptLimit::NONE);
    script.run("while (true) { }");
    EXPECT_EQ(script.interpreter.reachedLimit, ScriptLimit::STEPS);
    script.run("done = 1;");

    EXPECT_EQ(script.interpreter.reachedLimit, ScriptLimit::NONE);
    EXPECT_EQ(script["done"], "int 1");
}

TEST(ScriptLimits, CountTheBytesOfEachRunAnew)
{
    Script script;
    script.interpreter.limits.bytes = bytes;
    const CapturedErrors errors;

    // A text of 2^17 bytes, made of others that have as many together, is 400,000 bytes' work.
    for (int run = 0; run < 4; ++run)
        script.run("s = \"a\"; for (i = 0; i < 17; i = i + 1) { s = s + s; }");

    EXPECT_EQ(script.interpreter.variables["s"].text.size(), 1U << 17);
    EXPECT_EQ(errors.text(), "");
}

TEST(ScriptLimits, FindElementsWhereTheyAreBehindARunWithoutLimits)
{
    Script script;
    script.run("func f() { b = 5; b = a[0]; } a[0] = 1; c[0] = 2; f();");
    std::map<std::string, ScriptValue>& variables = script.interpreter.variables;
    std::swap(variables["a"].items, variables["c"].items);
    script.interpreter.limits.steps = steps;

    script.run("f();");

    EXPECT_EQ(script["b"], "int 2");
}

TEST(ScriptLimits, GiveParametersTheirValuesBack)
{
    Script script;
    script.interpreter.limits.steps = steps;
    const CapturedErrors errors;

    script.run("p = 7; func f(p) { while (true) { } } f(8);");

    EXPECT_EQ(script["p"], "int 7");
}

TEST(ScriptLimits, LeaveTheValueOfTheRunAsItWas)
{
    Script script;
    script.interpreter.limits.steps = steps;
    const CapturedErrors errors;

    script.run("a = 3; while (true) { } return 5;");

    EXPECT_EQ(described(script.value), "int 3");
}

TEST(ScriptLimits, CountWhatABuiltInRunsForTheRunAroundIt)
{
    static ScriptInterpreter* current = nullptr;
    Script script;
    current = &script.interpreter;
    script.interpreter.limits.steps = steps;
    script.interpreter.builtins["again"] = [](std::string, std::int32_t, ScriptValue*) {
        std::vector<ScriptToken> list;
        parseText(*current, list, "i = 0; while (i < 100) { i = i + 1; } runs = runs + 1;");
        runTokens(*current, list);
        return ScriptValue(1);
    };
    const CapturedErrors errors;

    script.run("runs = 0; while (true) { again(); } after = 1;");
    current = nullptr;

    EXPECT_EQ(errors.text(), "The script ends at its limit of 10000 steps\n");
    EXPECT_GT(script.interpreter.variables["runs"].number, 10);
    EXPECT_LT(script.interpreter.variables["runs"].number, 100);
    EXPECT_EQ(script["after"], "none");
}

TEST(ScriptLimits, EndATextOfTooManyCallsWithinCallsBeforeItRuns)
{
    const TemporaryDirectory directory;
    const auto nested = [](int count) {
        std::string text = "before = 1; x = ";
        for (int i = 0; i < count; ++i)
            text += "f(";
        text += "1" + std::string(static_cast<std::size_t>(count), ')') + ";";
        return text;
    };
    ScriptInterpreter interpreter;
    interpreter.limits.depth = depth;
    interpreter.builtins["f"] = [](std::string, std::int32_t, ScriptValue* values) {
        return values[0];
    };
    const CapturedErrors errors;

    interpreter.runFile(directory.write("deep.script", nested(100000)));
    EXPECT_EQ(interpreter.reachedLimit, ScriptLimit::DEPTH);
    EXPECT_EQ(interpreter.variables.count("before"), 0U);
    interpreter.runFile(directory.write("flat.script", nested(50)));
    EXPECT_EQ(interpreter.reachedLimit, ScriptLimit::NONE);
    EXPECT_EQ(interpreter.variables["x"].number, 1);

    EXPECT_EQ(errors.text(), "The script ends at its limit of 50 calls within calls\n");
}

TEST(ScriptLimits, ChangeNothingOfWhatAScriptComputes)
{
    const std::string text =
        "func add(n) { sum = sum + n; if (sum < 50) { add(sum); } sum + 1; } sum = 1; y = add(2);"
        "x = 0.5; i = 0; while (i < 200) { x = x * 3.7; if (x > 1) { x = x / 7; } i++; s = s + i; }"
        "b[3][2] = x; c = b; c[3][0] = \"t\"; d = c[3]; for (j = 0; j < 5; j = j + 1) { q = j / 3; "
        "}"
        "func last() { sum; } l = last(); func seven() { k = 5; return 7; k = 6; } v = seven();"
        "func passes() { w = 0; while (w < 3) { w = w + 1; return 9; w = 100; } } p = passes();";
    Script free(text);
    Script limitedScript;
    limitedScript.interpreter.limits = {1000000, 100000000, 1000};
    limitedScript.run(text);

    ASSERT_EQ(limitedScript.interpreter.reachedLimit, ScriptLimit::NONE);
    EXPECT_GT(free.interpreter.variables.size(), 10U);
    ASSERT_EQ(limitedScript.interpreter.variables.size(), free.interpreter.variables.size());
    for (const auto& [name, value] : free.interpreter.variables)
        EXPECT_EQ(limitedScript[name], free[name]) << name;
    EXPECT_EQ(free["l"], free["sum"]);
    EXPECT_EQ(free["v"], "int 7");
    EXPECT_EQ(free["p"], "int 9");
}
} // namespace
} // namespace tamor::test
