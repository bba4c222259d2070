#include "script/Evaluator.h"

#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
ScriptInterpreter* hostsInterpreter = nullptr;

/// What a host's built-in saw when it was called last.
struct SeenCall
{
    std::string name;
    std::vector<std::string> values;
};
SeenCall seen;

ScriptValue watch(std::string name, std::int32_t count, ScriptValue* values)
{
    seen = {std::move(name), {}};
    for (std::int32_t i = 0; i < count; ++i)
        seen.values.push_back(described(values[i]));
    return {count};
}

ScriptValue scribble(std::string, std::int32_t count, ScriptValue* values)
{
    for (std::int32_t i = 0; i < count; ++i)
        values[i] = ScriptValue(99);
    return {};
}

ScriptValue redefine(std::string, std::int32_t, ScriptValue*)
{
    std::vector<ScriptToken> list;
    for (int i = 0; i < 50; ++i)
        parseText(*hostsInterpreter, list, "func f(p) { added = 1; }");
    return {};
}

ScriptValue changeX(std::string, std::int32_t, ScriptValue*)
{
    hostsInterpreter->variables["x"] = ScriptValue(100);
    return {5};
}

void recurseWithoutEnd(const std::string& expression)
{
    const ProcessEnd end = ChildProcess([&] {
                               signal(SIGSEGV, SIG_DFL);
                               evaluated(expression);
                               return 0;
                           }).wait();
#if defined(__SANITIZE_ADDRESS__)
    EXPECT_NE(end.status, 0) << expression;
#else
    EXPECT_EQ(end.signal, SIGSEGV) << expression;
#endif
    EXPECT_FALSE(end.timedOut) << expression;
}

ScriptToken tokenOf(std::int32_t kind, const std::string& name = "")
{
    return {kind, {}, name};
}

ScriptToken literal(const ScriptValue& value)
{
    return {value.type == TYPE_STRING ? TOK_STRING : TOK_NUMBER, value, ""};
}
} // namespace

TEST(EvaluateTokens, GivesTheseValues)
{
    struct Row
    {
        const char* expression;
        const char* expected;
    };
    const Row rows[] = {
        {"", "null"},
        {"5", "int 5"},
        {"\"a\"", "string a"},
        {"unknown", "null"},
        {"pi", "float 3.14159274"},
        {"true", "int 1"},
        {"false", "int 0"},
        {"1 + 2 * 3", "int 7"},
        {"(1 + 2) * 3", "int 9"},
        {"2 * (1 + (2 + 3) * 2)", "int 22"},
        {"8 / 4 / 2", "float 4"},
        {"10 / 5 / 2", "float 4"},
        {"2 + 3 == 5", "int 1"},
        {"2 ^ 3 * 2", "int 16"},
        {"2 ^ 3 ^ 2", "int 512"},
        {"2 * 6 / 3", "float 4"},
        {"6 / 3 * 2", "float 1"},
        {"12 / 2 % 4", "int 2"},
        {"9 % 5 % 3", "int 1"},
        {"7 / 2", "float 3.5"},
        {"\"n=\" + 3", "string n=3"},
        {"1 + \"a\"", "string 1a"},
        {".5 + \"a\"", "string 0.5a"},
        {"\"a\" + nobody", "string aNULL"},
        {"\"a\" + \"b\" + \"c\" + 1 + 2", "string abc3"},
        {"nobody + 1", "null"},
        {"5 <= 3", "int 1"},
        {"0 >= 3", "int 0"},
        {"0 <= 3", "int 1"},
        {"3 < 5", "int 1"},
        {"5 < 3", "int 0"},
        {"5 > 3", "int 1"},
        {"3 > 5", "int 0"},
        {"1 < 2 < 3", "int 0"},
        {"3 > 2 > 1", "int 1"},
        {"1 == 1.0", "int 1"},
        {"1 == .5 + .5", "int 0"},
        {"\"a\" == \"a\"", "int 1"},
        {"nobody == noone", "int 1"},
        {"1 && 0", "int 0"},
        {"1 || 0", "int 1"},
        {"0 || 0", "int 0"},
        {"1 && 0 || 1", "int 1"},
        {"\"true\" && 1", "int 1"},
        {"\"yes\" || 0", "int 0"},
        {"5 < 1 && 1 < 2", "int 0"},
        {"0 < 1 && 0 < 2", "int 1"},
        {"\"a\" < 1", "null"},
        {"\"a\" > 1", "int 0"},
        {"((((3))))", "int 3"},
        {"()", "null"},
        {"() + \"a\"", "string NULLa"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(evaluated(row.expression), row.expected) << row.expression;
}

TEST(EvaluateTokens, GroupsOperatorsOfOneRowFromTheRight)
{
    EXPECT_EQ(evaluated("8 / 4 / 2"), "float 4");
    EXPECT_EQ(evaluated("2 ^ 2 ^ 3"), "int 256");
}

TEST(EvaluateTokens, BindsAndTighterThanComparisons)
{
    // a < (1 && b) < 2, from the right: (1 && b) < 2 is 1, and 1 < 1 is 0.
    Script script("a = 1; b = 1;");
    EXPECT_EQ(script.evaluated("a < 1 && b < 2"), "int 0");
    script.run("a = 0;");
    EXPECT_EQ(script.evaluated("a < 1 && b < 2"), "int 1");
}

TEST(EvaluateTokens, AssignsFromTheRight)
{
    Script script;

    EXPECT_EQ(script.evaluated("a = b = 3"), "int 3");

    EXPECT_EQ(script["a"], "int 3");
    EXPECT_EQ(script["b"], "int 3");
}

TEST(EvaluateTokens, CreatesAVariableByReadingIt)
{
    Script script("x = 1;");

    EXPECT_EQ(script.evaluated("x = y"), "null");

    EXPECT_EQ(script["x"], "null");
    EXPECT_EQ(script["y"], "null");
}

TEST(EvaluateTokens, ComputesWithAnIntegerThatNoFloatHoldsInALoop)
{
    // 16777217 is 16777216 as a float; from the second pass on all three are plain numbers.
    const Script script("odd = 16777216 + 1; even = -0.5 * 33554432; i = 0; rest = 0;"
                        "while (i < 3) { rest = odd + even; i++; }");

    EXPECT_EQ(script["even"], "float -16777216");
    EXPECT_EQ(script["rest"], "float 1");
}

TEST(EvaluateTokens, CreatesAVariableThatIsTheStepOfALoop)
{
    const Script script("for (i = 0; i < 1; unused) { i = i + 1; }");

    EXPECT_EQ(script.interpreter.variables.count("unused"), 1U);
}

TEST(EvaluateTokens, CreatesAnElementByReadingIt)
{
    Script script;

    EXPECT_EQ(script.evaluated("a[2]"), "null");

    EXPECT_EQ(script["a"], "[null, null, null]");
}

TEST(EvaluateTokens, WritesToElements)
{
    Script script("a[1] = 5; a[1] = a[1] + 2; b[0][1] = \"x\"; b[0][1] = b[0][1] + a[1];");

    EXPECT_EQ(script["a"], "[null, int 7]");
    EXPECT_EQ(script["b"], "[[null, string x7]]");
}

TEST(EvaluateTokens, CopiesArraysDeeply)
{
    Script script("a[0] = 1; b = a; a[0] = 2;");

    EXPECT_EQ(script["a"], "[int 2]");
    EXPECT_EQ(script["b"], "[int 1]");
}

TEST(EvaluateTokens, FindsNoOldElementsInAFormerArray)
{
    Script script("a[1] = 7; a = 0; b = a[1]; c[1] = 7; c = (c) + 1; d = c[1];");

    EXPECT_EQ(script["a"], "[null, null]");
    EXPECT_EQ(script["b"], "null");
    EXPECT_EQ(script["d"], "null");
}

TEST(EvaluateTokens, GivesTheSameWhenAListIsEvaluatedAgain)
{
    // From the second pass on all variables have been found.
    Script script("t = \"t\"; s = \"s\";"
                  "for (i = 0; i < 3; i++) {"
                  "    s = t + \"x\"; u = t + s; t = t; e = i == 2; n = i * .5;"
                  "    a[1] = 7; b = a; a = i + 1; c = a[1];"
                  "    f = b + \"x\"; g = \"x\" + i; h = u; h = h + h; m = \"x\"; m = i + m;"
                  "}");

    EXPECT_EQ(script["s"], "string tx");
    EXPECT_EQ(script["u"], "string ttx");
    EXPECT_EQ(script["t"], "string t");
    EXPECT_EQ(script["e"], "int 1");
    EXPECT_EQ(script["n"], "float 1");
    EXPECT_EQ(script["b"], "[null, int 7]");
    EXPECT_EQ(script["a"], "[null, null]") << "by the look at its element";
    EXPECT_EQ(script["c"], "null");
    EXPECT_EQ(script["f"], "string ");
    EXPECT_EQ(script["g"], "string x2");
    EXPECT_EQ(script["h"], "string ttxttx");
    EXPECT_EQ(script["m"], "string 2x");
}

TEST(EvaluateTokens, StoresACopyFromBeforeAnAssignmentToAPartOfItself)
{
    Script script("a[1] = 7; a[0] = a; b[0] = 5; b = b[0]; c[0][1] = 3; c = c[0];");

    EXPECT_EQ(script["a"], "[[null, int 7], int 7]");
    EXPECT_EQ(script["b"], "int 5");
    EXPECT_EQ(script["c"], "[null, int 3]");
}

TEST(EvaluateTokens, TakesALiteralIndexOnly)
{
    Script script("a[1] = 7; i = 1;");

    EXPECT_EQ(script.evaluated("a[i]"), "[null, int 7]") << "the path a[i is a itself";
}

TEST(EvaluateTokens, KeepsAVariableOperandLive)
{
    // The call on the right changes x after x has been looked at, and the operator sees the change.
    Script script("x = 1;");
    script.interpreter.builtins["change"] = changeX;
    hostsInterpreter = &script.interpreter;

    EXPECT_EQ(script.evaluated("x + change()"), "int 105");
    script.run("x = 1;");
    EXPECT_EQ(script.evaluated("(x) + change()"), "int 6") << "a group is a copy";
    script.run("x = 1;");
    EXPECT_EQ(script.evaluated("change() + x"), "int 105");
}

TEST(EvaluateTokens, ReadsThePathOnTheLeftBeforeWhatIsAssigned)
{
    EXPECT_EQ(Script("b[1] = b;")["b"], "[null, [null, null]]");
    EXPECT_EQ(Script("a[0]b[1] = b;")["b"], "[null, [null, null]]");
    EXPECT_EQ(Script("a[0]b[1] = b[0];")["b"], "[null, null]");
}

TEST(EvaluateTokens, KeepsTheValueOfAnAssignmentWhileOthersAreEvaluated)
{
    Script script("x = 1;");
    script.interpreter.builtins["change"] = changeX;
    hostsInterpreter = &script.interpreter;

    EXPECT_EQ(script.evaluated("(x = 2) + change()"), "int 7");
    EXPECT_EQ(script.evaluated("y = x = 3"), "int 3");
    EXPECT_EQ(script["y"], "int 3");
    EXPECT_EQ(script.evaluated("change() = x = y"), "int 3") << "x is 100 by then";
    EXPECT_EQ(script.evaluated("y = x = \"a\" + \"b\""), "string ab");
    EXPECT_EQ(script["x"], "string ab");
    EXPECT_EQ(script["y"], "string ab");
}

TEST(EvaluateTokens, AssignsToNothingThatIsNoVariable)
{
    const CapturedErrors errors;
    Script script;

    EXPECT_EQ(script.evaluated("3 = 4"), "int 4");
    EXPECT_EQ(script.evaluated("3"), "int 3");
    EXPECT_EQ(script.evaluated("print = print() = 4"), "int 4");
    EXPECT_EQ(script.evaluated("= 5"), "null");
}

TEST(EvaluateTokens, GrowsAStringInItsPlaceAsByTheRules)
{
    Script script("s = \"a\"; s = s + \"b\"; s = s + 1; s = s + .5; s = s + nobody; s = s + s;");

    EXPECT_EQ(script["s"], "string ab10.5NULLab10.5NULL");

    script.run("s = s + list[1];");
    EXPECT_EQ(script["s"], "string ab10.5NULLab10.5NULLNULL");
    script.run("s = s + list;");
    EXPECT_EQ(script["s"], "string ") << "an array gives the empty string";
    EXPECT_EQ(script.evaluated("s = s + \"true\""), "string true");
    EXPECT_EQ(script.evaluated("s = s + \"x\" + \"y\""), "string truexy");
    EXPECT_EQ(script.evaluated("t = s + \"z\""), "string truexyz");
    EXPECT_EQ(script["s"], "string truexy");
    EXPECT_EQ(script.evaluated("s = s + \"z\" == \"truexyz\""), "int 1");
    EXPECT_EQ(script["s"], "int 1");
    EXPECT_EQ(script.evaluated("a[0] = a[0] + \"z\""), "string NULLz");
    EXPECT_EQ(script.evaluated("a[0] = a[1] + \"y\""), "string NULLy");
}

TEST(EvaluateTokens, CountsUpAndDown)
{
    Script script("x = 1; s = \"a\";");

    EXPECT_EQ(script.evaluated("x++"), "null") << "although x has been increased";
    EXPECT_EQ(script["x"], "int 2");
    EXPECT_EQ(script.evaluated("++x"), "null");
    EXPECT_EQ(script["x"], "int 3");
    EXPECT_EQ(script.evaluated("s++"), "null");
    EXPECT_EQ(script["s"], "string a1");
    EXPECT_EQ(script.evaluated("nobody++"), "null");
    EXPECT_EQ(script["nobody"], "null");
    EXPECT_EQ(script.evaluated("a[1]++"), "null");
    EXPECT_EQ(script["a"], "[null, null]");
    script.run("a++;");
    EXPECT_EQ(script["a"], "null") << "what cannot be added becomes no value";
}

TEST(EvaluateTokens, LosesTokensAtTheEndsOfAList)
{
    Script script("x = 1; y = 5;");

    EXPECT_EQ(script.evaluated("y = x++"), "null");
    EXPECT_EQ(script["x"], "int 2");
    EXPECT_EQ(script["y"], "null") << "the assignment finds no right operand";

    EXPECT_EQ(script.evaluated("!x"), "null");
    EXPECT_EQ(script.evaluated("!nobody"), "null");

    // The result replaces not the right operand but the token behind it.
    EXPECT_EQ(script.evaluated("!nobody 5"), "int 1");
    EXPECT_EQ(script.evaluated("!x 5"), "int 0");
    EXPECT_EQ(script.evaluated("++x 5 + 6"), "int 9") << "of x, which is 3 now, and 6";
}

TEST(EvaluateTokens, RecursesWithoutEndOnWhatItCannotReduce)
{
    for (const char* expression :
         {"1 2", "a 3", "a - 1", "1 )", "1 + )", ";", "return 5", "a ; b", "if(1)", "x = 5 }"})
        recurseWithoutEnd(expression);
}

TEST(EvaluateTokens, MakesNothingOfAnOperatorBesideAnOperator)
{
    Script script("a = 7; b = 0;");

    EXPECT_EQ(script.evaluated("a = !b"), "null");
    EXPECT_EQ(script["a"], "int 7");
    EXPECT_EQ(script.evaluated("1 + !b"), "null");
    EXPECT_EQ(script.evaluated("a != b"), "null");
    EXPECT_EQ(script.evaluated("+"), "null");
    EXPECT_EQ(script.evaluated("(+) + \"a\""), "string NULLa");
}

TEST(EvaluateTokens, EndsAnUnclosedGroupWithTheList)
{
    EXPECT_EQ(evaluated("2 * (1 + 2"), "int 6");
    EXPECT_EQ(evaluated("("), "null");
}

TEST(EvaluateTokens, DropsArgumentEndsAndLeadingBraces)
{
    Script script;
    script.interpreter.blockDepth = 0;
    std::vector<ScriptToken> list = {tokenOf(TOK_OPEN_BRACE),  tokenOf(TOK_OPEN_BRACE),
                                     tokenOf(TOK_CLOSE_BRACE), literal(4),
                                     tokenOf(TOK_ARGEND),      tokenOf(TOK_ARGEND)};

    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "int 4");
    EXPECT_EQ(script.interpreter.blockDepth, 1);
}

TEST(EvaluateTokens, EvaluatesABraceBesideAnOperatorToNothing)
{
    Script script("x = 5;");
    std::vector<ScriptToken> list = {tokenOf(TOK_VARIABLE, "x"), tokenOf(19),
                                     tokenOf(TOK_OPEN_BRACE)};

    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null");

    EXPECT_EQ(script["x"], "null");
    EXPECT_EQ(script.interpreter.blockDepth, 1);

    list = {literal(4), tokenOf(8), tokenOf(TOK_CLOSE_BRACE)};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null");
    EXPECT_EQ(script.interpreter.blockDepth, 0);
}

TEST(EvaluateTokens, DropsWhatEndsAnArgumentInAGroup)
{
    Script script("x = 5;");
    std::vector<ScriptToken> list = {tokenOf(0), tokenOf(TOK_VARIABLE, "x"), tokenOf(2),
                                     tokenOf(TOK_ARGEND), tokenOf(1)};

    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null")
        << "the value of two tokens with an operator";
    EXPECT_EQ(script["x"], "int 6");
}

TEST(EvaluateTokens, GivesNothingForAFunctionToken)
{
    Script script;
    std::vector<ScriptToken> list = {tokenOf(TOK_FUNC, "f")};

    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null");
}

TEST(EvaluateTokens, GivesNothingForAPathThatNamesNothing)
{
    Script script;
    std::vector<ScriptToken> list = {tokenOf(TOK_VARIABLE, "1x")};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null");

    list = {tokenOf(TOK_VARIABLE, "1x"), tokenOf(19), literal(4)};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "int 4");
    list = {tokenOf(TOK_VARIABLE, "a b"), tokenOf(8), literal(std::string("c"))};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "string NULLc");
}

TEST(EvaluateTokens, AppliesTheRowsThatNoTextReaches)
{
    Script script("x = 5;");

    std::vector<ScriptToken> list = {literal(5), tokenOf(9), literal(3)};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "int 2");
    list = {literal(5), tokenOf(18), literal(0)};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "int 1");
    list = {tokenOf(TOK_VARIABLE, "x"), tokenOf(3)};
    EXPECT_EQ(described(evaluateTokens(script.interpreter, list)), "null");
    EXPECT_EQ(script["x"], "int 4");
}

TEST(EvaluateTokens, LeavesTheLiteralsOfAListAsTheyAre)
{
    Script script("i = 0; while (i < 3) { 5++; s = 5 + 1; i = i + 1; }");

    EXPECT_EQ(script["s"], "int 6");
}

TEST(EvaluateTokens, TakesListsOfAnyLength)
{
    std::string sum = "1";
    for (int i = 1; i < 1000; ++i)
        sum += " + 1";
    std::string nested(200, '(');
    nested += "7" + std::string(200, ')');

    EXPECT_EQ(evaluated(sum), "int 1000");
    EXPECT_EQ(evaluated(nested), "int 7");
    EXPECT_EQ(evaluated("(" + sum + ") * (" + sum + ")"), "int 1000000");
}

TEST(EvaluateTokens, FindsAVariableAgainThatTheHostHasRemovedBetweenRuns)
{
    Script script;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "x = x + \"a\";");
    runTokens(script.interpreter, list);

    script.interpreter.variables.clear();
    runTokens(script.interpreter, list);

    EXPECT_EQ(script["x"], "string NULLa");
}

TEST(ApplyOperator, HasOneRowPerKind)
{
    struct Row
    {
        int kind;
        ScriptValue left;
        ScriptValue right;
        const char* expected;
    };
    const ScriptValue null;
    const Row rows[] = {
        {-2, 1, 2, "null"},     {-1, 1, 2, "null"},           {0, 1, 2, "null"},
        {1, 1, 2, "null"},      {4, 2, 3, "int 8"},           {5, 2, 3, "int 6"},
        {6, 3, 2, "float 1.5"}, {7, 7, 4, "int 3"},           {8, 2, 3, "int 5"},
        {9, 2, 3, "int -1"},    {10, 0, 1, "int 0"},          {10, 1, 0, "int 1"},
        {10, 1, null, "int 1"}, {11, 1, 2, "int 1"},          {11, 1, 0, "int 0"},
        {12, 0, 2, "int 1"},    {12, 0, null, "int 0"},       {14, 1, 2, "int 1"},
        {14, null, 2, "null"},  {16, 2, 1, "int 1"},          {16, null, 2, "int 0"},
        {17, 2, 2, "int 1"},    {17, 2, real(2.0F), "int 0"}, {17, null, null, "int 1"},
        {19, 1, 2, "int 2"},    {20, 1, 2, "null"},           {26, 1, 2, "null"},
    };
    ScriptInterpreter interpreter;
    for (const Row& row : rows) {
        ScriptValue left = row.left;
        ScriptValue right = row.right;
        EXPECT_EQ(described(applyOperator(interpreter, left, row.kind, right)), row.expected)
            << row.kind << " of " << described(row.left) << " and " << described(row.right);
    }
}

TEST(ApplyOperator, ComparesTruthInThreeOfTheSixComparisons)
{
    struct Row
    {
        int left;
        int right;
        const char* lessOrEqual;
        const char* greaterOrEqual;
        const char* notEqual;
    };
    const Row rows[] = {
        {5, 3, "int 1", "int 1", "int 0"},
        {0, 3, "int 1", "int 0", "int 1"},
        {3, 0, "int 0", "int 1", "int 1"},
        {0, 0, "int 1", "int 1", "int 0"},
    };
    ScriptInterpreter interpreter;
    for (const Row& row : rows) {
        ScriptValue left = row.left;
        ScriptValue right = row.right;
        EXPECT_EQ(described(applyOperator(interpreter, left, 13, right)), row.lessOrEqual);
        EXPECT_EQ(described(applyOperator(interpreter, left, 15, right)), row.greaterOrEqual);
        EXPECT_EQ(described(applyOperator(interpreter, left, 18, right)), row.notEqual);
    }
}

TEST(ApplyOperator, WritesThroughTheLeftOperandOfAnAssignment)
{
    ScriptInterpreter interpreter;
    ScriptValue left(1);
    ScriptValue right = array({1, 2});

    EXPECT_EQ(described(applyOperator(interpreter, left, 19, right)), "[int 1, int 2]");

    EXPECT_EQ(described(left), "[int 1, int 2]");
    EXPECT_EQ(described(right), "[int 1, int 2]");
}

TEST(ApplyOperator, StepsTheOperandBesideAMissingOne)
{
    struct Row
    {
        int kind;
        ScriptValue left;
        ScriptValue right;
        const char* result;
        const char* leftAfter;
        const char* rightAfter;
    };
    const ScriptValue null;
    const Row rows[] = {
        {2, 5, null, "int 6", "int 6", "null"},
        {2, null, 5, "int 6", "null", "int 6"},
        {2, 5, 7, "null", "int 5", "int 7"},
        {2, null, null, "null", "null", "null"},
        {2, real(0.5F), null, "float 1.5", "float 1.5", "null"},
        {2, array({1}), null, "null", "null", "null"},
        {2, null, array({1}), "null", "null", "null"},
        {3, 5, null, "int 4", "int 4", "null"},
        {3, null, 5, "int 4", "null", "int 4"},
        {3, 5, 7, "null", "int 5", "int 7"},
        {3, std::string("a"), null, "null", "null", "null"},
    };
    ScriptInterpreter interpreter;
    for (const Row& row : rows) {
        ScriptValue left = row.left;
        ScriptValue right = row.right;
        EXPECT_EQ(described(applyOperator(interpreter, left, row.kind, right)), row.result);
        EXPECT_EQ(described(left), row.leftAfter);
        EXPECT_EQ(described(right), row.rightAfter);
    }
}

TEST(Calls, BindEverySecondArgument)
{
    Script script("func f(a, b) { seen-a = a; seen-b = b; } f(1, 2, 3);");
    EXPECT_EQ(script["seen-a"], "int 1");
    EXPECT_EQ(script["seen-b"], "int 3");

    Script two("b = 9; func f(a, b) { seen-a = a; seen-b = b; } f(1, 2);");
    EXPECT_EQ(two["seen-a"], "int 1");
    EXPECT_EQ(two["seen-b"], "int 9") << "what is not bound keeps its value";
    EXPECT_EQ(two["::b"], "none");

    Script three("func f(a, b, c) { s = a + b + c; } f(1, 2, 4, 8, 16);");
    EXPECT_EQ(three["s"], "int 21");
}

TEST(Calls, EvaluateArgumentsThatAreNotBound)
{
    Script script("func f(a) { } f(1, x = 5);");

    EXPECT_EQ(script["x"], "int 5");
}

TEST(Calls, EvaluateArgumentsFromTheLeft)
{
    // To read an element makes an array of its variable, which a sum then has no value for.
    Script script("func f(p, q) { first = p; last = q; }"
                  "a = 0; f(a[1], 0, 7 + a);"
                  "x = last; b = 0; f(7 + b, 0, b[1]);");

    EXPECT_EQ(script["x"], "null");
    EXPECT_EQ(script["first"], "int 7");
}

TEST(Calls, PutTheOldValuesOfParametersBack)
{
    Script script("a = 7; func f(a) { a = a + 1; seen-a = a; } f(1);");

    EXPECT_EQ(script["seen-a"], "int 2");
    EXPECT_EQ(script["a"], "int 7");
    EXPECT_EQ(script["::a"], "int 7") << "the shadow stays in the table";
}

TEST(Calls, LetAScriptReadAShadow)
{
    Script script("a = 7; func f(a) { outer = ::a; } f(1);");

    EXPECT_EQ(script["outer"], "int 7");
}

TEST(Calls, LoseTheOutermostValueOfAParameterInARecursion)
{
    Script script("n = 100; depth = 0;"
                  "func f(n) { depth = depth + 1; if (n < 3) { f(n + 1); } } f(1);");

    EXPECT_EQ(script["depth"], "int 3");
    EXPECT_EQ(script["n"], "int 2") << "what the innermost call found";
    EXPECT_EQ(script["::n"], "int 2");
}

TEST(Calls, TakeAParametersNameAsItStands)
{
    Script script("func f(a[1]) { } f(5);");

    EXPECT_EQ(script["::a[1]"], "null");
    EXPECT_EQ(script["a[1]"], "null");
    EXPECT_EQ(script["a"], "none");
}

TEST(Calls, GiveTheValueOfTheBody)
{
    EXPECT_EQ(Script("func f() { return 7; } x = f();")["x"], "int 7");
    EXPECT_EQ(Script("func f() { return \"a\"; } x = f();")["x"], "string a");
    EXPECT_EQ(Script("y = 3; func f() { return y; } x = f();")["x"], "null");
    EXPECT_EQ(Script("y = 3; func f() { y + 1; } x = f();")["x"], "int 4");
    EXPECT_EQ(Script("y = 3; func f() { y; 0; } x = f();")["x"], "int 3");
    EXPECT_EQ(Script("func f() { 0; } x = f();")["x"], "null");
}

TEST(Calls, SayWhenAFunctionIsUnknown)
{
    Script script;
    CapturedErrors errors;

    EXPECT_EQ(script.evaluated("nobody(x = 3)"), "null");

    EXPECT_EQ(errors.text(), "cannot find reference to nobody\n");
    EXPECT_EQ(script["x"], "int 3") << "the arguments have been evaluated";
    EXPECT_EQ(script.interpreter.builtins.at("nobody"), nullptr);
    EXPECT_TRUE(script.interpreter.functions.at("nobody").body.empty());
}

TEST(Calls, SayWhenAParameterIsNoName)
{
    Script script("func f(3) { x = 1; }");
    CapturedErrors errors;

    script.run("f(1);");

    EXPECT_EQ(errors.text(), "token 0 is not a variable name\ntoken 0 is not a variable name\n");
    EXPECT_EQ(script["x"], "int 1");
}

TEST(Calls, BindTheNamesInFrontOfOneThatIsNone)
{
    Script script("func f(a, \"b\", c) { seen-a = a; seen-c = c; }");
    CapturedErrors errors;

    script.run("f(1, 2, 3, 4, 5);");

    EXPECT_EQ(errors.text(), "token 2 is not a variable name\ntoken 2 is not a variable name\n");
    EXPECT_EQ(script["seen-a"], "int 1");
    EXPECT_EQ(script["seen-c"], "null");
    EXPECT_EQ(script["a"], "null");
}

TEST(Calls, SayNothingOfParametersThatGetNoArgument)
{
    Script script("func f(3) { x = 1; }");
    CapturedErrors errors;

    script.run("f();");

    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(script["x"], "int 1");
}

TEST(Calls, AskBuiltinsBeforeFunctions)
{
    Script script("func print(a) { x = 1; }");
    CapturedErrors errors;

    script.run("print(5);");

    EXPECT_EQ(errors.text(), "5 \n");
    EXPECT_EQ(script["x"], "none");
}

TEST(Calls, HandABuiltinItsNameAndValues)
{
    Script script;
    script.interpreter.builtins["watch"] = watch;

    EXPECT_EQ(script.evaluated("watch(1, \"a\", , nobody, 2 * 3, a[0]) + 1"), "int 6");

    EXPECT_EQ(seen.name, "watch");
    EXPECT_EQ(seen.values, (std::vector<std::string>{"int 1", "string a", "null", "int 6", "null"}))
        << "an empty piece is no argument";
}

TEST(Calls, HandABuiltinCopies)
{
    Script script("x = 1; a[0] = 2;");
    script.interpreter.builtins["scribble"] = scribble;

    script.run("i = 0; while (i < 2) { scribble(x, a, 3); i = i + 1; }");

    EXPECT_EQ(script["x"], "int 1");
    EXPECT_EQ(script["a"], "[int 2]");
}

TEST(Calls, FormNoArgumentBehindTheLastArgumentEnd)
{
    Script script;
    script.interpreter.builtins["watch"] = watch;
    ScriptToken call = tokenOf(TOK_CALL, "watch");
    call.args = {literal(1), {}, literal(2)};
    std::vector<ScriptToken> list = {call};

    evaluateTokens(script.interpreter, list);

    EXPECT_EQ(seen.values, std::vector<std::string>{"int 1"});
}

TEST(Calls, SeeABuiltinThatIsBoundLater)
{
    Script script("func f() { y = 1; }");
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "f();");
    runTokens(script.interpreter, list);
    EXPECT_EQ(script["y"], "int 1");

    script.interpreter.builtins["f"] = watch;
    seen = {};
    runTokens(script.interpreter, list);

    EXPECT_EQ(seen.name, "f");
}

TEST(Calls, RunABodyToItsEndThatIsRedefinedMeanwhile)
{
    Script script("func f(p) { redefine(); after = p; }");
    script.interpreter.builtins["redefine"] = redefine;
    hostsInterpreter = &script.interpreter;

    script.run("p = 3; f(8);");
    EXPECT_EQ(script["after"], "int 8");
    EXPECT_EQ(script["added"], "none") << "what was added is not part of the running body";
    EXPECT_EQ(script["p"], "int 3");

    script.interpreter.builtins.erase("redefine");
    CapturedErrors errors;
    script.run("f(9);");
    EXPECT_EQ(script["added"], "int 1");
}

TEST(Calls, GoDeep)
{
    Script script("func f(n) { if (n < 200) { f(n + 1); } deepest = deepest + 1; }"
                  "deepest = 0; f(1);");

    EXPECT_EQ(script["deepest"], "int 200");
}
} // namespace tamor::test
