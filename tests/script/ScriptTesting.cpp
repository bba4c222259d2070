#include "tests/script/ScriptTesting.h"

#include "tests/support/ChildProcess.h"

#include <utility>

namespace tamor::test
{
std::string parsed(const std::string& text)
{
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    return described(list);
}

ScriptValue real(float number)
{
    ScriptValue value;
    value.setFloat(number);
    return value;
}

ScriptValue array(std::vector<ScriptValue> elements)
{
    ScriptValue value;
    value.type = TYPE_ARRAY;
    value.items = std::move(elements);
    return value;
}

void Script::run(const std::string& text)
{
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    value = runTokens(interpreter, list);
}

std::string Script::operator[](const std::string& name) const
{
    const auto found = interpreter.variables.find(name);
    return found == interpreter.variables.end() ? "none" : described(found->second);
}

std::string Script::evaluated(const std::string& expression)
{
    std::vector<ScriptToken> list;
    parseText(interpreter, list, expression);
    return described(evaluateTokens(interpreter, list));
}

std::string evaluated(const std::string& expression)
{
    return Script().evaluated(expression);
}

bool endsTheProcess(void (*body)())
{
    ChildProcess child([body] {
        body();
        return 0;
    });
    const ProcessEnd end = child.wait();
    return !end.timedOut && (end.signal != 0 || end.status != 0);
}
} // namespace tamor::test
