#include "benchmarks/budget/Workload.h"
#include "benchmarks/script/Programs.h"
#include "script/ScriptInterpreter.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
using Work = std::function<bool()>;

struct Parsed
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
};

double numberOf(const ScriptValue& value)
{
    return value.type == TYPE_FLOAT ? static_cast<double>(value.asFloat()) : value.number;
}

Work runOf(const ScriptProgram& program)
{
    auto parsed = std::make_shared<Parsed>();
    parseText(parsed->interpreter, parsed->list, program.tamor);
    return [parsed, result = program.result] {
        runTokens(parsed->interpreter, parsed->list);
        return numberOf(parsed->interpreter.variables["result"]) == result;
    };
}

/// 5,000 different statements.
std::string longText()
{
    std::string text = "count = 0; base = 1; factor = 2; limit = 1000000;\n";
    for (int number = 0; number < 1250; ++number) {
        const std::string digits = std::to_string(number);
        text += "speed = base + " + digits + " * (factor + 2.5);\n";
        text += "if (speed > limit) { message = \"too fast: \" + speed; }\n";
        text += "while (count < " + digits + ") { count = count + 1; }\n";
    }
    return text;
}

Work parseOfALongText(bool runs)
{
    return [text = longText(), runs] {
        Parsed parsed;
        parseText(parsed.interpreter, parsed.list, text);
        if (runs)
            runTokens(parsed.interpreter, parsed.list);
        return parsed.list.size() > 10000 &&
               (!runs || parsed.interpreter.variables["count"].number == 1249);
    };
}

const std::vector<Workload>& workloads()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> result;
        for (const ScriptProgram& program : scriptPrograms)
            result.push_back("script." + std::string(program.name));
        return result;
    }();
    static const std::vector<Workload> all = [] {
        std::vector<Workload> result;
        for (std::size_t i = 0; i < names.size(); ++i)
            result.push_back({names[i].c_str(), [i] { return runOf(scriptPrograms[i]); }});
        result.push_back({"script.parse", [] { return parseOfALongText(false); }});
        result.push_back({"script.parseAndRun", [] { return parseOfALongText(true); }});
        return result;
    }();
    return all;
}
} // namespace

std::span<const Workload> scriptWorkloads()
{
    return workloads();
}
} // namespace tamor::bench
