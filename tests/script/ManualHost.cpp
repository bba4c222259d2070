#include "script/ScriptInterpreter.h"

tamor::ScriptValue twice(std::string, std::int32_t count, tamor::ScriptValue* values)
{
    return count == 1 ? multiply(values[0], 2) : tamor::ScriptValue();
}

int main()
{
    tamor::ScriptInterpreter interpreter;
    interpreter.builtins["twice"] = twice;
    interpreter.variables["speed"] = tamor::ScriptValue(21);
    interpreter.loadFile("library.script"); // its functions only
    interpreter.runFile("main.script");     // for example: answer = twice(speed);
    return interpreter.variables["answer"].number;
}
