// Laws of the scanners, and the engine's interpreter beside the plain one, on generated texts.
#include "tests/script/PlainInterpreter.h"
#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::test
{
namespace
{
using Words = std::vector<std::string>;

/// Texts from a fixed seed.
class Generator
{
public:
    explicit Generator(unsigned seed) : random(seed) {}

    int below(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
    bool oneIn(int count) { return below(count) == 0; }
    std::string oneOf(const Words& words)
    {
        return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
    }

    /// Bytes that a scanner tells apart, without order.
    std::string soup(int length)
    {
        static constexpr std::string_view alphabet = "ab-_:[]()09. \t\n\r\"'{};,+=!<x\x80";
        std::string text;
        for (int i = 0; i < length; ++i)
            text += alphabet[static_cast<std::size_t>(below(static_cast<int>(alphabet.size())))];
        return text;
    }

    /// A program of which most parts mean something, as words.
    Words program()
    {
        Words words;
        if (oneIn(2))
            function(words);
        statements(words, 2);
        if (oneIn(3))
            function(words);
        statements(words, 2);
        return words;
    }

    /// Drops, repeats, swaps or replaces a few words.
    void disturb(Words& words)
    {
        for (int i = below(4); i > 0 && words.size() > 2; --i) {
            const auto at = static_cast<std::size_t>(below(static_cast<int>(words.size()) - 1));
            switch (below(4)) {
            case 0:
                words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
                break;
            case 1:
                words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), words[at]);
                break;
            case 2:
                std::swap(words[at], words[at + 1]);
                break;
            default:
                words[at] = oneOf({"(",     ")",   "{",      "}",    ";",     ",",       "!",
                                   "++",    "=",   "a",      "1",    "\"x\"", "return ", "if",
                                   "while", "for", "func f", "a[0]", "f",     "-1"});
            }
        }
    }

    /// The words with a space, a line end or, where they stay apart, nothing between them.
    std::string joined(const Words& words)
    {
        std::string text;
        for (const std::string& word : words) {
            text += word;
            if (!word.empty() && std::string_view("(){};,=").find(word.back()) == std::string::npos)
                text += oneIn(9) ? "\n" : " ";
        }
        return text;
    }

private:
    void expression(Words& words, int depth)
    {
        operand(words, depth);
        for (int i = below(3); i > 0; --i) {
            words.push_back(
                oneOf({"+", "+", "*", "/", "%", "^", "<", ">", "<=", ">=", "==", "&&", "||", "="}));
            operand(words, depth);
        }
    }

    void operand(Words& words, int depth)
    {
        switch (depth > 0 ? below(10) : below(7)) {
        case 0:
        case 1:
        case 2:
            words.push_back(oneOf({"0", "1", "2", "3", "7", ".5", "2.25", "-1", "-1.5"}));
            break;
        case 3:
            words.push_back(oneOf({"\"x\"", "\"true\"", "\"\"", "\"it''s\"", "\"1\""}));
            break;
        case 7:
            words.push_back("(");
            expression(words, depth - 1);
            words.push_back(")");
            break;
        case 8:
            call(words, depth - 1);
            break;
        default:
            words.push_back(path());
        }
    }

    std::string path()
    {
        return oneOf({"a", "a", "b", "s", "s", "n", "pi", "a[0]", "a[1]", "a[0][1]", "b[2]", "a[i]",
                      "::p", "unknown"});
    }

    void call(Words& words, int depth)
    {
        words.push_back(oneOf({"f", "f", "g", "print"}));
        words.push_back("(");
        for (int i = below(5); i > 0; --i) {
            // A nested call has no comma that would not cut the outer one.
            if (depth > 0 && oneIn(4))
                words.push_back("f()");
            else
                expression(words, 0);
            if (i > 1)
                words.push_back(",");
        }
        words.push_back(")");
    }

    void statement(Words& words, int depth)
    {
        const std::string counter = depth == 2 ? "i" : depth == 1 ? "k" : "m";
        switch (depth > 0 ? below(12) : below(7)) {
        case 0:
        case 1:
            words.insert(words.end(), {path(), "="});
            expression(words, 2);
            break;
        case 2: {
            const std::string target = path();
            words.insert(words.end(), {target, "=", target, "+"});
            operand(words, 1);
            break;
        }
        case 3:
            expression(words, 2);
            break;
        case 4:
            call(words, 1);
            break;
        case 5:
            words.insert(words.end(), {path(), "++"});
            break;
        case 7:
        case 8:
            words.insert(words.end(), {"if", "("});
            expression(words, 1);
            words.insert(words.end(), {")", "{"});
            statements(words, depth - 1);
            words.push_back("}");
            return;
        case 9:
            words.insert(words.end(),
                         {counter, "=", "0", ";", "while", "(", counter, "<", "3", ")", "{"});
            statements(words, depth - 1);
            words.insert(words.end(), {counter, "=", counter, "+", "1", ";", "}"});
            return;
        case 10:
            words.insert(words.end(), {"for", "(", counter, "=", "0", ";", counter, "<", "3", ";",
                                       counter, "=", counter, "+", "1", ")", "{"});
            statements(words, depth - 1);
            words.push_back("}");
            return;
        case 11:
            words.insert(words.end(), {"if", "("});
            expression(words, 1);
            words.push_back(")");
            call(words, 0);
            break;
        default:
            if (oneIn(8))
                words.insert(words.end(), {"return ", oneOf({"1", "\"true\"", "0", "a"})});
            else
                words.push_back(path());
        }
        words.push_back(";");
    }

    void statements(Words& words, int depth)
    {
        for (int i = 1 + below(4); i > 0; --i)
            statement(words, depth);
    }

    void function(Words& words)
    {
        words.push_back(oneIn(2) ? "func f" : "func g");
        words.push_back("(");
        words.push_back(oneOf({"", "p", "a", "p , q", "n , p , a", "3"}));
        words.insert(words.end(), {")", "{"});
        statements(words, 1);
        if (oneIn(2))
            words.insert(words.end(), {"return ", oneOf({"1", "\"r\"", "p"}), ";"});
        words.push_back("}");
    }

    std::mt19937 random;
};

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
    // A stream in memory: a file for each of thousands of programs takes longer than all of them.
    std::ostringstream errors;
    std::streambuf* const before = std::cerr.rdbuf(errors.rdbuf());
    Script script;
    std::vector<ScriptToken> list;
    parseText(script.interpreter, list, text);
    const std::string parsed = described(list);
    const ScriptValue first = runTokens(script.interpreter, list);
    const ScriptValue second = runTokens(script.interpreter, list);
    std::cerr.rdbuf(before);
    return parsed + "\n" + described(first) + "\n" + described(second) + "\n" + errors.str() +
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
