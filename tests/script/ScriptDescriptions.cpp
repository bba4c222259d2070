#include "tests/script/ScriptDescriptions.h"

#include <sstream>

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
    for (const ScriptToken& token : list) {
        if (!text.empty())
            text += ' ';
        text += tokenText(token);
    }
    return text;
}
} // namespace tamor::test
