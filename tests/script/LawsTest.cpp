// Laws of the scanners, and the engine's interpreter beside the plain one, on generated texts.
#include "tests/script/PlainInterpreter.h"
#include "tests/script/ProgramGenerator.h"
#include "tests/script/ScriptTesting.h"
#include "tests/support/PrintedBy.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::test
{
namespace
{
/// All that can be seen of an interpreter.
template <typename Interpreter>
std::string stateOf(const Interpreter& interpreter)
{
    std::string text = "depth " + std::to_string(interpreter.blockDepth) + "\n";
    for (const auto& [name, value] : interpreter.variables)
        text += name + " = " + described(value) + "\n";
    text += describedFunctions(interpreter.functions);
    for (const auto& [name, builtin] : interpreter.builtins)
        text += "builtin " + name + (builtin ? " is set\n" : " is null\n");
    return text;
}

/// What the engine's interpreter makes of a text that is run twice.
std::string engineOutcome(const std::string& text)
{
    Script script;
    std::string parsed;
    ScriptValue first;
    ScriptValue second;
    const std::string errors = printedBy([&] {
        std::vector<ScriptToken> list;
        parseText(script.interpreter, list, text);
        parsed = described(list);
        first = runTokens(script.interpreter, list);
        second = runTokens(script.interpreter, list);
    });
    return parsed + "\n" + described(first) + "\n" + described(second) + "\n" + errors +
           stateOf(script.interpreter);
}

/// The same of the plain interpreter. Throws `NoOutcome`.
std::string plainOutcome(const std::string& text)
{
    PlainInterpreter interpreter;
    std::vector<ScriptToken> list;
    interpreter.parse(list, text);
    const std::string parsed = described(list);
    const ScriptValue first = interpreter.run(list);
    const ScriptValue second = interpreter.run(list);
    return parsed + "\n" + described(first) + "\n" + described(second) + "\n" +
           interpreter.messages + stateOf(interpreter);
}

/// The tokens and functions of a text, or the word for an end inside a string or an index.
template <typename Parse>
std::string parseOutcome(Parse parse)
{
    try {
        return parse();
    } catch (const std::out_of_range&) {
        return "past the end";
    }
}
} // namespace

TEST(ScannerLaws, GiveBackEveryByteThatTheyTake)
{
    Generator generator(1);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = generator.soup(generator.below(12));
        for (std::string (*read)(std::string&) : {readNumberText, readName, readVariablePath}) {
            std::string rest = text;
            try {
                const std::string taken = read(rest);
                EXPECT_EQ(taken + rest, text);
            } catch (const std::out_of_range&) {
                EXPECT_NE(text.find('['), std::string::npos) << text;
            }
        }
    }
}

TEST(ScannerLaws, TakeWholeRunsAndNothingElse)
{
    Generator generator(2);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = generator.soup(generator.below(12));
        std::string rest = text;
        const std::string number = readNumberText(rest);
        EXPECT_FALSE(isNumberChar(rest)) << text;
        EXPECT_EQ(number.find_first_not_of("0123456789.-"), std::string::npos) << text;

        rest = text;
        const std::string name = readName(rest);
        EXPECT_FALSE(isNameChar(rest)) << text;
        for (const char c : name)
            EXPECT_TRUE(isNameChar(std::string(1, c))) << text;

        rest = text;
        skipSpace(rest);
        EXPECT_FALSE(isSpaceChar(rest)) << text;
        EXPECT_TRUE(isAllSpace(text.substr(0, text.size() - rest.size()))) << text;
        EXPECT_TRUE(text.ends_with(rest)) << text;
    }
}

TEST(ScannerLaws, ReadBackWhatIsWrittenAsAStringLiteral)
{
    Generator generator(3);
    for (int i = 0; i < 20000; ++i) {
        const std::string content = generator.soup(generator.below(12));
        const std::string behind = generator.soup(generator.below(5));
        std::string literal = "\"";
        for (const char c : content) {
            if (c == '"' || c == '\'' || generator.oneIn(4))
                literal += '\'';
            literal += c;
        }
        std::string rest = literal + "\"" + behind;

        EXPECT_EQ(readStringLiteral(rest), content);
        EXPECT_EQ(rest, behind);
    }
}

TEST(ParserLaws, GiveThePlainListsForAnyBytes)
{
    Generator generator(4);
    int parsedTexts = 0;
    for (int i = 0; i < 8000; ++i) {
        const std::string text = generator.soup(generator.below(40));
        const std::string expected = parseOutcome([&] {
            PlainInterpreter interpreter;
            std::vector<ScriptToken> list;
            interpreter.parse(list, text);
            return described(list) + stateOf(interpreter);
        });
        const std::string outcome = parseOutcome([&] {
            ScriptInterpreter interpreter;
            std::vector<ScriptToken> list;
            parseText(interpreter, list, text);
            return described(list) + stateOf(interpreter);
        });
        ASSERT_EQ(outcome, expected) << text;
        parsedTexts += expected != "past the end";
    }
    EXPECT_GT(parsedTexts, 2000);
}

TEST(ArithmeticLaws, RoundTheSameAsInTheWidestType)
{
    std::mt19937 random(7);
    const auto number = [&] {
        ScriptValue value;
        if (random() % 4 == 0)
            value.setInt(static_cast<int>(random()) >> (random() % 31));
        else // any bits at all: subnormal, huge, infinite
            value.setFloat(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
        return value;
    };
    const auto wide = [](const ScriptValue& value) {
        return value.type == TYPE_INT ? static_cast<long double>(value.number)
                                      : static_cast<long double>(value.asFloat());
    };
    const auto isSame = [](const ScriptValue& result, long double expected) {
        const float rounded = static_cast<float>(expected);
        return std::isnan(rounded) ? std::isnan(result.asFloat())
                                   : std::bit_cast<std::int32_t>(rounded) == result.number;
    };
    for (int i = 0; i < 200000; ++i) {
        const ScriptValue a = number();
        const ScriptValue b = number();
        EXPECT_TRUE(isSame(divide(a, b), wide(a) / wide(b))) << described(a) << described(b);
        if (a.type == TYPE_INT && b.type == TYPE_INT)
            continue;
        EXPECT_TRUE(isSame(add(a, b), wide(a) + wide(b))) << described(a) << described(b);
        EXPECT_TRUE(isSame(subtract(a, b), wide(a) - wide(b))) << described(a) << described(b);
        EXPECT_TRUE(isSame(multiply(a, b), wide(a) * wide(b))) << described(a) << described(b);
    }
}

TEST(InterpreterLaws, HaveThePlainOutcomeForPrograms)
{
    Generator generator(6);
    int comparedPrograms = 0;
    for (int i = 0; i < 3000; ++i) {
        Words words = generator.program();
        if (i % 5 == 0)
            generator.disturb(words);
        const std::string text = generator.joined(words);
        std::string expected;
        try {
            expected = plainOutcome(text);
        } catch (const NoOutcome&) {
            continue;
        } catch (const std::out_of_range&) {
            continue;
        }
        ASSERT_EQ(engineOutcome(text), expected) << text;
        ++comparedPrograms;
    }
    EXPECT_GT(comparedPrograms, 1000);
}
} // namespace tamor::test
