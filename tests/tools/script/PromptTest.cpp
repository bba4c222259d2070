#include "tests/support/TemporaryDirectory.h"
#include "tests/tools/script/Terminal.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
namespace
{
class ScriptPrompt : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(terminal.shows("> ") && terminal.takesKeys()); }

    /// Types a line and waits for `answer` and for the next prompt.
    testing::AssertionResult answers(const std::string& line, const std::string& answer)
    {
        terminal.type(line + "\r");
        if (!terminal.shows(answer) || !terminal.shows("> ") || !terminal.takesKeys())
            return testing::AssertionFailure() << terminal.written();
        return testing::AssertionSuccess();
    }

    /// Types a line and waits to be asked for the rest of the statement.
    testing::AssertionResult goesOnBehind(const std::string& line)
    {
        terminal.type(line + "\r");
        if (!terminal.shows(". "))
            return testing::AssertionFailure() << terminal.written();
        return testing::AssertionSuccess();
    }

    const TemporaryDirectory directory;
    Terminal terminal{{TAMOR_SCRIPT_PROGRAM}};
};

TEST_F(ScriptPrompt, ShowsTheValueThatAStatementLeaves)
{
    EXPECT_TRUE(answers("6 * 7", "\n42\r\n"));
    EXPECT_TRUE(answers("0 * 5", "\n0\r\n")) << "a 0 is a value too";
    EXPECT_TRUE(answers("name = \"a\" + 1", "\na1\r\n"));
    EXPECT_TRUE(answers("list[1] = 5", "\n5\r\n"));
    EXPECT_TRUE(answers("list", "\nArray { [0]=NULL [1]=5 }\r\n"));
}

TEST_F(ScriptPrompt, ShowsNoValueOfAPrint)
{
    terminal.type("print(1)\r");
    EXPECT_TRUE(terminal.shows("print(1)\r\n1 \r\n> ")) << terminal.written();
}

TEST_F(ScriptPrompt, TakesAStatementOverSeveralLines)
{
    EXPECT_TRUE(goesOnBehind("func twice(n) {"));
    EXPECT_TRUE(goesOnBehind("n * 2;"));
    EXPECT_TRUE(answers("}", ""));
    EXPECT_TRUE(goesOnBehind("twice("));
    EXPECT_TRUE(answers("21)", "\n42\r\n"));
}

TEST_F(ScriptPrompt, WaitsForTheBlockOfAHeaderAndTheEndOfAString)
{
    EXPECT_TRUE(goesOnBehind("if (true)"));
    EXPECT_TRUE(goesOnBehind("{ print(\"in"));
    EXPECT_TRUE(answers("side\"); }", "in\r\nside \r\n"));
}

TEST_F(ScriptPrompt, EndsARunningScriptAtAnInterruptAndGoesOn)
{
    terminal.type("n = 0; while (true) { n = n + 1; if (n == 1) { print(\"runs\"); } }\r");
    ASSERT_TRUE(terminal.shows("\nruns "));

    terminal.type("\x03");

    ASSERT_TRUE(terminal.shows("interrupted\r\n> "));
    EXPECT_TRUE(answers("m = n > 0", "\n1\r\n"));
}

TEST_F(ScriptPrompt, EndsALoopInAFunctionAtAnInterruptAndCallsItAgain)
{
    EXPECT_TRUE(answers(
        "func loop(n) { print(\"loops\"); for (i = 0; i < n; i = i + 1) { x = i; } }", "\n"));
    terminal.type("loop(2000000000)\r");
    ASSERT_TRUE(terminal.shows("\nloops "));

    terminal.type("\x03");

    ASSERT_TRUE(terminal.shows("interrupted\r\n> "));
    EXPECT_TRUE(answers("loop(3); x", "\n2\r\n"));
}

TEST_F(ScriptPrompt, DropsALineAtAnInterrupt)
{
    terminal.type("print(\"never");
    ASSERT_TRUE(terminal.shows("never"));

    terminal.type("\x03");

    ASSERT_TRUE(terminal.shows("> "));
    EXPECT_TRUE(answers("1 + 1", "\n2\r\n"));
}

TEST_F(ScriptPrompt, CompletesNames)
{
    EXPECT_TRUE(answers("velocity = 12", "\n12\r\n"));

    terminal.type("velo\t * 2\r");

    EXPECT_TRUE(terminal.shows("\n24\r\n"));
}

TEST_F(ScriptPrompt, HasAHistory)
{
    EXPECT_TRUE(answers("11 * 11", "\n121\r\n"));
    EXPECT_TRUE(answers("5", "\n5\r\n"));

    terminal.type("\x1b[A\x1b[A\r");

    EXPECT_TRUE(terminal.shows("\n121\r\n"));
}

TEST_F(ScriptPrompt, RunsNothingThatWouldEndTheProgram)
{
    EXPECT_TRUE(answers("1 2", "prompt:1:3: error: the expression does not come to one value"));
    EXPECT_TRUE(answers("3", "\n3\r\n"));
}

TEST_F(ScriptPrompt, ListsVariablesAndFunctions)
{
    EXPECT_TRUE(answers("size = 3", "\n3\r\n"));
    EXPECT_TRUE(answers("func area(w, h) { w * h; }", "\n"));

    EXPECT_TRUE(answers(":vars", "false = 0\r\npi = 3.14159\r\nsize = 3\r\ntrue = 1\r\n"));
    EXPECT_TRUE(answers(":functions", "area(w, h)\r\nitem(...), built in\r\n"
                                      "length(...), built in\r\nprint(...), built in\r\n"
                                      "sqrt(...), built in\r\n"));
}

TEST_F(ScriptPrompt, ShowsTokensLoadsFilesAndHelps)
{
    const std::string library = directory.write("twice.script", "func twice(n) { n * 2; }\n");

    EXPECT_TRUE(answers(":tokens x = 1", ">x< = 1 ;\r\n"));
    EXPECT_TRUE(answers(":load " + library, "\n"));
    EXPECT_TRUE(answers("twice(4)", "\n8\r\n"));
    EXPECT_TRUE(answers(":load none.script", "cannot read 'none.script'\r\n"));
    EXPECT_TRUE(answers(":help", ":quit"));
    EXPECT_TRUE(answers(":hlep", "no command ':hlep'; :help lists them\r\n"));
}

TEST_F(ScriptPrompt, EndsAtQuit)
{
    terminal.type(":quit\r");
    EXPECT_EQ(terminal.end(), 0);
}

TEST_F(ScriptPrompt, EndsAtTheEndOfTheInput)
{
    terminal.type("\x04");
    EXPECT_EQ(terminal.end(), 0);
}
} // namespace
} // namespace tamor::test
