#include "script/internal/Statements.h"

#include <algorithm>

namespace tamor::script
{
namespace
{
bool isOpenBrace(Tokens list, std::size_t position)
{
    return position < list.size() && list[position].kind == TOK_OPEN_BRACE;
}

/// Where a block ends: the position behind its closing brace, or past the list where nothing closes
/// it.
std::size_t endOfBlock(Tokens list, std::size_t open)
{
    std::size_t at = open + 1;
    for (int depth = 1; depth > 0; ++at) {
        if (at >= list.size())
            return list.size() + 1;
        if (list[at].kind == TOK_OPEN_BRACE)
            ++depth;
        else if (list[at].kind == TOK_CLOSE_BRACE)
            --depth;
    }
    return at;
}
} // namespace

std::size_t endOfStatement(Tokens list, std::size_t start)
{
    while (start < list.size() && list[start].kind != TOK_SEMICOLON &&
           list[start].kind != TOK_RETURN)
        ++start;
    return start;
}

bool holdsCall(Tokens list)
{
    return std::any_of(list.begin(), list.end(), [](const ScriptToken& token) {
        return token.kind == TOK_CALL || holdsCall(token.args);
    });
}

bool isControlStatement(Tokens statement)
{
    if (statement.size() != 1)
        return false;
    const std::int32_t kind = statement.front().kind;
    return kind == TOK_IF || kind == TOK_FOR || kind == TOK_WHILE;
}

std::size_t behindFalseIf(Tokens list, std::size_t separator)
{
    const std::size_t next = separator + 1;
    if (isOpenBrace(list, next))
        return endOfBlock(list, next) + 1;
    // Meant: without a block exactly one token is skipped, and the rest of its statement is run;
    // `RunTokens.SkipsOneTokenBehindAFalseIfWithoutABlock` holds it.
    return next + 1;
}

std::size_t endOfBody(Tokens list, std::size_t separator)
{
    const std::size_t next = separator + 1;
    return isOpenBrace(list, next) ? endOfBlock(list, next) : next + 1;
}

Clauses clausesOf(const ScriptToken& header)
{
    if (header.kind != TOK_FOR)
        return {{}, header.args, {}};
    Tokens rest = header.args;
    const auto take = [&] {
        const auto isSeparator = [](const ScriptToken& token) {
            return token.kind == TOK_SEMICOLON;
        };
        const auto end = std::find_if(rest.begin(), rest.end(), isSeparator);
        const Tokens clause = rest.first(static_cast<std::size_t>(end - rest.begin()));
        rest = rest.subspan(std::min(clause.size() + 1, rest.size()));
        return clause;
    };
    const Tokens first = take();
    const Tokens condition = take();
    return {first, condition, take()};
}
} // namespace tamor::script
