#include "tests/script/Differential.h"

#include "script/ScriptInterpreter.h"
#include "tests/script/PlainInterpreter.h"
#include "tests/script/ProgramGenerator.h"
#include "tests/script/ScriptDescriptions.h"
#include "tests/support/PrintedBy.h"

#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tamor::test
{
namespace
{
/// Something that a host does.
struct Action
{
    int kind;
    /// Which list, token, name or value it is about, whatever there is of them.
    std::size_t place;
    std::size_t choice;
    /// Statements, a definition or an expression, as the kind wants it.
    std::string text;
};
constexpr int actionKinds = 22;

/// A program, and what its host does: at a call of `act` the action of that number, and a few
/// between two runs.
struct Scenario
{
    std::string text;
    std::string otherText;
    std::vector<Action> actions;
    std::vector<std::vector<Action>> between;
};

Action actionOf(Generator& generator)
{
    Action action{generator.below(actionKinds), static_cast<std::size_t>(generator.below(1000)),
                  static_cast<std::size_t>(generator.below(1000)), ""};
    Words words;
    if (generator.oneIn(3))
        generator.function(words);
    else if (generator.oneIn(2))
        generator.statements(words, 1);
    else
        generator.expression(words, 1);
    action.text = generator.joined(words);
    return action;
}

Scenario scenarioOf(unsigned seed)
{
    Generator generator(seed);
    generator.callsHost = true;
    Scenario scenario;
    Words words = generator.program();
    if (generator.oneIn(6))
        generator.disturb(words);
    scenario.text = generator.joined(words);
    words.clear();
    generator.statements(words, 1);
    scenario.otherText = generator.joined(words);
    for (int i = 0; i < 12; ++i)
        scenario.actions.push_back(actionOf(generator));
    for (int run = generator.below(3); run >= 0; --run) {
        auto& actions = scenario.between.emplace_back();
        for (int i = generator.below(4); i > 0; --i)
            actions.push_back(actionOf(generator));
    }
    return scenario;
}

// ------------------------------------------------------------------------------------ Two worlds

struct EngineWorld
{
    void parse(std::vector<ScriptToken>& out, const std::string& text)
    {
        parseText(interpreter, out, text);
    }
    ScriptValue run(std::vector<ScriptToken>& tokens)
    {
        changeLimits();
        return runTokens(interpreter, tokens);
    }
    ScriptValue evaluate(std::vector<ScriptToken> tokens)
    {
        return evaluateTokens(interpreter, tokens);
    }
    void bindAct(const std::string& name);

    /// Every other run has limits, which no program comes to.
    void changeLimits()
    {
        hasLimits = !hasLimits;
        interpreter.limits =
            hasLimits ? ScriptLimits{1ULL << 40, 1ULL << 60, 1U << 20} : ScriptLimits{};
    }

    static inline EngineWorld* current = nullptr;

    bool hasLimits = false;

    const Scenario* scenario = nullptr;
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    std::vector<ScriptToken> other;
};

struct PlainWorld
{
    void parse(std::vector<ScriptToken>& out, const std::string& text)
    {
        interpreter.parse(out, text);
    }
    ScriptValue run(std::vector<ScriptToken>& tokens) { return interpreter.run(tokens); }
    ScriptValue evaluate(const std::vector<ScriptToken>& tokens)
    {
        return interpreter.evaluate(tokens);
    }
    void bindAct(const std::string& name);

    const Scenario* scenario = nullptr;
    PlainInterpreter interpreter;
    std::vector<ScriptToken> list;
    std::vector<ScriptToken> other;
};

// --------------------------------------------------------------------------------------- Actions

ScriptValue valueOf(std::size_t choice)
{
    ScriptValue value;
    switch (choice % 9) {
    case 0:
        return {static_cast<int>(choice)};
    case 1:
        return {-1};
    case 2:
        value.setFloat(2.5F);
        return value;
    case 3:
        return {std::string("a string that is too long for its own record")};
    case 4:
        return {std::string("true")};
    case 5:
        value.arrayElement(1) = ScriptValue(4);
        value.arrayElement(0).arrayElement(1) = ScriptValue(std::string("inner"));
        return value;
    case 6:
        value.setInt(1 << 25);
        return value;
    case 7:
        // What the host may leave in the word for later use is copied with the rest.
        value.setInt(3);
        value.reserved = 7;
        return value;
    default:
        return value;
    }
}

ScriptToken tokenOf(std::size_t choice)
{
    switch (choice % 8) {
    case 0:
        return {TOK_VARIABLE, {}, "a"};
    case 1:
        return {TOK_VARIABLE, {}, "b[1]"};
    case 2:
        return {TOK_SEMICOLON, {}, ""};
    case 3: {
        ScriptToken call(TOK_CALL, {}, "f");
        call.args = {ScriptToken(TOK_VARIABLE, {}, "i"), ScriptToken()};
        return call;
    }
    case 4:
        return {static_cast<std::int32_t>(choice % 20), {}, ""};
    case 5:
        return {TOK_RETURN, {}, ""};
    default: {
        const ScriptValue value = valueOf(choice / 8);
        return {value.type == TYPE_STRING ? TOK_STRING : TOK_NUMBER, value, ""};
    }
    }
}

const char* nameOf(std::size_t choice)
{
    static const char* const names[] = {"a", "b", "s", "n", "i", "k", "p", "::p", "true"};
    return names[choice % std::size(names)];
}

/// One of the lists that there are; null where it is not there.
template <typename World>
std::vector<ScriptToken>* listOf(World& world, std::size_t place)
{
    auto& functions = world.interpreter.functions;
    switch (place % 8) {
    case 0:
    case 1:
        return functions.count("f") > 0 ? &functions["f"].body : nullptr;
    case 2:
        return functions.count("g") > 0 ? &functions["g"].body : nullptr;
    case 3:
        return functions.count("f") > 0 ? &functions["f"].parameters : nullptr;
    case 4:
        return &world.other;
    case 5: // the argument list of some token
        for (ScriptToken& token : world.list)
            if (!token.args.empty() && place / 8 % 3 != 0)
                return &token.args;
        return nullptr;
    default:
        return &world.list;
    }
}

template <typename World>
void edit(World& world, const Action& action)
{
    std::vector<ScriptToken>* const list = listOf(world, action.place);
    if (list == nullptr || list->empty())
        return;
    const std::size_t at = action.place / 8 % list->size();
    const auto there = list->begin() + static_cast<std::ptrdiff_t>(at);
    switch (action.kind) {
    case 0:
        (*list)[at] = tokenOf(action.choice);
        break;
    case 1:
        (*list)[at].value = valueOf(action.choice);
        break;
    case 2:
        list->erase(there);
        break;
    case 3:
        list->insert(there, tokenOf(action.choice));
        break;
    case 4:
        std::swap((*list)[at], list->back());
        break;
    case 5:
        (*list)[at].name = nameOf(action.choice);
        break;
    case 6:
        list->push_back(tokenOf(action.choice));
        break;
    default:
        if (action.choice % 4 == 0)
            list->clear();
    }
}

template <typename World>
ScriptValue perform(World& world, const Action& action)
{
    auto& interpreter = world.interpreter;
    const std::string name = nameOf(action.place);
    if (action.kind < 8) {
        edit(world, action);
        return {};
    }
    std::vector<ScriptToken> tokens;
    switch (action.kind) {
    case 8:
        interpreter.variables.erase(name);
        break;
    case 9:
        if (action.choice % 4 == 0)
            interpreter.variables.clear();
        break;
    case 10:
    case 11:
        interpreter.variables[name] = valueOf(action.choice);
        break;
    case 12:
        interpreter.variables[name].setInt(5);
        break;
    case 13: // a definition, which may be added to a body that runs
        world.parse(tokens, action.text);
        break;
    case 14: {
        world.parse(tokens, action.text);
        tokens.push_back(ScriptToken(TOK_SEMICOLON, {}, ""));
        const bool isF = action.place % 2 == 0;
        interpreter.functions[isF ? "f" : "g"].body = tokens;
        break;
    }
    case 15:
        world.parse(tokens, action.text);
        return world.run(tokens);
    case 16:
        return world.run(world.other);
    case 17:
        return action.choice % 3 == 0 ? world.run(world.list) : ScriptValue();
    case 18:
        if (interpreter.currentFunction == nullptr)
            interpreter.functions.erase(action.choice % 2 == 0 ? "f" : "g");
        break;
    case 19:
        world.bindAct(action.choice % 2 == 0 ? "f" : "print");
        break;
    case 20:
        interpreter.builtins[action.choice % 2 == 0 ? "f" : "g"] = nullptr;
        break;
    default:
        interpreter.builtins.erase(action.choice % 2 == 0 ? "f" : "nobody");
    }
    return valueOf(action.choice);
}

template <typename World>
ScriptValue act(World& world, const ScriptValue* values, std::size_t count)
{
    const std::size_t number =
        count > 0 && values[0].type == TYPE_INT ? static_cast<std::size_t>(values[0].number) : 0;
    const auto& actions = world.scenario->actions;
    return perform(world, actions[number % actions.size()]);
}

void EngineWorld::bindAct(const std::string& name)
{
    interpreter.builtins[name] = [](std::string, std::int32_t count, ScriptValue* values) {
        ScriptValue result = act(*current, values, static_cast<std::size_t>(count));
        // The values are the function's to change.
        for (std::int32_t i = 0; i < count; ++i)
            values[i] = valueOf(5);
        return result;
    };
}

void PlainWorld::bindAct(const std::string& name)
{
    interpreter.builtins[name] = [this](std::vector<ScriptValue>& values) {
        return act(*this, values.data(), values.size());
    };
}

// ------------------------------------------------------------------------------------- Comparing

/// A value with the word for later use, which a copy takes along.
std::string fully(const ScriptValue& value)
{
    std::string text = described(value);
    if (value.reserved != 0)
        text += " reserved " + std::to_string(value.reserved);
    return text + "\n";
}

/// All that can be seen of a world.
template <typename World>
std::string stateOf(const World& world)
{
    std::string text = "depth " + std::to_string(world.interpreter.blockDepth) + "\n";
    for (const auto& [name, value] : world.interpreter.variables)
        text += name + " = " + fully(value);
    text += describedFunctions(world.interpreter.functions);
    for (const auto& [name, builtin] : world.interpreter.builtins)
        text += "builtin " + name + (builtin ? " is set\n" : " is null\n");
    return text + described(world.list) + "\n" + described(world.other) + "\n";
}

template <typename World>
std::string outcome(World& world, const Scenario& scenario)
{
    world.scenario = &scenario;
    world.interpreter.blockDepth = 0;
    world.bindAct("act");
    world.parse(world.list, scenario.text);
    world.parse(world.other, scenario.otherText);
    std::string text = fully(world.run(world.list)) + stateOf(world);
    for (const auto& actions : scenario.between) {
        for (const Action& action : actions)
            text += fully(perform(world, action));
        text += fully(world.run(world.list)) + stateOf(world);
    }
    return text;
}

std::string engineOutcome(const Scenario& scenario)
{
    EngineWorld world;
    EngineWorld::current = &world;
    std::string text;
    const std::string errors = printedBy([&] { text = outcome(world, scenario); });
    return text + errors;
}

std::string plainOutcome(const Scenario& scenario)
{
    PlainWorld world;
    const std::string text = outcome(world, scenario);
    return text + world.interpreter.messages;
}

/// The first lines that differ.
std::string differenceOf(const std::string& expected, const std::string& found)
{
    std::istringstream expectedLines(expected);
    std::istringstream foundLines(found);
    std::string expectedLine;
    std::string foundLine;
    while (std::getline(expectedLines, expectedLine) && std::getline(foundLines, foundLine))
        if (expectedLine != foundLine)
            break;
    return "expected: " + expectedLine + "\nfound:    " + foundLine;
}
} // namespace

ProgramComparison compareProgram(unsigned seed)
{
    const Scenario scenario = scenarioOf(seed);
    std::string expected;
    try {
        expected = plainOutcome(scenario);
    } catch (const NoOutcome&) {
        return {};
    } catch (const std::out_of_range&) {
        return {};
    }
    const std::string found = engineOutcome(scenario);
    if (found == expected)
        return {true, ""};
    std::string difference =
        differenceOf(expected, found) + "\n" + scenario.text + "\n--- other: " + scenario.otherText;
    for (std::size_t i = 0; i < scenario.actions.size(); ++i) {
        const Action& action = scenario.actions[i];
        difference += "\n" + std::to_string(i) + ": " + std::to_string(action.kind) + " " +
                      std::to_string(action.place) + " " + std::to_string(action.choice) + " " +
                      action.text;
    }
    for (const auto& actions : scenario.between)
        for (const Action& action : actions)
            difference += "\nbetween: " + std::to_string(action.kind) + " " +
                          std::to_string(action.place) + " " + std::to_string(action.choice) + " " +
                          action.text;
    return {true, difference};
}
} // namespace tamor::test
