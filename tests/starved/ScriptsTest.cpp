// An interpreter, when memory runs out while it reads and runs a script: it reads and runs the next.
#include "script/ScriptInterpreter.h"
#include "tests/starved/Shortage.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

namespace tamor::test
{
namespace
{
/// All kinds of statements, values and calls, with texts too long for their own record.
constexpr const char* program =
    "func twice(value) { kept = value + \" and a text that is long enough for the heap\";"
    "                    value + value; }\n"
    "func deep(level) { if (level > 0) { next = level + -1; deep(next); } back = level; }\n"
    "sum = 0; j = 0; text = \"a text that does not fit into the record of a string\";\n"
    "list[0] = text; list[3][2] = 7; copy = list;\n"
    "for (i = 0; i < 3; i = i + 1) { sum = sum + twice(i) * 2; list[i] = copy; }\n"
    "while (j < 2) { j++; other = text + j; }\n"
    "deep(3);\n"
    "print(text, sum, list[3][2], 1 == 2);\n"
    "unknown(1, text);\n";

/// Runs a script in a world without anything, and says what it leaves there.
std::string variablesAfter(ScriptInterpreter& interpreter, const std::string& file)
{
    interpreter.blockDepth = 0;
    interpreter.currentFunction = nullptr;
    interpreter.functions.clear();
    interpreter.variables.clear();
    interpreter.runFile(file);
    std::ostringstream text;
    for (const auto& [name, value] : interpreter.variables)
        printValue(text << name << " = ", value) << "; ";
    return text.str();
}

TEST(StarvedInterpreter, IsMadeOrNot)
{
    const int refused = starve([](Shortage& shortage) {
        std::unique_ptr<ScriptInterpreter> interpreter;
        const bool isThrough =
            shortage.during([&] { interpreter = std::make_unique<ScriptInterpreter>(); });
        ASSERT_EQ(isThrough, interpreter != nullptr);
        // What is made is whole.
        if (isThrough) {
            EXPECT_EQ(interpreter->variables.size(), 3U);
            EXPECT_EQ(interpreter->builtins.size(), 1U);
        }
    });
    EXPECT_GE(refused, 10);
}

TEST(StarvedInterpreter, RunsAgainAfterwards)
{
    const TemporaryDirectory directory;
    directory.write("some.script", program);
    const CapturedErrors errors;
    const std::string file = "some.script";
    ScriptInterpreter first;
    const std::string expected = variablesAfter(first, file);
    EXPECT_THAT(expected, testing::HasSubstr("i = 3; "));
    const int descriptors = openDescriptors();
    const int refused = starve([&](Shortage& shortage) {
        ScriptInterpreter interpreter;
        shortage.during([&] { interpreter.runFile(file); });

        EXPECT_EQ(variablesAfter(interpreter, file), expected);
    });
    EXPECT_GE(refused, 200);
    EXPECT_EQ(openDescriptors(), descriptors);
}
} // namespace
} // namespace tamor::test
