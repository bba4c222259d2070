// Runs lists of any tokens, as a host may put them together: within limits nothing may lead outside,
// and where the plain interpreter has an outcome the engine's must be the same. With libFuzzer's own
// main this is the fuzzer; with ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/script/PlainInterpreter.h"
#include "tests/script/ScriptDescriptions.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/FuzzInput.h"
#include "tests/support/PrintedBy.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
using namespace tamor;
using namespace tamor::test;

using Tokens = std::vector<ScriptToken>;

constexpr int mostTokens = 24;
constexpr int deepest = 3;
constexpr std::int32_t remainder = 7; // its row of `scriptOperators`

ScriptValue valueOf(FuzzInput& input)
{
    ScriptValue value;
    switch (input.below(8)) {
    case 0:
    case 1:
        return {input.below(8) - 2};
    case 2:
        return {input.take<std::int32_t>()};
    case 3:
        value.setFloat(static_cast<float>(input.below(16)) / 4.0F - 1.0F);
        return value;
    case 4:
        return {std::string(input.below(2) == 0 ? "true" : "a text that is somewhat longer")};
    case 5:
        value.arrayElement(static_cast<unsigned>(input.below(4))) = ScriptValue(input.below(9));
        value.arrayElement(0).arrayElement(1) = ScriptValue(std::string("inner"));
        return value;
    case 6:
        // A number that its tag does not select.
        value.number = input.take<std::int32_t>();
        return value;
    default:
        return value;
    }
}

Tokens listOf(FuzzInput& input, int depth);

ScriptToken tokenOf(FuzzInput& input, int depth)
{
    static constexpr const char* names[] = {
        "a",   "b",   "i",        "b[1]", "b[1][2]", "a[i]",  "a[", "]", "",
        "::p", "[3]", "a[0]b[1]", "true", "b[ 1 ]x", "a[-1]", "9",  "f", "print"};
    ScriptToken token;
    switch (input.below(9)) {
    case 0:
        token.kind = TOK_SEMICOLON;
        break;
    case 1:
        token.kind = TOK_VARIABLE;
        break;
    case 2:
        token.kind = TOK_NUMBER;
        break;
    case 3:
        token.kind = TOK_STRING;
        break;
    case 4:
    case 5:
        token.kind = input.below(scriptOperatorCount);
        return token;
    case 6:
        token.kind = TOK_CALL;
        break;
    case 7:
        // Any kind that there is, and a few that there are not.
        token.kind = input.below(38) - 4;
        break;
    default:
        token.kind = input.below(4) == 0 ? input.take<std::int32_t>() : TOK_ARGEND;
    }
    token.name = input.oneOf(names);
    token.value = valueOf(input);
    if (depth < deepest && input.below(3) == 0)
        token.args = listOf(input, depth + 1);
    return token;
}

Tokens listOf(FuzzInput& input, int depth)
{
    Tokens tokens;
    for (int count = input.below(mostTokens >> depth); count > 0 && input.hasMore(); count--)
        tokens.push_back(tokenOf(input, depth));
    return tokens;
}

/// A host's lists: what runs, and a function that it may call.
struct Lists
{
    Tokens run;
    Tokens parameters;
    Tokens body;
};

bool holdsRemainder(const Tokens& tokens)
{
    for (const ScriptToken& token : tokens)
        if (token.kind == remainder || holdsRemainder(token.args))
            return true;
    return false;
}

template <class World>
std::string stateOf(const World& world, const ScriptValue& value)
{
    std::string text = described(value) + " at " + std::to_string(world.blockDepth) + "\n";
    for (const auto& [name, variable] : world.variables)
        text += name + " = " + described(variable) + "\n";
    return text;
}

/// What a run leaves and prints.
std::string engineOutcome(const Lists& lists, const ScriptLimits& limits)
{
    ScriptInterpreter interpreter;
    interpreter.limits = limits;
    interpreter.functions["f"] = {lists.parameters, lists.body};
    Tokens run = lists.run;
    ScriptValue value;
    const std::string errors = printedBy([&] { value = runTokens(interpreter, run); });
    return stateOf(interpreter, value) + errors;
}

std::string plainOutcome(const Lists& lists)
{
    PlainInterpreter interpreter;
    interpreter.functions["f"] = {lists.parameters, lists.body};
    const ScriptValue value = interpreter.run(lists.run);
    return stateOf(interpreter, value) + interpreter.messages;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    Lists lists;
    lists.run = listOf(input, 0);
    lists.parameters = listOf(input, 1);
    lists.body = listOf(input, 0);

    // A remainder by 0 ends the process, limits or not.
    if (!holdsRemainder(lists.run) && !holdsRemainder(lists.parameters) &&
        !holdsRemainder(lists.body))
        engineOutcome(lists, {5000, 1000000, 50});

    std::string expected;
    try {
        expected = plainOutcome(lists);
    } catch (const NoOutcome&) {
        return 0;
    } catch (const std::out_of_range&) {
        return 0;
    }
    const std::string found = engineOutcome(lists, {});
    if (found != expected)
        failFuzzing("the plain interpreter ends with\n" + expected + "the engine's with\n" + found);
    return 0;
}
