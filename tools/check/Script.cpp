// The checker of scripts: the statements, as the engine runs through a list of tokens.

#include "script/ScriptInterpreter.h"
#include "tools/check/Formats.h"
#include "tools/check/ScriptList.h"
#include "tools/check/ScriptParse.h"
#include "tools/check/Words.h"

#include <algorithm>
#include <array>

namespace tamor::check
{
namespace
{
using List = std::span<const PlacedToken>;

// Deeper than a person writes; the checker's own calls go as deep.
constexpr int deepest = 100;

bool isHeader(const PlacedToken& token)
{
    return token.kind == TOK_IF || token.kind == TOK_WHILE || token.kind == TOK_FOR;
}

class ScriptCheck
{
public:
    explicit ScriptCheck(Source& newSource) : source(newSource) {}

    void run();

private:
    std::string_view wordOf(const PlacedToken& token) const
    {
        return source.text().substr(token.begin, token.end - token.begin);
    }

    void runList(List list, bool isLoopBody);
    std::size_t runHeader(List list, std::size_t at);
    void runIf(List list, std::size_t at);
    void checkCondition(List condition);
    void checkFor(const PlacedToken& header);
    std::size_t checkReturn(List list, std::size_t start, std::size_t at, bool isLoopBody);
    void checkStatement(List statement);
    void checkEnd(List rest, bool isLoopBody);
    void checkFunction(const std::string& name, const PlacedFunction& function);
    void checkCalls(List list, std::string_view caller);

    Source& source;
    ParsedScript script;
    std::vector<std::string_view> callable;
    int depth = 0; ///< loops in each other
};

/// The token behind the block that opens at `open`, or the list's end.
std::size_t blockEnd(List list, std::size_t open)
{
    int depth = 0;
    for (std::size_t i = open; i < list.size(); ++i) {
        depth += list[i].kind == TOK_OPEN_BRACE ? 1 : list[i].kind == TOK_CLOSE_BRACE ? -1 : 0;
        if (depth == 0)
            return i + 1;
    }
    return list.size();
}

void ScriptCheck::run()
{
    script = parseScript(source);
    if (!script.isWhole)
        return;
    const ScriptInterpreter fresh;
    for (const auto& [name, builtin] : fresh.builtins)
        callable.push_back(name);
    for (const auto& [name, function] : script.functions) {
        if (fresh.builtins.contains(name)) {
            source.report("script-builtin", function.begin,
                          inQuotes(name) + " is built in, and this function is never called");
        }
        callable.push_back(name);
    }
    std::sort(callable.begin(), callable.end());
    for (const auto& [name, function] : script.functions)
        checkFunction(name, function);
    runList(script.list, false);
    checkCalls(script.list, "");
}

void ScriptCheck::checkFunction(const std::string& name, const PlacedFunction& function)
{
    std::size_t names = 0;
    for (const PlacedToken& token : function.parameters) {
        if (token.kind == TOK_ARGEND)
            continue;
        ++names;
        if (token.kind != TOK_VARIABLE) {
            source.report("script-parameter-name", token.begin,
                          inQuotes(wordOf(token)) + " is no name for a parameter");
        } else if (names == 2) {
            source.report("script-parameter", token.begin,
                          "the second parameter receives the third argument, and the third the "
                          "fifth");
        }
    }
    runList(function.body, false);
    checkCalls(function.body, name);
}

void ScriptCheck::checkCalls(List list, std::string_view caller)
{
    for (const PlacedToken& token : list) {
        checkCalls(token.args, caller);
        if (token.kind != TOK_CALL)
            continue;
        const std::string_view name = wordOf(token);
        if (name == caller) {
            source.report("script-recursion", token.begin,
                          "a function that calls itself loses its caller's values: use a loop");
        } else if (name == "return") {
            source.report("script-return", token.begin,
                          "return has a space behind it: this calls a function of that name");
        } else if (!std::binary_search(callable.begin(), callable.end(), name)) {
            const std::string guess = source.guess(name, callable);
            if (!guess.empty()) {
                source.report("script-call", token.begin,
                              "no function " + inQuotes(name) + " is defined here" + guess);
            }
        }
    }
}

void ScriptCheck::runList(List list, bool isLoopBody)
{
    std::size_t start = 0;
    for (std::size_t at = 0; at < list.size(); ++at) {
        if (list[at].kind == TOK_RETURN) {
            at = checkReturn(list, start, at, isLoopBody);
            start = at + 1;
            continue;
        }
        if (list[at].kind != TOK_SEMICOLON)
            continue;
        const List statement = list.subspan(start, at - start);
        if (statement.size() == 1 && isHeader(statement[0]))
            at = runHeader(list, at);
        else
            checkStatement(statement);
        start = at + 1;
    }
    if (start < list.size())
        checkEnd(list.subspan(start), isLoopBody);
}

void ScriptCheck::checkStatement(List statement)
{
    if (statement.size() == 1 && statement[0].kind == TOK_VARIABLE) {
        const std::string_view word = wordOf(statement[0]);
        if (word == "return" || word == "break" || word == "continue") {
            source.report(word == "return" ? "script-return" : "script-word", statement[0].begin,
                          inQuotes(word) + " is a variable here, and the statement does nothing");
        }
    }
    checkExpression(source, statement);
}

void ScriptCheck::checkEnd(List rest, bool isLoopBody)
{
    if (isLoopBody && rest.size() == 1 && rest[0].kind == TOK_CLOSE_BRACE)
        return;
    source.report("script-semicolon", rest[0].begin,
                  "without a semicolon behind it this last statement does nothing");
}

/// \return the semicolon that ends the statement, or the list's last token
std::size_t ScriptCheck::checkReturn(List list, std::size_t start, std::size_t at, bool isLoopBody)
{
    if (start < at) {
        source.report("script-semicolon", list[start].begin,
                      "a return in the same statement discards this: a semicolon is missing");
    }
    if (isLoopBody) {
        source.report("script-return-loop", list[at].begin,
                      "a return in a loop ends this pass, and not the loop");
    }
    if (at + 1 >= list.size()) {
        source.report("script-return-end", list[at].begin, "nothing stands behind this return");
        return at;
    }
    const PlacedToken& value = list[at + 1];
    const bool isLiteral = value.kind == TOK_NUMBER || value.kind == TOK_STRING;
    std::size_t end = at + 1;
    while (end < list.size() && list[end].kind != TOK_SEMICOLON)
        ++end;
    if (!isLiteral) {
        source.report("script-return", list[at].begin,
                      "only a number or a string is returned, and this gives no value: leave the "
                      "result in a variable");
    } else if (end > at + 2) {
        source.report("script-return", list[at].begin,
                      "only the first literal is returned: " + inQuotes(wordOf(value)));
    }
    return std::min(end, list.size() - 1);
}

/// Checks a control form whose header stands in front of the semicolon at `at`.
/// \return the token that the list goes on behind
std::size_t ScriptCheck::runHeader(List list, std::size_t at)
{
    const PlacedToken& header = list[at - 1];
    if (header.kind == TOK_FOR)
        checkFor(header);
    else
        checkExpression(source, header.args);
    if (header.kind == TOK_IF) {
        runIf(list, at);
        return at;
    }
    if (header.kind == TOK_WHILE)
        checkCondition(header.args);
    const std::size_t first = at + 1;
    if (first < list.size() && list[first].kind == TOK_OPEN_BRACE) {
        const std::size_t end = blockEnd(list, first);
        ++depth;
        if (depth < deepest)
            runList(list.subspan(at, end - at), true);
        else if (depth == deepest)
            source.report("script-deep", header.begin, "loops stand in each other too deeply");
        --depth;
        return std::min(end, list.size() - 1);
    }
    source.report("script-loop-body", header.begin, "the body of a loop without braces never runs");
    return std::min(first + 1, list.size() - 1);
}

void ScriptCheck::runIf(List list, std::size_t at)
{
    const std::size_t first = at + 1;
    if (first >= list.size() || list[first].kind == TOK_OPEN_BRACE)
        return;
    std::size_t end = first;
    while (end < list.size() && list[end].kind != TOK_SEMICOLON)
        ++end;
    const bool isWhole = end == first + 1 && !isHeader(list[first]);
    if (isWhole)
        return;
    source.report("script-body", list[first].begin,
                  "a false if without braces skips one word only: the rest of this runs");
    // The rest is a statement of its own then.
    if (end < list.size() && list[first].kind != TOK_RETURN)
        checkReduction(source, list.subspan(first + 1, end - first - 1));
}

void ScriptCheck::checkCondition(List condition)
{
    const bool isLiteral = condition.size() == 2 &&
                           (condition[0].kind == TOK_NUMBER || condition[0].kind == TOK_STRING);
    if (isLiteral && wordOf(condition[0]) != "1") {
        source.report("script-while", condition[0].begin,
                      "a loop goes on only while its condition is exactly 1: this one never runs");
    }
}

void ScriptCheck::checkFor(const PlacedToken& header)
{
    std::array<List, 3> clauses;
    std::size_t count = 0;
    std::size_t begin = 0;
    const List args = header.args;
    for (std::size_t i = 0; i <= args.size(); ++i) {
        if (i < args.size() && args[i].kind != TOK_SEMICOLON)
            continue;
        if (count < clauses.size())
            clauses[count] = args.subspan(begin, i - begin);
        ++count;
        begin = i + 1;
    }
    if (count != clauses.size()) {
        source.report("script-for", header.begin,
                      "a for has three clauses, and this one " + std::to_string(count));
    }
    for (const List& clause : clauses)
        checkExpression(source, clause);
    checkCondition(clauses[1]);
}
} // namespace

void checkScript(Source& source)
{
    ScriptCheck(source).run();
}
} // namespace tamor::check
