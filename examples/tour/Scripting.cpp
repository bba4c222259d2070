#include "examples/tour/Scripting.h"

#include "examples/tour/Checker.h"
#include "examples/tour/Flight.h"
#include "examples/tour/Things.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numbers>

namespace tour
{
using namespace tamor;

namespace
{
// Of steps, of bytes, and of calls within calls: a script that takes more has no end.
constexpr ScriptLimits limits = {1000000, 50000000, 200};

// A built-in is a plain function, so what it works on is found here.
Scripting* current = nullptr;

bool isNumber(const ScriptValue& value)
{
    return value.type == TYPE_INT || value.type == TYPE_FLOAT;
}

float number(const ScriptValue& value)
{
    return value.type == TYPE_FLOAT ? value.asFloat() : static_cast<float>(value.number);
}

ScriptValue fromFloat(float value)
{
    ScriptValue result;
    result.setFloat(value);
    return result;
}

/// The arguments of a call: a string where one is wanted, numbers behind it.
class Arguments
{
public:
    Arguments(std::int32_t newCount, const ScriptValue* newValues)
        : count(newCount), values(newValues)
    {}

    bool areNumbers(int from, int to) const
    {
        return count >= to && std::all_of(values + from, values + to, isNumber);
    }
    bool isText(int index) const { return count > index && values[index].type == TYPE_STRING; }
    float operator[](int index) const { return number(values[index]); }
    const std::string& text(int index) const { return values[index].text; }

private:
    std::int32_t count;
    const ScriptValue* values;
};
} // namespace

/// The words. One whose arguments make no sense does nothing and gives no value, as the language's
/// own do.
struct Words
{
    static Thing* thingAt(float index)
    {
        std::vector<Thing>& all = current->things->all;
        if (!(index >= 0.0F) || index >= static_cast<float>(all.size()))
            return nullptr;
        return &all[static_cast<std::size_t>(index)];
    }

    static ScriptValue spawn(const Arguments& arguments)
    {
        if (!arguments.isText(0) || !arguments.areNumbers(1, 3))
            return {};
        return {
            current->things->add(arguments.text(0), arguments[1], arguments[2], *current->land)};
    }

    static ScriptValue move(const Arguments& arguments)
    {
        Thing* const thing = arguments.areNumbers(0, 2) ? thingAt(arguments[0]) : nullptr;
        if (thing == nullptr)
            return {};
        const float angle = thing->heading * std::numbers::pi_v<float> / 180.0F;
        thing->place += Vector(std::sin(angle), 0.0F, std::cos(angle)) * arguments[1];
        return {1};
    }

    static ScriptValue turn(const Arguments& arguments)
    {
        Thing* const thing = arguments.areNumbers(0, 2) ? thingAt(arguments[0]) : nullptr;
        if (thing == nullptr)
            return {};
        thing->heading = std::fmod(thing->heading + arguments[1], 360.0F);
        return {1};
    }

    static ScriptValue colour(const Arguments& arguments)
    {
        Thing* const thing = arguments.areNumbers(0, 4) ? thingAt(arguments[0]) : nullptr;
        if (thing == nullptr)
            return {};
        thing->colour = {arguments[1], arguments[2], arguments[3]};
        return {1};
    }

    static ScriptValue camera(const Arguments& arguments)
    {
        if (!arguments.areNumbers(0, 3))
            return {};
        current->flight->endTrip();
        current->flight->lookFrom({arguments[0], arguments[1], arguments[2]});
        return {1};
    }

    static ScriptValue hour(const Arguments& arguments)
    {
        const float before = current->settings->hour;
        if (arguments.areNumbers(0, 1) && std::isfinite(arguments[0]))
            current->settings->hour = std::fmod(std::fmod(arguments[0], 24.0F) + 24.0F, 24.0F);
        return fromFloat(before);
    }

    static ScriptValue ground(const Arguments& arguments)
    {
        if (!arguments.areNumbers(0, 2))
            return {};
        return fromFloat(current->land->heightAt(arguments[0], arguments[1]));
    }

    static ScriptValue random(const Arguments& arguments)
    {
        if (!arguments.areNumbers(0, 2))
            return {};
        current->random = current->random * 1664525U + 1013904223U;
        const float share = static_cast<float>(current->random >> 8U) / 16777216.0F;
        return fromFloat(arguments[0] + share * (arguments[1] - arguments[0]));
    }

    static ScriptValue after(const Arguments& arguments)
    {
        if (!arguments.areNumbers(0, 1) || !arguments.isText(1))
            return {};
        current->waiting.push_back({arguments[0], arguments.text(1)});
        return {1};
    }

    /// What the interpreter calls.
    static ScriptValue call(std::string name, std::int32_t count, ScriptValue* values)
    {
        return table.at(name)(Arguments(count, values));
    }

    static const std::map<std::string, ScriptValue (*)(const Arguments&)> table;
};

const std::map<std::string, ScriptValue (*)(const Arguments&)> Words::table = {
    {"spawn", spawn},   {"move", move},     {"turn", turn},
    {"colour", colour}, {"camera", camera}, {"hour", hour},
    {"ground", ground}, {"random", random}, {"after", after}};

void Scripting::connect(Things& newThings, const Landscape& newLand, Flight& newFlight,
                        Settings& newSettings)
{
    things = &newThings;
    land = &newLand;
    flight = &newFlight;
    settings = &newSettings;
}

void Scripting::load()
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("scripts", error)) {
        std::ifstream file(entry.path());
        scripts.emplace_back(entry.path().stem().string(),
                             std::string(std::istreambuf_iterator<char>(file), {}));
    }
    std::sort(scripts.begin(), scripts.end());
}

std::vector<std::string> Scripting::names() const
{
    std::vector<std::string> result;
    for (const auto& [name, text] : scripts)
        result.push_back(name);
    return result;
}

std::string Scripting::text(int index) const
{
    const auto n = static_cast<std::size_t>(index);
    return n < scripts.size() ? scripts[n].second : "";
}

std::string Scripting::run(const std::string& newText)
{
    stop();
    // Some errors would end the program, so a script that has any is not run.
    const Verdict verdict = check(newText);
    if (verdict.hasErrors)
        return verdict.words;
    interpreter = std::make_unique<ScriptInterpreter>();
    interpreter->limits = limits;
    for (const auto& [name, word] : Words::table)
        interpreter->builtins[name] = Words::call;
    const std::string words = runText(newText);
    return words.empty() ? verdict.words : words;
}

void Scripting::stop()
{
    waiting.clear();
}

std::string Scripting::update(float milliseconds)
{
    for (Later& later : waiting)
        later.seconds -= milliseconds / 1000.0F;
    const auto due = std::stable_partition(waiting.begin(), waiting.end(),
                                           [](const Later& later) { return later.seconds > 0.0F; });
    const std::vector<Later> dueNow(due, waiting.end());
    waiting.erase(due, waiting.end());
    for (const Later& later : dueNow) {
        // Any other text would be run as it stands, and might end the program.
        const bool isThere = interpreter->functions.count(later.function) != 0;
        std::string words = isThere ? runText(later.function + "();")
                                    : "there is no function \"" + later.function + "\"";
        if (!words.empty())
            return words;
    }
    return "";
}

std::string Scripting::runText(const std::string& text)
{
    current = this;
    std::vector<ScriptToken> tokens;
    parseText(*interpreter, tokens, text);
    runTokens(*interpreter, tokens);
    if (interpreter->reachedLimit == ScriptLimit::NONE)
        return "";
    waiting.clear();
    return "the script did not end, and was ended";
}
} // namespace tour
