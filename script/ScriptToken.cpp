#include "script/ScriptToken.h"

#include "script/internal/Keywords.h"

namespace tamor
{
namespace
{
/// Writes the list between a call's or a header's parentheses.
///
/// Meant: the separators are looked for in the list that holds the token and not in `args`, so
/// `args` is written once for each place that has none; only a developer's eye reads it.
/// `PrintTokens.WritesTheArgumentsOncePerPlaceOfTheOuterListWithoutASeparator` holds it.
void printArguments(std::ostream& stream, const std::vector<ScriptToken>& outer,
                    const std::vector<ScriptToken>& args, const char* separator)
{
    for (std::size_t j = 0; j < args.size(); ++j) {
        if (j >= outer.size() || outer[j].kind != TOK_ARGEND)
            printTokens(stream, args);
        else if (j + 1 < args.size())
            stream << separator;
    }
}

void printToken(std::ostream& stream, const std::vector<ScriptToken>& list,
                const ScriptToken& token)
{
    switch (token.kind) {
    case TOK_OPEN_BRACE:
        stream << "{";
        break;
    case TOK_CLOSE_BRACE:
        stream << "}";
        break;
    case TOK_NUMBER:
    case TOK_STRING:
        printValue(stream, token.value) << " ";
        break;
    case TOK_VARIABLE:
        stream << ">" << token.name << "< ";
        break;
    case TOK_CALL:
        stream << token.name << "( ";
        printArguments(stream, list, token.args, " , ");
        stream << ") ";
        break;
    case TOK_IF:
    case TOK_FOR:
    case TOK_WHILE:
        stream << script::textOfHeader(token.kind) << "( ";
        printArguments(stream, list, token.args, " ; ");
        stream << ") ";
        break;
    case TOK_FUNC:
        stream << token.name << "( ";
        for (std::size_t j = 0; j < token.args.size(); ++j)
            printTokens(stream, token.args);
        stream << ")";
        break;
    case TOK_ARGEND:
        stream << "#";
        break;
    case TOK_SEMICOLON:
        stream << ";\n";
        break;
    default:
        if (token.kind >= 0 && token.kind < scriptOperatorCount)
            stream << scriptOperators[token.kind] << " ";
    }
}
} // namespace

std::ostream& printTokens(std::ostream& stream, const std::vector<ScriptToken>& list)
{
    for (const ScriptToken& token : list)
        printToken(stream, list, token);
    return stream;
}
} // namespace tamor
