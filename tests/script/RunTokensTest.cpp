#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// What a script prints.
std::string output(const std::string& text)
{
    const CapturedErrors errors;
    Script script(text);
    return errors.text();
}

std::string valueOf(const std::string& text)
{
    return described(Script(text).value);
}
} // namespace

TEST(RunTokens, GivesNoValueForAnEmptyList)
{
    EXPECT_EQ(valueOf(""), "null");
    EXPECT_EQ(valueOf(";;;"), "null");
}

TEST(RunTokens, LeavesTokensBehindTheLastSeparatorAlone)
{
    EXPECT_EQ(Script("x = 1")["x"], "none");
    EXPECT_EQ(Script("x = 1;")["x"], "int 1");
    EXPECT_EQ(Script("x = 1; x = 2")["x"], "int 1");
}

TEST(RunTokens, KeepsTheLastTrueValue)
{
    EXPECT_EQ(valueOf("5; 0;"), "int 5");
    EXPECT_EQ(valueOf("5; \"no\"; nobody;"), "int 5");
    EXPECT_EQ(valueOf("5; \"true\";"), "string true");
    EXPECT_EQ(valueOf("5; 6; a[0] = 1; a;"), "int 1");
    EXPECT_EQ(valueOf("0; \"a\";"), "null");
}

TEST(RunTokens, ReturnsTheStoredLiteralAndEvaluatesNothing)
{
    EXPECT_EQ(valueOf("return 5;"), "int 5");
    EXPECT_EQ(valueOf("return \"a\";"), "string a");
    EXPECT_EQ(valueOf("x = 3; return x;"), "null");
    EXPECT_EQ(valueOf("return 1 + 2;"), "int 1");
    EXPECT_EQ(valueOf("return (1);"), "null");
    EXPECT_EQ(valueOf("7; return 0; 8;"), "int 0") << "also a value that is not true";
    EXPECT_EQ(valueOf("return -1;"), "int -1");
    EXPECT_EQ(output("return print(\"a\");"), "");
}

TEST(RunTokens, DropsTheStatementInFrontOfAReturn)
{
    Script script("x = 1 return 5;");

    EXPECT_EQ(script["x"], "none");
    EXPECT_EQ(described(script.value), "int 5");
}

TEST(RunTokens, TakesReturnWithoutASpaceForAName)
{
    EXPECT_EQ(valueOf("3; return; 5;"), "int 5");
}

TEST(RunTokens, GivesNoValueForAReturnAtTheVeryEnd)
{
    EXPECT_EQ(valueOf("5; return "), "null");
}

TEST(RunTokens, TakesTheBlockOfATrueIf)
{
    EXPECT_EQ(output("if (1) { print(\"a\"); }"), "a \n");
    EXPECT_EQ(output("if (2) { print(\"a\"); }"), "a \n") << "whatever is true will do";
    EXPECT_EQ(output("if (\"true\") { print(\"a\"); }"), "a \n");
    EXPECT_EQ(output("if (.5) print(\"a\");"), "a \n");
}

TEST(RunTokens, PassesOverTheBlockOfAFalseIf)
{
    EXPECT_EQ(output("if (0) { print(\"a\"); }"), "");
    EXPECT_EQ(output("if (0) { print(\"a\"); } print(\"b\");"), "b \n");
    EXPECT_EQ(output("if (0) { if (1) { print(\"a\"); } print(\"b\"); } print(\"c\");"), "c \n");
    EXPECT_EQ(output("if () { print(\"a\"); } print(\"b\");"), "b \n");
    EXPECT_EQ(output("if (nobody) { } print(\"b\");"), "b \n");
}

TEST(RunTokens, NeverTakesAnIfOfANegation)
{
    EXPECT_EQ(output("x = 0; if (!x) { print(\"a\"); }"), "");
}

TEST(RunTokens, SkipsOneTokenBehindAFalseIfWithoutABlock)
{
    EXPECT_EQ(output("if (0) print(\"a\"); print(\"b\");"), "b \n");
    Script script("if (0) x = 1; y = 2;");
    EXPECT_EQ(script["x"], "none");
    EXPECT_EQ(script["y"], "int 2");
    EXPECT_EQ(valueOf("if (0) return 5;"), "int 5") << "only the word is skipped";
    EXPECT_EQ(output("if (0) if (1) { print(\"a\"); }"), "a \n") << "only the header is skipped";
}

TEST(RunTokens, CountsTheBracesOfABlockThatIsTaken)
{
    Script script;
    script.interpreter.blockDepth = 0;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "if (1) { x = 1; }");
    ASSERT_EQ(script.interpreter.blockDepth, 0);

    runTokens(script.interpreter, list);
    EXPECT_EQ(script.interpreter.blockDepth, 0);

    parseText(script.interpreter, list, "while (x) { x = 0; }");
    runTokens(script.interpreter, list);
    EXPECT_EQ(script.interpreter.blockDepth, 1) << "a loop never evaluates its closing brace";
}

TEST(RunTokens, LoopsWhileTheConditionHolds)
{
    EXPECT_EQ(Script("i = 0; while (i < 3) { i = i + 1; }")["i"], "int 3");
    EXPECT_EQ(output("i = 0; while (i < 3) { print(i); i = i + 1; }"), "0 \n1 \n2 \n");
    EXPECT_EQ(output("while (true) { print(1); true = 0; } print(2);"), "1 \n2 \n");
}

TEST(RunTokens, LoopsOnIntegerOneAlone)
{
    for (const char* condition : {"2", "\"true\"", ".5 + .5", "-1", "", "nobody"}) {
        const std::string text = condition;
        EXPECT_EQ(output("while (" + text + ") { print(1); }"), "") << text;
        EXPECT_EQ(output("for (;" + text + ";) { print(1); }"), "") << text;
    }
}

TEST(RunTokens, CountsThroughAFor)
{
    EXPECT_EQ(output("for (i = 0; i < 3; i = i + 1) { print(i); }"), "0 \n1 \n2 \n");
    EXPECT_EQ(Script("for (i = 0; i < 3; i = i + 1) { }")["i"], "int 3");
    EXPECT_EQ(output("for (i = 0; i < 3; i++) { print(i); }"), "0 \n1 \n2 \n");
    EXPECT_EQ(output("for (i = 0; i < 2; i++; print(9)) { print(i); }"), "0 \n1 \n")
        << "a fourth clause is dropped";
    EXPECT_EQ(Script("for (i = 5) { i = 6; }")["i"], "int 5") << "no condition ends the loop";
    EXPECT_EQ(output("for () { print(1); } print(2);"), "2 \n");
}

TEST(RunTokens, NestsLoops)
{
    EXPECT_EQ(output("for (i = 0; i < 2; i++) { for (k = 0; k < 2; k++) { print(i, k); } }"),
              "0 0 \n0 1 \n1 0 \n1 1 \n");
    EXPECT_EQ(output("i = 0; while (i < 2) { if (i == 1) { print(i); } i = i + 1; } print(\"e\");"),
              "1 \ne \n");
}

TEST(RunTokens, NeverRunsALoopsBodyWithoutBraces)
{
    // The body is the header's separator and one token, with no separator behind it.
    EXPECT_EQ(output("for (i = 0; i < 3; i++) print(i); print(\"e\");"), "e \n");
    EXPECT_EQ(Script("for (i = 0; i < 3; i++) print(i);")["i"], "int 3");
}

TEST(RunTokens, RunsTheRestOfAStatementBehindABodyWithoutBraces)
{
    // The body is `x` alone, the "=" takes the separator's place, and `5` is the next statement.
    Script script("while (0) x = 5;");

    EXPECT_EQ(script["x"], "none");
    EXPECT_EQ(described(script.value), "int 5");
}

TEST(RunTokens, NeverRunsTheLastStatementOfALoopsBodyWithoutASeparator)
{
    EXPECT_EQ(Script("i = 0; k = 0; while (i < 3) { i = i + 1; k = k + 1 }")["k"], "int 0");
}

TEST(RunTokens, EndsOnlyThePassAtAReturnInALoop)
{
    Script script("i = 0; while (i < 3) { i = i + 1; return 7; i = 100; }");

    EXPECT_EQ(script["i"], "int 3");
    EXPECT_EQ(described(script.value), "int 7");
}

TEST(RunTokens, DropsAPassThatReturnsWhatIsNotTrue)
{
    EXPECT_EQ(valueOf("4; i = 0; while (i < 2) { i = i + 1; 9; return 0; }"), "int 4")
        << "i = 0 and the passes leave the 4 in place";
    EXPECT_EQ(valueOf("for (i = 0; i < 2; i++) { i + 5; }"), "int 6");
}

TEST(RunTokens, EndsTheListAtAReturnInAnIf)
{
    Script script("if (1) { return 5; } x = 1;");

    EXPECT_EQ(script["x"], "none");
    EXPECT_EQ(described(script.value), "int 5");
}

TEST(RunTokens, EndsWhereAFormWouldMovePastTheList)
{
    EXPECT_EQ(output("if (0)"), "");
    EXPECT_EQ(output("while (1)"), "");
    EXPECT_EQ(output("for (print(1); 1; )"), "");
    EXPECT_EQ(output("print(1); if (0) { print(2);"), "1 \n");
    EXPECT_EQ(output("print(1); while (1) { print(2);"), "1 \n");
    EXPECT_EQ(output("print(1); if (1) { print(2);"), "1 \n2 \n") << "a true if moves nowhere";
    EXPECT_EQ(valueOf("3; while (1) {"), "int 3");
}

TEST(RunTokens, RunsAListAgainAndAgain)
{
    Script script;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "n = n + 1; if (n == 2) { s = \"two\"; }");
    script.interpreter.variables["n"] = ScriptValue(0);

    for (int i = 0; i < 3; ++i)
        runTokens(script.interpreter, list);

    EXPECT_EQ(script["n"], "int 3");
    EXPECT_EQ(script["s"], "string two");
}

TEST(RunTokens, EndsAStatementWhereTheHostPutASeparatorSinceTheLastRun)
{
    Script script("x = 0;");
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "for (i = 0; i < 4; i = i + 1) { x = x + 1; }");
    runTokens(script.interpreter, list);
    ASSERT_EQ(script["x"], "int 4");
    // The header, its separator, the brace, its separator, `x = x`, and "+".
    ASSERT_EQ(list[7].kind, 8);

    list[7].kind = TOK_SEMICOLON;
    runTokens(script.interpreter, list);

    EXPECT_EQ(script["x"], "int 4");
}

TEST(RunTokens, RunsOneListWithTwoInterpreters)
{
    Script first("x = 1;");
    Script second("x = 10;");
    std::vector<ScriptToken> list;
    parseText(first.interpreter, list, "x = x + 1;");

    runTokens(first.interpreter, list);
    runTokens(second.interpreter, list);
    runTokens(first.interpreter, list);

    EXPECT_EQ(first["x"], "int 3");
    EXPECT_EQ(second["x"], "int 11");
}
} // namespace tamor::test
