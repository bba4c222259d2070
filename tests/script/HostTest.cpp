// What a host may do while its scripts run, and what it may leave in tokens and values.
#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// A script whose built-in `act` does what a test says.
class HostedScript : public Script
{
public:
    explicit HostedScript(std::function<ScriptValue()> action)
    {
        current = std::move(action);
        interpreter.builtins["act"] = [](std::string, std::int32_t, ScriptValue*) {
            return current();
        };
    }

    std::vector<ScriptToken> parsedList(const std::string& text)
    {
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        return list;
    }

private:
    static inline std::function<ScriptValue()> current;
};
} // namespace

TEST(Host, MayReplaceABodyThatRuns)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        std::vector<ScriptToken> body;
        parseText(host->interpreter, body, "{ second = 1; }");
        host->interpreter.functions["f"].body = body;
        return {};
    });
    host = &script;

    script.run("func f() { i = 0; while (i < 2) { i = i + 1; act(); } first = 1; } f();");
    EXPECT_EQ(script["first"], "int 1") << "the running call goes on with its copy";
    EXPECT_EQ(script["second"], "none");

    script.run("f();");
    EXPECT_EQ(script["second"], "int 1");
}

TEST(Host, MayReplaceABodyThatCallsItselfThen)
{
    HostedScript* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.functions["f"].body = host->parsedList("{ second = second + 1; }");
        return {};
    });
    host = &script;

    script.run(
        "second = 0; func f() { act(); f(); f(); first = \"the call that runs goes on\"; } f();");

    EXPECT_EQ(script["second"], "int 2") << "the next calls have the new body";
    EXPECT_EQ(script["first"], "string the call that runs goes on");
}

TEST(Host, MayClearABodyThatRuns)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.functions["f"].body.clear();
        return {};
    });
    host = &script;
    const CapturedErrors errors;

    script.run(
        "func f() { act(); first = \"a text that is too long for its own record\"; } f(); f();");

    EXPECT_EQ(script["first"], "string a text that is too long for its own record");
    EXPECT_EQ(errors.text(), "cannot find reference to f\n");
}

TEST(Host, MayEditABodyThatRuns)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        for (ScriptToken& token : host->interpreter.functions["f"].body)
            if (token.kind == TOK_NUMBER)
                token.value = ScriptValue(2);
        return {};
    });
    host = &script;

    script.run("func f() { act(); x = 1; } f();");
    EXPECT_EQ(script["x"], "int 1");
    script.run("f();");
    EXPECT_EQ(script["x"], "int 2");
}

TEST(Host, MayLetATextGoOnWithAFunctionThatRuns)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        // The definition is open, so the text joins its body.
        std::vector<ScriptToken> list;
        parseText(host->interpreter, list, "added = added + 1;");
        return {};
    });
    host = &script;
    std::vector<ScriptToken> list = script.parsedList("added = 0; f();");
    std::vector<ScriptToken> none = script.parsedList("func f() { act(); after = 1;");

    runTokens(script.interpreter, list);
    EXPECT_EQ(script["added"], "int 0") << "the running call does not see it";
    EXPECT_EQ(script["after"], "int 1");

    runTokens(script.interpreter, list);
    EXPECT_EQ(script["added"], "int 1");
}

TEST(Host, MayRemoveVariablesThatAScriptUses)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.variables.erase("x");
        host->interpreter.variables.erase("a");
        return {1};
    });
    host = &script;

    script.run(
        "x = 5; y = x + act(); a[1] = 2; a[1] = act(); i = 0;"
        "while (i < 3) { x = \"a text that is too long for its own record\"; i = i + act(); }");

    EXPECT_EQ(script["y"], "null");
    EXPECT_EQ(script["a"], "none") << "removed again in the loop";
    EXPECT_EQ(script["x"], "none");
    EXPECT_EQ(script["i"], "int 3");
}

TEST(Host, MayGiveParametersOtherNamesDuringACall)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.functions["f"].parameters[0].name = "q";
        return {};
    });
    host = &script;

    script.run("p = 3; ::q = 8; func f(p) { act(); } f(5);");

    EXPECT_EQ(script["p"], "int 5") << "nothing puts its old value back";
    EXPECT_EQ(script["q"], "int 8");
}

TEST(Host, MayRemoveAFunctionThatRuns)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.functions.erase("f");
        return {};
    });
    host = &script;

    script.run("p = 3; func f(p) { act(); seen = p; } f(5);");

    EXPECT_EQ(script["seen"], "int 5");
    EXPECT_EQ(script["p"], "int 3");
}

TEST(Host, MayEditTheListThatRuns)
{
    Script* host = nullptr;
    std::vector<ScriptToken> list;
    HostedScript script([&]() -> ScriptValue {
        list.back().kind = TOK_SEMICOLON;
        list[list.size() - 2].value = ScriptValue(7);
        return {};
    });
    host = &script;
    list = script.parsedList("act(); x = 1;");

    runTokens(host->interpreter, list);

    EXPECT_EQ(script["x"], "int 7");
}

TEST(Host, MayClearTheListThatRuns)
{
    std::vector<ScriptToken> list;
    HostedScript script([&]() -> ScriptValue {
        list.clear();
        list.shrink_to_fit();
        return {4};
    });
    list = script.parsedList("x = act(); y = 1; z = 2;");

    const ScriptValue value = runTokens(script.interpreter, list);

    EXPECT_EQ(script["x"], "int 4");
    EXPECT_EQ(script["y"], "none");
    EXPECT_EQ(described(value), "int 4");
}

TEST(Host, MayEditTheConditionOfAWhileButNotOfAFor)
{
    std::vector<ScriptToken> list;
    HostedScript script([&]() -> ScriptValue {
        for (ScriptToken& token : list[0].args)
            if (token.kind == TOK_NUMBER && token.value.number == 9)
                token.value = ScriptValue(2);
        return {};
    });
    script.run("i = 0;");
    list = script.parsedList("while (i < 9) { i = i + 1; act(); }");
    runTokens(script.interpreter, list);
    EXPECT_EQ(script["i"], "int 2") << "the header is looked at again for each pass";

    list = script.parsedList("for (k = 0; k < 9; k = k + 1) { act(); }");
    runTokens(script.interpreter, list);
    EXPECT_EQ(script["k"], "int 9") << "the clauses have been taken apart";
}

TEST(Host, MayEditTheConditionFromAHeaderInTheBody)
{
    std::vector<ScriptToken> list;
    HostedScript script([&]() -> ScriptValue {
        list[0].args[2].value = ScriptValue(2);
        return {};
    });
    script.run("i = 0;");
    list = script.parsedList("while (i < 9) { i = i + 1; if (act()) { } }");

    runTokens(script.interpreter, list);

    EXPECT_EQ(script["i"], "int 2");
}

TEST(Host, MakesNoControlFormOfSeveralTokens)
{
    EXPECT_TRUE(endsTheProcess([] {
        Script script;
        std::vector<ScriptToken> list;
        parseText(script.interpreter, list, "if (1) x = 1;");
        // Without its separator the header is a part of the statement, which has no value.
        list.erase(list.begin() + 1);
        runTokens(script.interpreter, list);
    }));
}

TEST(Host, MayRunScriptsWithinScripts)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->run("n = n + 1; if (n < 5) { inner = (n * 2) + act(); }");
        return {10};
    });
    host = &script;

    script.run("n = 0; x = (1 + 2) * act() + (3 * 4);");

    EXPECT_EQ(script["n"], "int 5");
    EXPECT_EQ(script["x"], "int 42");
    EXPECT_EQ(script["inner"], "int 12") << "the outermost of the inner runs ends last";
}

TEST(Host, MayThrowThroughAScript)
{
    HostedScript script([]() -> ScriptValue { throw 7; });

    EXPECT_THROW(script.run("func f(p) { x = 1 + act(); } i = 0; while (i < 2) { f(3) + 1; }"),
                 int);

    script.run("x = (1 + 2) * 3;");
    EXPECT_EQ(script["x"], "int 9");
}

TEST(Host, FindsAVariableThatIsAboutToBeAssigned)
{
    Script* host = nullptr;
    HostedScript script(
        [&]() -> ScriptValue { return static_cast<int>(host->interpreter.variables.count("x")); });
    host = &script;

    script.run("func f(p) { y = p; } x = f(act());");

    EXPECT_EQ(script["y"], "int 1") << "the left operand is looked up before the argument";
    script.interpreter.variables.erase("x");
    script.run("x[0] = act();");
    EXPECT_EQ(script["x"], "[int 1]");
    script.interpreter.variables.erase("x");
    script.run("w = x = act();");
    EXPECT_EQ(script["w"], "int 1");
}

TEST(Host, FindsNothingOldInANewResult)
{
    Script script;
    ScriptValue& x = script.interpreter.variables["x"];
    x = array({1, 2});
    x.setInt(5); // the elements stay, and nobody may depend on them
    x.reserved = 9;

    script.run("y = x; x = x + 1; i = 0; while (i < 2) { x = x + 1; i = i + 1; }");

    EXPECT_EQ(script["x"], "int 8");
    EXPECT_TRUE(x.items.empty());
    EXPECT_EQ(x.reserved, 0U) << "a result is a new value";
    EXPECT_EQ(script.interpreter.variables["y"].reserved, 9U) << "an assignment copies it";
    script.run("e = x[1];");
    EXPECT_EQ(script["e"], "null");
}

TEST(Host, FindsACopyOfAllThatItLeftInALiteral)
{
    Script script;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, "x = 3; y = (x); z = 3 + 0;");
    for (ScriptToken& token : list)
        token.value.reserved = 4;

    runTokens(script.interpreter, list);

    EXPECT_EQ(script.interpreter.variables["x"].reserved, 4U);
    EXPECT_EQ(script.interpreter.variables["y"].reserved, 4U);
    EXPECT_EQ(script.interpreter.variables["z"].reserved, 0U);
}

TEST(Elements, AreFoundWhereTheyAreWhenTheirArrayGrows)
{
    Script script("a[0] = 1; a[1] = 2; "
                  "for (i = 0; i < 3; i = i + 1) {"
                  "    a[0] = a[0] + a[1] * 2;"
                  "    a[1000] = i;"
                  "    x = a[0] + a[2000];"
                  "    b = a[i + 1000];"
                  "}");

    EXPECT_EQ(script.evaluated("a[0]"), "int 13");
    EXPECT_EQ(script.evaluated("a[1000]"), "int 2");
    EXPECT_EQ(script["x"], "null");
    EXPECT_EQ(script.interpreter.variables["a"].items.size(), 2001U);
}

TEST(Elements, AreFoundAnewWhenTheHostHasRun)
{
    Script* host = nullptr;
    HostedScript script([&]() -> ScriptValue {
        host->interpreter.variables["a"] = array({10, array({20})});
        return 0;
    });
    host = &script;

    script.run("a[0] = 1; a[1][0] = 2; x = 0;"
               "while (x < 60) { x = a[0] + a[1][0] + x; act(); if (x == 3) { y = a[1][0]; } }");

    EXPECT_EQ(script["x"], "int 63");
    EXPECT_EQ(script["y"], "int 20");
}

TEST(Elements, HoldNothingOldInANewResult)
{
    Script script;
    ScriptValue& element = script.interpreter.variables["a"].arrayElement(0);
    element.setString("an old text");
    element.setInt(3);
    element.reserved = 7;

    script.run("b[0] = 1; b[0] = a[0]; a[0] = a[0] + 1;");

    EXPECT_EQ(element.number, 4);
    EXPECT_EQ(element.text, "");
    EXPECT_EQ(element.reserved, 0U);
    EXPECT_EQ(script.interpreter.variables["b"].items[0].text, "an old text");
    EXPECT_EQ(script.interpreter.variables["b"].items[0].reserved, 7U);
}

TEST(Elements, BecomeArraysAgainWithWhatTheyHeld)
{
    Script script;
    ScriptValue& element = script.interpreter.variables["a"].arrayElement(0);
    element.arrayElement(0) = ScriptValue(5);
    element.setInt(3);

    script.run("x = a[0][0] + 1;");

    EXPECT_EQ(script["x"], "int 6");
    EXPECT_EQ(script["a"], "[[int 5]]");
}

TEST(EvaluateTokens, ComparesTheWholeOfTwoTexts)
{
    Script script(
        "s = \"red\"; x = 0; y = 0; i = 0;"
        "while (i < 2) { if (s == \"tan\") { x = x + 1; } if (s == \"red\") { y = y + 1; }"
        " i = i + 1; }"
        "while (s + \"der\" == \"redder\") { s = 1; y = y + 1; }");

    EXPECT_EQ(script["x"], "int 0");
    EXPECT_EQ(script["y"], "int 3");
}

TEST(EvaluateTokens, CountsAnElementBesideItsOwnArray)
{
    Script script("a[2] = 5; a[0] ++ a; b[2] = 5; b ++ b[0]; x = 1;");

    EXPECT_EQ(script["a"], "null") << "the array became no value, and its element is gone";
    EXPECT_EQ(script["b"], "null");
    EXPECT_EQ(script["x"], "int 1");
}

TEST(EvaluateTokens, AddsAnArrayToAStringInPlaceToTheEmptyString)
{
    Script script("l[0] = 1; for (i = 0; i < 3; i++) { s = \"text\"; s = s + l; t = s + \"x\"; }");

    EXPECT_EQ(script["s"], "string ");
    EXPECT_EQ(script["t"], "string x");
}

TEST(EvaluateTokens, ReadsAnElementThatMemoryDoesNotHoldAsNoValue)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitiser ends the program where memory runs out";
#endif
    CapturedErrors errors;
    Script script("a[2000000000] = 1; b = a[2000000000] + \"x\"; c = 2;");

    EXPECT_EQ(script["a"], "[]");
    EXPECT_EQ(script["b"], "string NULLx");
    EXPECT_EQ(script["c"], "int 2");
    EXPECT_EQ(errors.text().substr(0, 47), "no memory for element 2000000000 of an array\nno");
}
} // namespace tamor::test
