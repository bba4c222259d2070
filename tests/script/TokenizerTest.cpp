#include "script/Tokenizer.h"

#include "tests/script/ScriptTesting.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// The characters, of all 256, for which a test of the front is true.
std::string charactersOf(bool (*test)(const std::string&))
{
    std::string characters;
    for (int c = 0; c < 256; ++c)
        if (test(std::string(1, static_cast<char>(c)) + "?"))
            characters += static_cast<char>(c);
    return characters;
}
} // namespace

TEST(StartsWith, AsksForThePrefixAtPositionZero)
{
    EXPECT_TRUE(startsWith("while", "wh"));
    EXPECT_TRUE(startsWith("while", ""));
    EXPECT_TRUE(startsWith("", ""));
    EXPECT_FALSE(startsWith("awhile", "while"));
    EXPECT_FALSE(startsWith("whil", "while"));
    EXPECT_FALSE(startsWith("", "a"));
}

TEST(CharacterClasses, HaveTheseCharactersAndNoOthers)
{
    EXPECT_EQ(charactersOf(isSpaceChar), "\t\n ");
    EXPECT_EQ(charactersOf(isNumberChar), "-.0123456789");
    EXPECT_EQ(charactersOf(isNameChar), "-:ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(charactersOf(isQuoteChar), "\"");
}

TEST(CharacterClasses, AreFalseForAnEmptyText)
{
    EXPECT_FALSE(isSpaceChar(""));
    EXPECT_FALSE(isNumberChar(""));
    EXPECT_FALSE(isNameChar(""));
    EXPECT_FALSE(isQuoteChar(""));
}

TEST(CharacterClasses, LookAtTheFrontOnly)
{
    EXPECT_FALSE(isSpaceChar("a "));
    EXPECT_FALSE(isNumberChar("a1"));
    EXPECT_FALSE(isNameChar("1a"));
    EXPECT_FALSE(isQuoteChar("a\""));
}

TEST(IsAllSpace, AsksEveryCharacter)
{
    EXPECT_TRUE(isAllSpace(""));
    EXPECT_TRUE(isAllSpace(" \t\n "));
    EXPECT_FALSE(isAllSpace(" x"));
    EXPECT_FALSE(isAllSpace("\r")) << "a carriage return is no space";
}

TEST(SkipSpace, RemovesTheRunAtTheFront)
{
    std::string text = " \t\nx y";
    skipSpace(text);
    EXPECT_EQ(text, "x y");
    skipSpace(text);
    EXPECT_EQ(text, "x y");
    text = "  ";
    skipSpace(text);
    EXPECT_EQ(text, "");
}

TEST(ReadNumberText, TakesTheWholeRun)
{
    std::string text = "1.2.3-4x5";
    EXPECT_EQ(readNumberText(text), "1.2.3-4");
    EXPECT_EQ(text, "x5");
    EXPECT_EQ(readNumberText(text), "");
    EXPECT_EQ(text, "x5");
}

TEST(ReadName, TakesTheWholeRun)
{
    std::string text = "a-b_c::d1";
    EXPECT_EQ(readName(text), "a-b_c::d");
    EXPECT_EQ(text, "1");
    EXPECT_EQ(readName(text), "");
    EXPECT_EQ(text, "1");
}

TEST(ReadVariablePath, TakesANameWithItsIndices)
{
    std::string text = "grid[3][4] = 1";
    EXPECT_EQ(readVariablePath(text), "grid[3][4]");
    EXPECT_EQ(text, " = 1");
}

TEST(ReadVariablePath, GoesOnWithANameBehindAnIndex)
{
    std::string text = "a[1]b[2]+";
    EXPECT_EQ(readVariablePath(text), "a[1]b[2]");
    EXPECT_EQ(text, "+");
}

TEST(ReadVariablePath, TakesOneCharacterBehindAnIndexWhateverItIs)
{
    std::string text = "a[i] = 1";
    EXPECT_EQ(readVariablePath(text), "a[i");
    EXPECT_EQ(text, "] = 1");

    text = "a[1+2]";
    EXPECT_EQ(readVariablePath(text), "a[1+");
    EXPECT_EQ(text, "2]");

    text = "a[ 1]";
    EXPECT_EQ(readVariablePath(text), "a[ ");
    EXPECT_EQ(text, "1]");
}

TEST(ReadVariablePath, TakesBracketsInARow)
{
    std::string text = "a[[3]]";
    EXPECT_EQ(readVariablePath(text), "a[[3]");
    EXPECT_EQ(text, "]");
}

TEST(ReadVariablePath, IsEmptyWhereNoPathStarts)
{
    std::string text = "1a";
    EXPECT_EQ(readVariablePath(text), "");
    EXPECT_EQ(text, "1a");
}

TEST(ReadVariablePath, ThrowsWhereTheTextEndsInsideAnIndex)
{
    for (const char* path : {"a[", "a[3", "a[3][", "["}) {
        std::string text = path;
        EXPECT_THROW(readVariablePath(text), std::out_of_range) << path;
    }
}

TEST(ReadStringLiteral, TakesWhatStandsBetweenTheQuotes)
{
    std::string text = "\"a b\\n,(\" rest";
    EXPECT_EQ(readStringLiteral(text), "a b\\n,(");
    EXPECT_EQ(text, " rest");

    text = "\"\"";
    EXPECT_EQ(readStringLiteral(text), "");
    EXPECT_EQ(text, "");
}

TEST(ReadStringLiteral, KeepsLineEndsTabsAndCarriageReturns)
{
    std::string text = "\"a\n\tb\r\"";
    EXPECT_EQ(readStringLiteral(text), "a\n\tb\r");
}

TEST(ReadStringLiteral, TakesTheCharacterBehindAnApostropheAsItStands)
{
    std::string text = "\"it's\"";
    EXPECT_EQ(readStringLiteral(text), "its");
    text = "\"say '\"hi'\"\"";
    EXPECT_EQ(readStringLiteral(text), "say \"hi\"");
    text = "\"it''s\"";
    EXPECT_EQ(readStringLiteral(text), "it's");
    text = "\"''''\"x";
    EXPECT_EQ(readStringLiteral(text), "''");
    EXPECT_EQ(text, "x");
}

TEST(ReadStringLiteral, ThrowsWhereTheTextEndsInsideTheString)
{
    for (const char* literal : {"\"", "\"abc", "\"abc'", "\"abc'\""}) {
        std::string text = literal;
        EXPECT_THROW(readStringLiteral(text), std::out_of_range) << literal;
    }
}

TEST(ResolveVariable, CreatesTheNameThatIsAskedFor)
{
    Script script;

    ScriptValue* const slot = resolveVariable(script.interpreter, "speed");

    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slot, &script.interpreter.variables.at("speed"));
    EXPECT_EQ(script["speed"], "null");
}

TEST(ResolveVariable, CreatesAndExtendsTheArraysOfAPath)
{
    Script script;
    script.interpreter.variables["grid"] = ScriptValue(5);

    ScriptValue* const slot = resolveVariable(script.interpreter, "grid[2][1]");

    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slot, &script.interpreter.variables["grid"].items.at(2).items.at(1));
    EXPECT_EQ(script["grid"], "[null, null, [null, null]]");
}

TEST(ResolveVariable, StopsAtAnIndexThatIsNoNumber)
{
    Script script;

    EXPECT_EQ(resolveVariable(script.interpreter, "a[i"), &script.interpreter.variables["a"]);
    EXPECT_EQ(script["a"], "null");
    EXPECT_EQ(script["i"], "none");
    EXPECT_EQ(resolveVariable(script.interpreter, "a["), &script.interpreter.variables["a"]);
}

TEST(ResolveVariable, StartsOverAtANameBehindAnIndex)
{
    Script script;

    EXPECT_EQ(resolveVariable(script.interpreter, "a[1]b"), &script.interpreter.variables["b"]);
    EXPECT_EQ(script["a"], "[null, null]");
    EXPECT_EQ(script["b"], "null");
}

TEST(ResolveVariable, PassesOverSpaceAndBracketsBehindAnIndex)
{
    Script script;

    ScriptValue* const slot = resolveVariable(script.interpreter, "a[ 1 ] ]]  ");

    EXPECT_EQ(slot, &script.interpreter.variables["a"].items.at(1));
}

TEST(ResolveVariable, ReadsAnIndexAsAStreamDoes)
{
    Script script;

    struct Row
    {
        const char* path;
        const char* name;
        std::size_t index;
    };
    const Row rows[] = {{"a[1.9]", "a", 1}, {"b[007]", "b", 7},        {"c[2-1]", "c", 2},
                        {"d[.5]", "d", 0},  {"d[-]", "d", 0},          {"d[--1]", "d", 0},
                        {"d[-0]", "d", 0},  {"d[99999999999]", "d", 0}};
    for (const Row& row : rows) {
        const ScriptValue* const slot = resolveVariable(script.interpreter, row.path);
        const std::vector<ScriptValue>& items = script.interpreter.variables[row.name].items;
        ASSERT_EQ(items.size(), row.index + 1) << row.path;
        EXPECT_EQ(slot, &items.back()) << row.path;
    }
}

TEST(ResolveVariable, GivesNullForWhatIsNoPath)
{
    Script script;

    EXPECT_EQ(resolveVariable(script.interpreter, ""), nullptr);
    EXPECT_EQ(resolveVariable(script.interpreter, "1"), nullptr);
    EXPECT_EQ(resolveVariable(script.interpreter, "[1]"), nullptr);
    EXPECT_EQ(resolveVariable(script.interpreter, " a"), nullptr);
    EXPECT_EQ(script["a"], "none");
    EXPECT_EQ(resolveVariable(script.interpreter, "a b"), nullptr);
    EXPECT_EQ(script["a"], "null") << "the name in front was asked for";
}

TEST(ResolveVariable, LeavesOtherNamesWhereTheyAre)
{
    Script script;
    ScriptValue* const first = resolveVariable(script.interpreter, "m");

    for (char c = 'a'; c <= 'z'; ++c)
        resolveVariable(script.interpreter, std::string("v") + c);

    EXPECT_EQ(resolveVariable(script.interpreter, "m"), first);
}
} // namespace tamor::test
