#include "script/ScriptInterpreter.h"

#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tamor::test
{
namespace
{
using namespace std::string_literals;

/// Runs a file of this text in a new interpreter.
class FileRun
{
public:
    explicit FileRun(const std::string& text)
    {
        succeeded = script.interpreter.runFile(directory.write("main.script", text));
    }

    TemporaryDirectory directory;
    Script script;
    bool succeeded = false;
};
} // namespace

TEST(ScriptInterpreter, StartsWithThreeVariablesAndPrint)
{
    const ScriptInterpreter interpreter;

    EXPECT_EQ(interpreter.blockDepth, 0);
    EXPECT_EQ(interpreter.currentFunction, nullptr);
    EXPECT_TRUE(interpreter.functions.empty());
    ASSERT_EQ(interpreter.variables.size(), 3U);
    EXPECT_EQ(described(interpreter.variables.at("false")), "int 0");
    EXPECT_EQ(described(interpreter.variables.at("true")), "int 1");
    EXPECT_EQ(described(interpreter.variables.at("pi")), "float 3.14159274");
    ASSERT_EQ(interpreter.builtins.size(), 1U);
    EXPECT_EQ(interpreter.builtins.at("print"), &builtinPrint);
}

TEST(ScriptInterpreter, LetsAScriptOverwriteThePresetVariables)
{
    Script script("pi = 3; true = 0;");

    EXPECT_EQ(script["pi"], "int 3");
    EXPECT_EQ(script["true"], "int 0");
}

TEST(RunFile, RunsTheStatementsAndKeepsTheFunctions)
{
    FileRun run("func f(a) { x = a; } f(5);");

    EXPECT_TRUE(run.succeeded);
    EXPECT_EQ(run.script["x"], "int 5");
    EXPECT_EQ(run.script.interpreter.functions.size(), 1U);
}

TEST(RunFile, LeavesTheTablesAsTheyWereForAnEmptyFile)
{
    FileRun run("");

    EXPECT_TRUE(run.succeeded);
    EXPECT_EQ(run.script.interpreter.variables.size(), 3U);
    EXPECT_TRUE(run.script.interpreter.functions.empty());
    EXPECT_EQ(run.script.interpreter.builtins.size(), 1U);
}

TEST(RunFile, ReadsUpToTheFirstZeroByte)
{
    FileRun run("x = 1;\0 x = 2;"s);

    EXPECT_EQ(run.script["x"], "int 1");
}

TEST(RunFile, ReadsAllLines)
{
    FileRun run("x = 1;\r\ny = \"a\nb\";\n\nz = 3;");

    EXPECT_EQ(run.script["x"], "int 1");
    EXPECT_EQ(run.script["y"], "string a\nb");
    EXPECT_EQ(run.script["z"], "int 3");
}

TEST(RunFile, SucceedsSilentlyForAFileThatCannotBeRead)
{
    const TemporaryDirectory directory;
    std::filesystem::create_directory("folder");
    ScriptInterpreter interpreter;
    CapturedErrors errors;

    EXPECT_TRUE(interpreter.runFile("missing.script"));
    EXPECT_TRUE(interpreter.runFile("folder"));
    EXPECT_TRUE(interpreter.runFile(""));
    EXPECT_TRUE(interpreter.loadFile("missing.script"));
    EXPECT_TRUE(interpreter.loadFile("folder"));

    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(interpreter.variables.size(), 3U);
}

TEST(RunFile, PilesUpFunctionsAndVariables)
{
    const TemporaryDirectory directory;
    directory.write("one.script", "func f() { x = x + 1; } x = 1;");
    directory.write("two.script", "f(); f();");
    Script script;

    script.interpreter.runFile("one.script");
    script.interpreter.runFile("two.script");

    EXPECT_EQ(script["x"], "int 3");
}

TEST(LoadFile, TakesTheFunctionsAndRunsNothing)
{
    const TemporaryDirectory directory;
    directory.write("library.script", "x = 1; print(\"loaded\"); func f() { y = 2; } z = 3;");
    Script script;
    CapturedErrors errors;

    EXPECT_TRUE(script.interpreter.loadFile("library.script"));

    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(script.interpreter.variables.size(), 3U);
    EXPECT_EQ(described(script.interpreter.functions.at("f").body), "{ ; y = <int 2> ; } ;");
    script.run("f();");
    EXPECT_EQ(script["y"], "int 2");
}

TEST(LoadFile, LeavesAFunctionOpenForTheNextFile)
{
    const TemporaryDirectory directory;
    directory.write("one.script", "func f() { a = 1;");
    directory.write("two.script", "b = 2; } f();");
    Script script;

    script.interpreter.loadFile("one.script");
    script.interpreter.runFile("two.script");

    EXPECT_EQ(script["a"], "int 1");
    EXPECT_EQ(script["b"], "int 2");
}

TEST(LoadFile, AddsTheBodyOfAFileThatIsLoadedTwice)
{
    const TemporaryDirectory directory;
    directory.write("library.script", "func f() { n = n + 1; }");
    Script script("n = 0;");

    script.interpreter.loadFile("library.script");
    script.interpreter.loadFile("library.script");
    script.run("f();");

    EXPECT_EQ(script["n"], "int 2");
}

TEST(BuiltinPrint, WritesEachValueAndASpace)
{
    ScriptValue values[] = {ScriptValue("a"s), ScriptValue(1), array({real(0.5F)})};
    CapturedErrors errors;

    const ScriptValue result = builtinPrint("print", 3, values);

    EXPECT_EQ(errors.text(), "a 1 Array { [0]=0.5 } \n");
    EXPECT_EQ(described(result), "int 3");
}

TEST(BuiltinPrint, WritesALineEndForNoValues)
{
    CapturedErrors errors;

    const ScriptValue result = builtinPrint("print", 0, nullptr);

    EXPECT_EQ(errors.text(), "\n");
    EXPECT_EQ(described(result), "int 0");
}

TEST(BuiltinPrint, GivesAScriptTheNumberOfItsValues)
{
    CapturedErrors errors;
    Script script("x = print(\"a\", 1);");

    EXPECT_EQ(errors.text(), "a 1 \n");
    EXPECT_EQ(script["x"], "int 2");
}
} // namespace tamor::test
