#include "script/Evaluator.h"

#include "script/ScriptInterpreter.h"
#include "script/internal/Machine.h"
#include "script/internal/Operators.h"

namespace tamor
{
ScriptValue evaluateTokens(ScriptInterpreter& interpreter, std::vector<ScriptToken>& list)
{
    return script::machineOf(interpreter).evaluate(list);
}

ScriptValue applyOperator(ScriptInterpreter&, ScriptValue& left, int kind, ScriptValue& right)
{
    if (!script::isApplied(kind))
        return {};
    switch (kind) {
    case script::INCREMENT:
    case script::DECREMENT:
        return script::applyStep(left, kind, right);
    case script::ASSIGN:
        script::assign(left, right);
        return left;
    default:
        return script::operatorRow(kind).compute(left, right);
    }
}

ScriptValue runTokens(ScriptInterpreter& interpreter, std::vector<ScriptToken>& list)
{
    return script::machineOf(interpreter).run(list);
}
} // namespace tamor
