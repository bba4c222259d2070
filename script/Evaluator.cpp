#include "script/Evaluator.h"

#include "script/Arithmetic.h"
#include "script/BumpStack.h"
#include "script/Paths.h"
#include "script/ScriptInterpreter.h"

#include <atomic>
#include <bit>
#include <iostream>
#include <span>
#include <string_view>

namespace tamor
{
namespace
{
// The rows of scriptOperators that are named below.
constexpr std::int32_t openParenthesis = 0;
constexpr std::int32_t closeParenthesis = 1;
constexpr std::int32_t increment = 2;
constexpr std::int32_t decrement = 3;
constexpr std::int32_t addition = 8;
constexpr std::int32_t assignment = 19;

/// A stretch of a token list.
using Tokens = std::span<ScriptToken>;

/// A token of a list that is being reduced. No token is copied for that: the cell points to it or,
/// once there is one, to its value.
struct Cell
{
    std::int32_t kind;
    /// Whether `value` is the run's own, in which a result may be written.
    bool isTemporary;
    union
    {
        ScriptToken* token; ///< of all kinds but TOK_NUMBER
        ScriptValue* value; ///< of TOK_NUMBER, which here stands for TOK_STRING too
    };
};

/// What an operator works on: a variable's place if `variable` is set, else a literal, a temporary
/// or no value at all.
struct Operand
{
    ScriptValue* value = nullptr;
    ScriptToken* variable = nullptr;
    bool isTemporary = false;
};

/// The operators with operands: all but the parentheses.
bool isApplied(std::int32_t kind)
{
    return kind >= increment && kind <= assignment;
}

bool isControlForm(std::int32_t kind)
{
    return kind == TOK_IF || kind == TOK_FOR || kind == TOK_WHILE;
}

/// The meaning of "++" and "--", which `step` is the sum or the difference of.
ScriptValue applyStep(ScriptValue& left, ScriptValue& right,
                      ScriptValue (*step)(const ScriptValue&, const ScriptValue&))
{
    ScriptValue result;
    if (left.type == TYPE_NULL)
        result = right = step(right, 1);
    if (right.type == TYPE_NULL)
        result = left = step(left, 1);
    return result;
}

/// Applies an operator that writes to none of its operands. `result` may be one of them.
void applyPure(ScriptValue& result, const ScriptValue& left, int kind, const ScriptValue& right)
{
    switch (kind) {
    case 4:
        return arithmetic::power(result, left, right);
    case 5:
        return arithmetic::multiply(result, left, right);
    case 6:
        return arithmetic::divide(result, left, right);
    case 7:
        return arithmetic::modulo(result, left, right);
    case addition:
        return arithmetic::add(result, left, right);
    case 9:
        return arithmetic::subtract(result, left, right);
    case 10:
        return result.setInt(!isTrue(right));
    case 11:
        return result.setInt(isTrue(left) && isTrue(right));
    case 12:
        return result.setInt(isTrue(left) || isTrue(right));
    // Meant: "<=", ">=" and "!=" compare truth and not size, so 5 <= 3 holds;
    // `ApplyOperator.ComparesTruthInThreeOfTheSixComparisons` holds it.
    case 13:
        return result.setInt(isTrue(left) <= isTrue(right));
    case 14:
        return arithmetic::lessThan(result, left, right);
    case 15:
        return result.setInt(isTrue(left) >= isTrue(right));
    case 16:
        return result.setInt(arithmetic::isLess(right, left));
    case 17:
        return result.setInt(equals(left, right));
    case 18:
        return result.setInt(isTrue(left) != isTrue(right));
    default:
        result.type = TYPE_NULL;
    }
}

/// Counts a call of a function for as long as it runs.
class ActiveCall
{
public:
    explicit ActiveCall(ScriptFunction& called) : function(called) { ++function.activeCalls; }
    ~ActiveCall()
    {
        if (--function.activeCalls == 0)
            function.runningBodies.clear();
    }
    ActiveCall(const ActiveCall&) = delete;
    ActiveCall& operator=(const ActiveCall&) = delete;

private:
    ScriptFunction& function;
};

/// One run, from a host's call to its return.
///
/// By the rules a list is copied at each step and the copy cut down. Here the tokens stay where
/// they are and what is cut down are rows of cells, so that a step costs what its operator costs. A
/// value that is returned by reference is a variable, a literal or a temporary, and is good until
/// the next thing is evaluated.
class Run
{
public:
    explicit Run(ScriptInterpreter& owner) : interpreter(owner), number(++runCount) {}

    ScriptValue& evaluate(Tokens list);
    void runStatements(Tokens list, ScriptValue& last);

private:
    // Expressions.
    ScriptValue& evaluateSeveral(Tokens list);
    std::uint32_t makeCells(Tokens list, Cell* cells, std::size_t& count);
    Cell evaluateGroup(Tokens inner);
    ScriptValue& finish(Cell* cells, std::size_t count);
    bool reduce(Cell* cells, std::size_t& count, std::size_t i);
    bool appendsToItself(const Cell* cells, std::size_t count, std::size_t i, const Operand& left,
                         const Operand& right) const;
    Operand evaluateOperand(Cell* cell);
    void locate(Operand& operand);
    Operand apply(const Operand& left, int kind, const Operand& right, bool isLastStep);
    Operand assign(const Operand& left, const Operand& right, bool isLastStep);
    Operand applyWriting(const Operand& left, int kind, const Operand& right);
    void passBrace(std::int32_t kind);

    // Names.
    ScriptValue* findVariable(ScriptToken& token);
    ScriptValue& call(ScriptToken& token);
    std::size_t evaluateArguments(Tokens args, ScriptValue* arguments);
    void callFunction(ScriptFunction& function, const std::string& name,
                      const ScriptValue* arguments, std::size_t count, ScriptValue& result);
    template <typename Action>
    void forEachBound(ScriptFunction& function, std::size_t count, Action action);

    // Statements.
    std::size_t runControlForm(Tokens list, std::size_t separator, ScriptValue& last);
    std::size_t runIf(Tokens list, std::size_t separator);
    void runWhile(Tokens condition, Tokens body, ScriptValue& last);
    void runFor(Tokens header, Tokens body, ScriptValue& last);
    void runPass(Tokens body, ScriptValue& value, ScriptValue& last);

    /// A temporary that is no value yet.
    ScriptValue& takeValue()
    {
        ScriptValue& value = *values.take(1);
        becomeNull(value);
        return value;
    }

    static void becomeNull(ScriptValue& value)
    {
        value.type = TYPE_NULL;
        if (!value.items.empty())
            value.items.clear();
    }

    ScriptInterpreter& interpreter;
    /// What the look-ups of this run are marked with. A host may change the tables between runs.
    std::uint64_t number;
    BumpStack<Cell> cellStack;
    BumpStack<ScriptValue> values;
    /// What a missing operand, and an expression without a value, refers to. Nothing writes to it.
    ScriptValue nothing;

    static inline std::atomic<std::uint64_t> runCount = 0;
};

// ------------------------------------------------------------------------------------ Expressions

ScriptValue& Run::evaluate(Tokens list)
{
    while (!list.empty() && list.back().kind == TOK_ARGEND)
        list = list.first(list.size() - 1);
    while (!list.empty() &&
           (list.front().kind == TOK_OPEN_BRACE || list.front().kind == TOK_CLOSE_BRACE)) {
        passBrace(list.front().kind);
        list = list.subspan(1);
    }
    if (list.empty())
        return nothing;
    if (list.size() == 1) {
        switch (list.front().kind) {
        case TOK_NUMBER:
        case TOK_STRING:
            return list.front().value;
        case TOK_VARIABLE: {
            ScriptValue* const variable = findVariable(list.front());
            return variable != nullptr ? *variable : nothing;
        }
        default:
            break;
        }
    }
    return evaluateSeveral(list);
}

ScriptValue& Run::evaluateSeveral(Tokens list)
{
    const auto cellMark = cellStack.mark();
    const auto valueMark = values.mark();
    Cell* const cells = cellStack.take(list.size());
    std::size_t count = 0;
    ScriptValue* result = nullptr;
    // One sweep for each operator that the list has, by rising row: that is all there is to
    // precedence. Meant: from the right, so 8 / 4 / 2 is 8 / (4 / 2);
    // `EvaluateTokens.GroupsOperatorsOfOneRowFromTheRight` holds it.
    for (std::uint32_t operators = makeCells(list, cells, count);
         operators != 0 && result == nullptr; operators &= operators - 1) {
        const std::int32_t kind = std::countr_zero(operators);
        for (std::size_t i = count; i-- > 0;) {
            if (i < count && cells[i].kind == kind && !reduce(cells, count, i)) {
                result = &nothing;
                break;
            }
        }
    }
    if (result == nullptr)
        result = &finish(cells, count);
    cellStack.release(cellMark);
    values.release(valueMark);
    return *result;
}

/// Fills `cells` from the list, with groups in parentheses already evaluated.
/// \return the operators to apply, as bits
std::uint32_t Run::makeCells(Tokens list, Cell* cells, std::size_t& count)
{
    std::uint32_t operators = 0;
    for (std::size_t at = 0; at < list.size(); ++at) {
        ScriptToken& token = list[at];
        Cell& cell = cells[count++];
        cell.kind = token.kind;
        cell.isTemporary = false;
        cell.token = &token;
        if (token.kind == TOK_NUMBER || token.kind == TOK_STRING) {
            cell.kind = TOK_NUMBER;
            cell.value = &token.value;
        } else if (isApplied(token.kind)) {
            operators |= 1U << token.kind;
        } else if (token.kind == openParenthesis) {
            // A group that nothing closes reaches to the end of the list.
            const std::size_t start = at + 1;
            for (int depth = 1; depth > 0 && ++at < list.size();) {
                if (list[at].kind == openParenthesis)
                    ++depth;
                else if (list[at].kind == closeParenthesis)
                    --depth;
            }
            cell = evaluateGroup(list.subspan(start, at - start));
        }
    }
    return operators;
}

Cell Run::evaluateGroup(Tokens inner)
{
    const ScriptValue& value = evaluate(inner);
    // The temporary taken here is often the one in which the value was left.
    ScriptValue& kept = *values.take(1);
    if (&kept != &value)
        arithmetic::assign(kept, value);
    Cell cell{};
    cell.kind = TOK_NUMBER;
    cell.isTemporary = true;
    cell.value = &kept;
    return cell;
}

/// The value of what is left when all operators have been applied.
ScriptValue& Run::finish(Cell* cells, std::size_t count)
{
    while (count > 0 && cells[count - 1].kind == TOK_ARGEND)
        --count;
    for (; count > 0 && (cells->kind == TOK_OPEN_BRACE || cells->kind == TOK_CLOSE_BRACE); --count)
        passBrace((cells++)->kind);
    if (count == 0)
        return nothing;
    if (count == 1) {
        Operand operand;
        switch (cells->kind) {
        case TOK_NUMBER:
        case TOK_VARIABLE:
        case TOK_CALL:
            operand = evaluateOperand(cells);
            locate(operand);
            return *operand.value;
        case TOK_FUNC:
            return nothing;
        default:
            break;
        }
    }
    // Meant: no way out of a list that no operator reduces, so the stack ends the process;
    // `EvaluateTokens.RecursesWithoutEndOnWhatItCannotReduce` holds it.
    std::vector<Cell> again(cells, cells + count);
    return finish(again.data(), again.size());
}

/// Applies the operator at `i` to its neighbours and puts the value in their place.
/// \return false where another operator is a neighbour, or there is no neighbour at all: what that
///         means is nowhere said, and the whole expression has no value
bool Run::reduce(Cell* cells, std::size_t& count, std::size_t i)
{
    Cell* const leftCell = i > 0 ? &cells[i - 1] : nullptr;
    Cell* const rightCell = i + 1 < count ? &cells[i + 1] : nullptr;
    if (count == 1 || (leftCell != nullptr && isApplied(leftCell->kind)) ||
        (rightCell != nullptr && isApplied(rightCell->kind)))
        return false;

    Operand left = evaluateOperand(leftCell);
    Operand right = evaluateOperand(rightCell);
    // The variables are found again, since a call on the right may have changed the left one.
    locate(right);
    locate(left);

    Operand result;
    if (appendsToItself(cells, count, i, left, right)) {
        arithmetic::appendText(left.value->text, *right.value);
        result.value = left.value;
        count = i = 1;
    } else {
        result = apply(left, cells[i].kind, right, count <= 3);
        // Meant: always three tokens out and one in, at either end of the list too, where other
        // tokens than the operands are lost; `EvaluateTokens.LosesTokensAtTheEndsOfAList` holds it.
        const std::size_t place = i > 0 ? i - 1 : 0;
        for (std::size_t j = place; count - 2 > j; ++j)
            cells[j] = cells[j + 2];
        count -= 2;
        i = place + 1;
    }
    Cell& cell = cells[i - 1];
    cell.kind = TOK_NUMBER;
    cell.isTemporary = result.isTemporary;
    cell.value = result.value;
    return true;
}

/// Whether the list is `s = s + x` with a string in `s`, which grows where it is: a copy of `s` for
/// each step would make a loop of such steps quadratic.
bool Run::appendsToItself(const Cell* cells, std::size_t count, std::size_t i, const Operand& left,
                          const Operand& right) const
{
    return count == 5 && i == 3 && cells[i].kind == addition && cells[1].kind == assignment &&
           cells[0].kind == TOK_VARIABLE && left.variable != nullptr &&
           left.value->type == TYPE_STRING && right.value->type != TYPE_ARRAY &&
           cells[0].token->name == left.variable->name;
}

/// Evaluates a neighbour of an operator, or the lack of one, as a list of its own.
Operand Run::evaluateOperand(Cell* cell)
{
    Operand operand;
    operand.value = &nothing;
    if (cell == nullptr)
        return operand;
    switch (cell->kind) {
    case TOK_NUMBER:
        operand.value = cell->value;
        operand.isTemporary = cell->isTemporary;
        break;
    case TOK_VARIABLE:
        // To read creates the variable, before the other side is evaluated.
        findVariable(*cell->token);
        operand.variable = cell->token;
        break;
    case TOK_CALL:
        operand.value = &call(*cell->token);
        operand.isTemporary = true;
        break;
    default:
        operand.value = &finish(cell, 1);
    }
    return operand;
}

/// Finds the place of an operand that is a variable.
void Run::locate(Operand& operand)
{
    if (operand.variable == nullptr)
        return;
    operand.value = findVariable(*operand.variable);
    if (operand.value == nullptr)
        operand = {&nothing, nullptr, false};
}

/// \param isLastStep  whether the value is looked at before anything else is evaluated, so that a
///                    variable may stand for its copy
Operand Run::apply(const Operand& left, int kind, const Operand& right, bool isLastStep)
{
    if (kind == assignment)
        return assign(left, right, isLastStep);
    if (kind == increment || kind == decrement)
        return applyWriting(left, kind, right);
    // The array of a temporary would show again in a later number.
    const auto canHoldResult = [](const Operand& operand) {
        return operand.isTemporary && operand.value->type != TYPE_ARRAY;
    };
    ScriptValue& result = canHoldResult(left)    ? *left.value
                          : canHoldResult(right) ? *right.value
                                                 : takeValue();
    applyPure(result, *left.value, kind, *right.value);
    return {&result, nullptr, true};
}

Operand Run::assign(const Operand& left, const Operand& right, bool isLastStep)
{
    // Whatever else stands on the left is a value that nobody sees any more.
    const Operand& target = left.variable != nullptr ? left : right;
    if (left.variable != nullptr) {
        if (right.isTemporary && isLastStep)
            arithmetic::transfer(*left.value, *right.value);
        else
            arithmetic::assign(*left.value, *right.value);
    }
    if (isLastStep)
        return {target.value, nullptr, false};
    if (right.variable == nullptr)
        return {right.value, nullptr, right.isTemporary};
    ScriptValue& copy = takeValue();
    arithmetic::assign(copy, *target.value);
    return {&copy, nullptr, true};
}

/// "++" and "--", which write to a variable, or to a copy of anything else.
Operand Run::applyWriting(const Operand& left, int kind, const Operand& right)
{
    ScriptValue leftCopy;
    ScriptValue rightCopy;
    ScriptValue& leftPlace = left.variable != nullptr ? *left.value : (leftCopy = *left.value);
    ScriptValue& rightPlace = right.variable != nullptr ? *right.value : (rightCopy = *right.value);
    ScriptValue& result = takeValue();
    result = applyStep(leftPlace, rightPlace, kind == increment ? add : subtract);
    return {&result, nullptr, true};
}

/// A brace at the front of an expression counts, and is no part of it.
void Run::passBrace(std::int32_t kind)
{
    interpreter.blockDepth += kind == TOK_OPEN_BRACE ? 1 : -1;
}

// ------------------------------------------------------------------------------------------ Names

/// As `resolveVariable`, with the table asked once a run for each token.
ScriptValue* Run::findVariable(ScriptToken& token)
{
    ScriptLookup& lookup = token.lookup;
    if (lookup.run != number) {
        const std::string_view root = Scanner(token.name).readName();
        if (root.empty())
            return nullptr;
        lookup.run = number;
        lookup.variable = &interpreter.variables[std::string(root)];
        lookup.rootLength = root.size();
    }
    if (lookup.rootLength == token.name.size())
        return lookup.variable;
    const std::string_view indices = std::string_view(token.name).substr(lookup.rootLength);
    return followPath(interpreter, Scanner(indices), lookup.variable);
}

/// The value of a call, in a temporary that stays taken.
ScriptValue& Run::call(ScriptToken& token)
{
    ScriptValue& result = takeValue();
    const auto mark = values.mark();
    ScriptValue* const arguments = values.take(token.args.size());
    const std::size_t count = evaluateArguments(token.args, arguments);

    ScriptLookup& lookup = token.lookup;
    if (lookup.run != number) {
        lookup.run = number;
        lookup.builtin = &interpreter.builtins[token.name];
        lookup.function = nullptr;
    }
    if (*lookup.builtin != nullptr) {
        result = (*lookup.builtin)(token.name, static_cast<std::int32_t>(count), arguments);
    } else {
        if (lookup.function == nullptr)
            lookup.function = &interpreter.functions[token.name];
        callFunction(*lookup.function, token.name, arguments, count, result);
    }
    values.release(mark);
    return result;
}

/// Evaluates the pieces of a call that are not empty. What stands behind the last TOK_ARGEND is no
/// piece.
/// \return the number of values
std::size_t Run::evaluateArguments(Tokens args, ScriptValue* arguments)
{
    std::size_t count = 0;
    std::size_t start = 0;
    for (std::size_t at = 0; at < args.size(); ++at) {
        if (args[at].kind != TOK_ARGEND)
            continue;
        if (at > start)
            arithmetic::assign(arguments[count++], evaluate(args.subspan(start, at - start)));
        start = at + 1;
    }
    return count;
}

void Run::callFunction(ScriptFunction& function, const std::string& name,
                       const ScriptValue* arguments, std::size_t count, ScriptValue& result)
{
    if (function.body.empty()) {
        std::cerr << "cannot find reference to " << name << std::endl;
        return;
    }
    // Meant: one shadow for each name and no stack of them, so a recursive call loses its caller's
    // values; `Calls.LoseTheOutermostValueOfAParameterInARecursion` holds it.
    forEachBound(function, count, [&](ScriptValue& variable, ScriptValue& shadow, std::size_t i) {
        arithmetic::assign(shadow, variable);
        arithmetic::assign(variable, arguments[i]);
    });
    {
        const ActiveCall active(function);
        runStatements(function.body, result);
    }
    forEachBound(function, count,
                 [](ScriptValue& variable, const ScriptValue& shadow, std::size_t) {
                     arithmetic::assign(variable, shadow);
                 });
}

/// Calls `action` with the variable, the shadow and the argument number of each parameter that a
/// call with `count` arguments binds.
template <typename Action>
void Run::forEachBound(ScriptFunction& function, std::size_t count, Action action)
{
    // Meant: steps of 2 through names and their TOK_ARGENDs, and through the arguments as well, so
    // the second parameter receives the third argument; `Calls.BindEverySecondArgument` holds it.
    std::vector<ScriptToken>& parameters = function.parameters;
    for (std::size_t i = 0; i + 1 < parameters.size() && i < count; i += 2) {
        ScriptToken& parameter = parameters[i];
        if (parameter.kind != TOK_VARIABLE) {
            std::cerr << "token " << i << " is not a variable name" << std::endl;
            return;
        }
        ScriptLookup& lookup = parameter.lookup;
        if (lookup.run != number) {
            lookup.run = number;
            lookup.variable = &interpreter.variables[parameter.name];
            lookup.shadow = &interpreter.variables["::" + parameter.name];
        }
        action(*lookup.variable, *lookup.shadow, i);
    }
}

// ------------------------------------------------------------------------------------- Statements

/// Where a block ends: the position behind its closing brace, or past the list where nothing closes
/// it.
/// \param inside  the position behind the opening brace
std::size_t endOfBlock(Tokens list, std::size_t inside)
{
    std::size_t at = inside;
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

/// Runs the statements and puts the list's value into `last`.
void Run::runStatements(Tokens list, ScriptValue& last)
{
    becomeNull(last);
    std::size_t start = 0;
    for (std::size_t at = 0; at < list.size(); ++at) {
        // Meant: the literal behind it and nothing computed, so `return x;` returns no value;
        // `RunTokens.ReturnsTheStoredLiteralAndEvaluatesNothing` holds it.
        if (list[at].kind == TOK_RETURN) {
            arithmetic::assign(last, at + 1 < list.size() ? list[at + 1].value : nothing);
            return;
        }
        if (list[at].kind != TOK_SEMICOLON)
            continue;
        const Tokens statement = list.subspan(start, at - start);
        if (statement.size() == 1 && isControlForm(statement.front().kind)) {
            // Meant: cannot happen behind the test above; it stays for the day that one changes.
            if (statement.size() != 1) {
                std::cerr << "error parsing after while/for loop/if" << std::endl;
                return becomeNull(last);
            }
            at = runControlForm(list, at, last);
        } else if (!statement.empty()) {
            // Meant: a value that is not true leaves the last true one in place;
            // `RunTokens.KeepsTheLastTrueValue` holds it.
            const ScriptValue& value = evaluate(statement);
            if (isTrue(value))
                arithmetic::assign(last, value);
        }
        start = at + 1;
    }
}

/// Runs the control form whose header stands in front of the separator.
/// \return the position of the separator from which the list goes on; past the list's end where the
///         form's block has no end
std::size_t Run::runControlForm(Tokens list, std::size_t separator, ScriptValue& last)
{
    ScriptToken& header = list[separator - 1];
    if (header.kind == TOK_IF)
        return runIf(list, separator);

    // The body takes in the header's separator but none behind the closing brace.
    const std::size_t next = separator + 1;
    const bool hasBlock = next < list.size() && list[next].kind == TOK_OPEN_BRACE;
    const std::size_t end = hasBlock ? endOfBlock(list, next + 1) : next + 1;
    if (end > list.size())
        return end;
    const Tokens body = list.subspan(separator, end - separator);
    if (header.kind == TOK_WHILE)
        runWhile(header.args, body, last);
    else
        runFor(header.args, body, last);
    return end;
}

std::size_t Run::runIf(Tokens list, std::size_t separator)
{
    if (isTrue(evaluate(list[separator - 1].args)))
        return separator;
    const std::size_t next = separator + 1;
    if (next < list.size() && list[next].kind == TOK_OPEN_BRACE)
        return endOfBlock(list, next + 1);
    // Meant: without a block exactly one token is skipped, and the rest of its statement is run;
    // `RunTokens.SkipsOneTokenBehindAFalseIfWithoutABlock` holds it.
    return next;
}

/// Meant: only integer 1 keeps a loop going, not whatever is true; here and in `runFor`.
/// `RunTokens.LoopsOnIntegerOneAlone` holds it.
void Run::runWhile(Tokens condition, Tokens body, ScriptValue& last)
{
    ScriptValue value;
    while (equals(evaluate(condition), 1))
        runPass(body, value, last);
}

void Run::runFor(Tokens header, Tokens body, ScriptValue& last)
{
    Tokens clauses[3];
    for (Tokens& clause : clauses) {
        std::size_t length = 0;
        while (length < header.size() && header[length].kind != TOK_SEMICOLON)
            ++length;
        clause = header.first(length);
        header = header.subspan(std::min(length + 1, header.size()));
    }
    ScriptValue value;
    for (evaluate(clauses[0]); equals(evaluate(clauses[1]), 1); evaluate(clauses[2]))
        runPass(body, value, last);
}

/// Runs a loop's body once; `value` is the loop's own place for the body's value.
void Run::runPass(Tokens body, ScriptValue& value, ScriptValue& last)
{
    runStatements(body, value);
    if (isTrue(value))
        arithmetic::assign(last, value);
}
} // namespace

ScriptValue evaluateTokens(ScriptInterpreter& interpreter, std::vector<ScriptToken>& list)
{
    return Run(interpreter).evaluate(list);
}

ScriptValue applyOperator(ScriptInterpreter&, ScriptValue& left, int kind, ScriptValue& right)
{
    if (kind == increment || kind == decrement)
        return applyStep(left, right, kind == increment ? add : subtract);
    if (kind == assignment) {
        arithmetic::assign(left, right);
        return left;
    }
    ScriptValue result;
    applyPure(result, left, kind, right);
    return result;
}

ScriptValue runTokens(ScriptInterpreter& interpreter, std::vector<ScriptToken>& list)
{
    ScriptValue last;
    Run(interpreter).runStatements(list, last);
    return last;
}
} // namespace tamor
