#include "tools/script/Watch.h"

#include <algorithm>
#include <csignal>
#include <iostream>
#include <iterator>
#include <utility>

namespace tamor::scripts
{
namespace
{
// No name of a script has a "#".
constexpr const char* beginName = "#begin";
constexpr const char* givesName = "#gives";
constexpr const char* startName = "#start";
constexpr const char* stopName = "#stop";
constexpr const char* testName = "#test";
constexpr const char* keepName = "#keep";

volatile std::sig_atomic_t wasInterrupted = 0;

using Tokens = std::vector<ScriptToken>;

bool isHeader(const ScriptToken& token)
{
    return token.kind == TOK_IF || token.kind == TOK_WHILE || token.kind == TOK_FOR;
}

bool isPartOfExpression(const ScriptToken& token)
{
    return (token.kind >= 0 && token.kind < scriptOperatorCount) || token.kind == TOK_CALL ||
           token.kind == TOK_VARIABLE || token.kind == TOK_STRING || token.kind == TOK_NUMBER;
}

bool hasCall(const Tokens& tokens)
{
    return std::any_of(tokens.begin(), tokens.end(),
                       [](const ScriptToken& each) { return each.kind == TOK_CALL; });
}

/// A call with a number and, if `expression` is not empty, with that as its second argument.
ScriptToken makeCall(const char* name, std::size_t number, Tokens expression = {})
{
    ScriptToken call(TOK_CALL, {}, name);
    call.args.emplace_back(TOK_NUMBER, ScriptValue(static_cast<int>(number)), "");
    call.args.emplace_back();
    if (!expression.empty()) {
        std::move(expression.begin(), expression.end(), std::back_inserter(call.args));
        call.args.emplace_back();
    }
    return call;
}

/// A call of the test that gives the value of a condition.
Tokens tested(Tokens condition)
{
    if (condition.empty() || !std::all_of(condition.begin(), condition.end(), isPartOfExpression))
        return condition;
    ScriptToken call(TOK_CALL, {}, testName);
    call.args = std::move(condition);
    call.args.emplace_back();
    Tokens result;
    result.push_back(std::move(call));
    return result;
}

void append(Tokens& list, Tokens tokens)
{
    std::move(tokens.begin(), tokens.end(), std::back_inserter(list));
}
} // namespace

Watch* Watch::instance = nullptr;

/// One rewriting of a list, statement by statement.
class Watch::Rewriter
{
public:
    Rewriter(Watch& newWatch, const WatchRequest& newRequest, const TokenPlaces& newPlaces)
        : watch(newWatch), request(newRequest), places(newPlaces)
    {}

    Tokens rewrite(Tokens tokens)
    {
        const auto isEnd = [](const ScriptToken& each) { return each.kind == TOK_SEMICOLON; };
        const auto lastEnd = std::find_if(tokens.rbegin(), tokens.rend(), isEnd);
        const auto statementsEnd =
            tokens.size() - static_cast<std::size_t>(std::distance(tokens.rbegin(), lastEnd));
        std::size_t start = 0;
        for (std::size_t i = 0; i < statementsEnd; i++) {
            if (!isEnd(tokens[i]))
                continue;
            Tokens statement(
                std::make_move_iterator(tokens.begin() + static_cast<std::ptrdiff_t>(start)),
                std::make_move_iterator(tokens.begin() + static_cast<std::ptrdiff_t>(i)));
            addStatement(std::move(statement), start, i + 1 == statementsEnd);
            out.push_back(std::move(tokens[i]));
            start = i + 1;
        }
        // What stands behind the last separator does not run.
        out.insert(out.end(),
                   std::make_move_iterator(tokens.begin() + static_cast<std::ptrdiff_t>(start)),
                   std::make_move_iterator(tokens.end()));
        return std::move(out);
    }

private:
    void addStatement(Tokens statement, std::size_t place, bool isLast)
    {
        const bool followsHeader = wasHeader;
        wasHeader = statement.size() == 1 && isHeader(statement.front());
        if (statement.empty())
            return;
        const bool isExpression =
            std::all_of(statement.begin(), statement.end(), isPartOfExpression);
        const bool callsFunctions = hasCall(statement);
        if (request.times)
            timeCalls(statement);
        if (wasHeader && request.mayInterrupt)
            testCondition(statement.front());

        // How many values were printed nobody wants to know.
        const bool isPrint = statement.size() == 1 && statement.front().name == "print";
        const bool isKept =
            request.keepsValue && isLast && isExpression && !followsHeader && !isPrint;
        if (isKept)
            statement = {kept(std::move(statement))};
        if (!request.traces || place >= places.size()) {
            append(out, std::move(statement));
            return;
        }
        // Behind a header stands a block, or one word that a false "if" skips: nothing is put
        // there, and no words are made one.
        const bool mayBeWrapped = isExpression && (!followsHeader || statement.size() == 1);
        const bool isShown = isExpression || wasHeader || statement.front().kind == TOK_RETURN;
        const std::size_t number = watch.statements.size();
        if (isShown)
            watch.statements.push_back(places[place]);
        if (isShown && !followsHeader && (!isExpression || callsFunctions)) {
            out.push_back(makeCall(beginName, number));
            out.emplace_back(TOK_SEMICOLON, ScriptValue(), "");
        }
        if (mayBeWrapped)
            out.push_back(makeCall(givesName, number, std::move(statement)));
        else
            append(out, std::move(statement));
    }

    ScriptToken kept(Tokens statement) const
    {
        ScriptToken call(TOK_CALL, {}, keepName);
        call.args = std::move(statement);
        call.args.emplace_back();
        return call;
    }

    /// Makes each call the second argument of one that stops the clock, whose first one starts it.
    void timeCalls(Tokens& tokens)
    {
        for (ScriptToken& token : tokens) {
            timeCalls(token.args);
            if (token.kind != TOK_CALL)
                continue;
            const std::size_t number = nameNumber(token.name);
            ScriptToken timed(TOK_CALL, {}, stopName);
            timed.args.push_back(makeCall(startName, number));
            timed.args.emplace_back();
            timed.args.push_back(std::move(token));
            timed.args.emplace_back();
            token = std::move(timed);
        }
    }

    std::size_t nameNumber(const std::string& name)
    {
        const auto entry = std::find(watch.names.begin(), watch.names.end(), name);
        const auto number = static_cast<std::size_t>(entry - watch.names.begin());
        if (entry == watch.names.end())
            watch.names.push_back(name);
        return number;
    }

    static void testCondition(ScriptToken& header)
    {
        if (header.kind == TOK_IF)
            return;
        Tokens result;
        Tokens clause;
        int clauses = 0;
        for (ScriptToken& token : header.args) {
            if (token.kind != TOK_SEMICOLON && token.kind != TOK_ARGEND) {
                clause.push_back(std::move(token));
                continue;
            }
            const bool isCondition = clauses == (header.kind == TOK_FOR ? 1 : 0);
            append(result, isCondition ? tested(std::move(clause)) : std::move(clause));
            result.push_back(std::move(token));
            clause.clear();
            clauses++;
        }
        append(result, std::move(clause));
        header.args = std::move(result);
    }

    Watch& watch;
    const WatchRequest& request;
    const TokenPlaces& places;
    Tokens out;
    bool wasHeader = false;
};

Watch::Watch(ScriptInterpreter& interpreter)
{
    instance = this;
    interpreter.builtins[beginName] = begin;
    interpreter.builtins[givesName] = gives;
    interpreter.builtins[startName] = start;
    interpreter.builtins[stopName] = stop;
    interpreter.builtins[testName] = test;
    interpreter.builtins[keepName] = keep;
}

Watch::~Watch()
{
    instance = nullptr;
}

void Watch::rewrite(std::vector<ScriptToken>& list, std::size_t from, const TokenPlaces& places,
                    const WatchRequest& request)
{
    const auto first = list.begin() + static_cast<std::ptrdiff_t>(from);
    Tokens added(std::make_move_iterator(first), std::make_move_iterator(list.end()));
    list.erase(first, list.end());
    append(list, Rewriter(*this, request, places).rewrite(std::move(added)));
}

void Watch::reset()
{
    running.clear();
    keptValue.reset();
}

std::optional<ScriptValue> Watch::takeValue()
{
    return std::exchange(keptValue, std::nullopt);
}

void Watch::interrupt(bool isAsked)
{
    wasInterrupted = isAsked ? 1 : 0;
}

// The signatures of what follows are those of a ScriptBuiltin.

ScriptValue Watch::begin(std::string, std::int32_t, ScriptValue* values)
{
    const StatementPlace& place = instance->statements[static_cast<std::size_t>(values[0].number)];
    std::cerr << place.line << ": " << place.text << std::endl;
    return {};
}

ScriptValue Watch::gives(std::string, std::int32_t, ScriptValue* values)
{
    const StatementPlace& place = instance->statements[static_cast<std::size_t>(values[0].number)];
    std::cerr << place.line << ": " << place.text << " -> ";
    printValue(std::cerr, values[1]) << std::endl;
    return values[1];
}

ScriptValue Watch::start(std::string, std::int32_t, ScriptValue* values)
{
    instance->running.push_back(
        {static_cast<std::size_t>(values[0].number), std::chrono::steady_clock::now()});
    return {};
}

ScriptValue Watch::stop(std::string, std::int32_t, ScriptValue* values)
{
    const RunningCall call = instance->running.back();
    instance->running.pop_back();
    CallCount& count = instance->counts[instance->names[call.name]];
    count.calls++;
    count.time += std::chrono::steady_clock::now() - call.start;
    return values[1];
}

ScriptValue Watch::test(std::string, std::int32_t count, ScriptValue* values)
{
    if (wasInterrupted != 0)
        throw Interrupted();
    return count > 0 ? values[0] : ScriptValue();
}

ScriptValue Watch::keep(std::string, std::int32_t count, ScriptValue* values)
{
    if (count > 0)
        instance->keptValue = values[0];
    return count > 0 ? values[0] : ScriptValue();
}
} // namespace tamor::scripts
