#include "tests/script/ScriptTesting.h"

#include "tests/support/ChildProcess.h"

#include <sstream>
#include <utility>

namespace tamor::test
{
std::string described(const ScriptValue& value)
{
    std::ostringstream text;
    switch (value.type) {
    case TYPE_NULL:
        return "null";
    case TYPE_INT:
        text << "int " << value.number;
        return text.str();
    case TYPE_STRING:
        return "string " + value.text;
    case TYPE_FLOAT:
        // Nine digits tell any two floats apart.
        text.precision(9);
        text << "float " << value.asFloat();
        return text.str();
    case TYPE_ARRAY:
        text << "[";
        for (std::size_t i = 0; i < value.items.size(); ++i)
            text << (i > 0 ? ", " : "") << described(value.items[i]);
        text << "]";
        return text.str();
    default:
        return "unknown";
    }
}

namespace
{
std::string tokenText(const ScriptToken& token)
{
    const std::string inner = "(" + (token.args.empty() ? "" : " " + described(token.args)) + " )";
    switch (token.kind) {
    case TOK_SEMICOLON:
        return ";";
    case TOK_ARGEND:
        return "#";
    case TOK_OPEN_BRACE:
        return "{";
    case TOK_CLOSE_BRACE:
        return "}";
    case TOK_CALL:
        return token.name + inner;
    case TOK_VARIABLE:
        return token.name;
    case TOK_STRING:
        return "\"" + token.value.text + "\"";
    case TOK_NUMBER:
        return "<" + described(token.value) + ">";
    case TOK_FUNC:
        return "func " + token.name + inner;
    case TOK_IF:
        return "if" + inner;
    case TOK_FOR:
        return "for" + inner;
    case TOK_WHILE:
        return "while" + inner;
    case TOK_RETURN:
        return "return";
    default:
        if (token.kind >= 0 && token.kind < scriptOperatorCount)
            return scriptOperators[token.kind];
        return "kind " + std::to_string(token.kind);
    }
}
} // namespace

std::string described(const std::vector<ScriptToken>& list)
{
    std::string text;
    for (const ScriptToken& token : list)
        text += (text.empty() ? "" : " ") + tokenText(token);
    return text;
}

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
