#include "script/ScriptInterpreter.h"

#include "script/internal/Machine.h"

#include <fstream>
#include <iostream>

namespace tamor
{
namespace
{
/// Parses a file's text up to its first zero byte; a file that cannot be read has none.
std::vector<ScriptToken> parseFile(ScriptInterpreter& interpreter, const std::string& path)
{
    if (!script::machineOf(interpreter).isRunning())
        interpreter.reachedLimit = ScriptLimit::NONE;
    std::ifstream file(path);
    // A stream as such takes a lack of memory for the end.
    file.exceptions(std::ios::badbit);
    std::string text;
    try {
        std::getline(file, text, '\0');
    } catch (const std::ios::failure&) {
        text.clear();
    }
    std::vector<ScriptToken> list;
    parseText(interpreter, list, std::move(text));
    return list;
}
} // namespace

ScriptInterpreter::ScriptInterpreter() : machine(std::make_unique<script::Machine>(*this))
{
    variables["false"] = ScriptValue(0);
    variables["true"] = ScriptValue(1);
    variables["pi"].setFloat(static_cast<float>(3.141592653589793));
    builtins["print"] = builtinPrint;
}

ScriptInterpreter::~ScriptInterpreter() = default;

script::Machine& script::machineOf(ScriptInterpreter& interpreter)
{
    return *interpreter.machine;
}

bool ScriptInterpreter::runFile(const std::string& path)
{
    std::vector<ScriptToken> list = parseFile(*this, path);
    if (reachedLimit == ScriptLimit::NONE)
        runTokens(*this, list);
    return true;
}

bool ScriptInterpreter::loadFile(const std::string& path)
{
    parseFile(*this, path);
    return true;
}

// The signature is that of a ScriptBuiltin.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
ScriptValue builtinPrint(std::string, std::int32_t count, ScriptValue* values)
{
    for (std::int32_t i = 0; i < count; ++i)
        printValue(std::cerr, values[i]) << " ";
    std::cerr << std::endl;
    return {count};
}
} // namespace tamor
