#include "script/Evaluator.h"

#include "script/ScriptInterpreter.h"
#include "script/internal/Arithmetic.h"
#include "script/internal/BumpStack.h"
#include "script/internal/Order.h"
#include "script/internal/Paths.h"

#include <atomic>
#include <deque>
#include <iostream>
#include <span>
#include <string_view>

namespace tamor
{
namespace
{
using Tokens = std::span<ScriptToken>;

/// What an operator works on, or gives: a variable's place if `variable` is set, else a literal, a
/// temporary or no value at all.
struct Operand
{
    ScriptValue* value = nullptr;
    ScriptToken* variable = nullptr;
    /// Whether `value` is the run's own, in which a result may be written.
    bool isTemporary = false;
};

/// Whether a result may be written into an operand. The array of a temporary would show again in a
/// later number.
bool canHoldResult(const Operand& operand)
{
    return operand.isTemporary && operand.value->type != TYPE_ARRAY;
}

/// Whether a list of this one token, or what its operator gave, has a value.
bool hasValueAlone(std::int32_t kind)
{
    return kind == TOK_NUMBER || kind == TOK_STRING || kind == TOK_VARIABLE || kind == TOK_CALL ||
           kind == TOK_FUNC || kind == openParenthesis || isApplied(kind);
}

/// The operators that write to none of their operands.
bool isPure(std::int32_t kind)
{
    return kind > decrement && kind < assignment;
}

bool isBrace(std::int32_t kind)
{
    return kind == TOK_OPEN_BRACE || kind == TOK_CLOSE_BRACE;
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
    case lessThanOperator:
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

/// As `applyPure`, with what loops apply to numbers at hand.
inline void applyQuickly(ScriptValue& result, const ScriptValue& left, int kind,
                         const ScriptValue& right)
{
    if (left.type == TYPE_INT && right.type == TYPE_INT) {
        // Unsigned, since sums wrap.
        const auto sum =
            static_cast<std::uint32_t>(left.number) + static_cast<std::uint32_t>(right.number);
        if (kind == addition)
            return result.setInt(static_cast<int>(sum));
        if (kind == lessThanOperator)
            return result.setInt(left.number < right.number);
    } else if (arithmetic::isSingle(left) && arithmetic::isSingle(right)) {
        const float x = arithmetic::single(left);
        const float y = arithmetic::single(right);
        if (kind == addition)
            return result.setFloat(x + y);
        if (kind == multiplication)
            return result.setFloat(x * y);
    }
    applyPure(result, left, kind, right);
}

/// The list without the TOK_ARGENDs at its end, which mean nothing to an expression.
Tokens withoutArgumentEnds(Tokens list)
{
    while (!list.empty() && list.back().kind == TOK_ARGEND)
        list = list.first(list.size() - 1);
    return list;
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
/// The language is defined by lists that are copied at each step, and copies that are cut down.
/// Here the tokens stay where they are, and the order of the cuts is remembered, so that a step
/// costs what its operator costs. A value that is returned by reference is a variable, a literal or
/// a temporary, and is good until the next thing is evaluated.
class Run
{
public:
    explicit Run(ScriptInterpreter& owner) : interpreter(owner), number(++runCount) {}

    ScriptValue& evaluate(Tokens list);
    void runStatements(Tokens list, ScriptValue& last);

private:
    // Expressions.
    ScriptValue* evaluateShort(Tokens list);
    ScriptValue* assignShort(ScriptValue& variable, Tokens source);
    [[gnu::noinline]] void assignCall(ScriptValue& variable, ScriptToken& token);
    [[gnu::noinline]] ScriptValue& evaluateAny(Tokens list);
    ScriptValue* plainOperand(ScriptToken& token) const;
    ScriptValue& evaluateInOrder(Tokens list, const ScriptOrder& order);
    const ScriptOrder* rememberedOrder(Tokens list);
    bool applyReady(Tokens list, Operand* found, const ScriptOrder::Step& step);
    Operand evaluateGroup(Tokens inner);
    [[gnu::noinline]] ScriptValue& finish(Tokens list, const Operand* found,
                                          std::span<const std::uint32_t> rest);
    Operand operandAt(Tokens list, const Operand* found, std::uint32_t position);
    [[gnu::noinline]] Operand evaluateOperand(Tokens list, const Operand* found,
                                              std::uint32_t position);
    void locate(Operand& operand);
    Operand apply(const Operand& left, int kind, const Operand& right, bool isLastStep);
    Operand assign(const Operand& left, const Operand& right, bool isLastStep);
    Operand applyWriting(const Operand& left, int kind, const Operand& right);
    void passBrace(std::int32_t kind);

    // Names.
    ScriptLookup& renewLookup(ScriptToken& token) const;
    ScriptValue* findVariable(ScriptToken& token);
    ScriptValue& call(ScriptToken& token);
    std::size_t evaluateArguments(Tokens args, ScriptValue* arguments);
    void callFunction(ScriptFunction& function, const std::string& name,
                      const ScriptValue* arguments, std::size_t count, ScriptValue& result);
    template <typename Action>
    void forEachBound(ScriptFunction& function, std::size_t count, Action action);

    // Statements.
    std::size_t endOfBlock(Tokens list, std::size_t open);
    ScriptToken* endOfStatement(ScriptToken* start, ScriptToken* end);
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
    std::deque<ScriptOrder> orders;
    /// The results of operators and groups, a row for each list that is being evaluated.
    BumpStack<Operand> results;
    BumpStack<ScriptValue> values;
    /// The result of an operator in a list of three tokens. It never is an array.
    ScriptValue shortResult;
    /// What a missing operand, and an expression without a value, refers to. Nothing writes to it.
    ScriptValue nothing;

    static inline std::atomic<std::uint64_t> runCount = 0;
};

// ------------------------------------------------------------------------------------ Expressions

/// The place of a literal, or of a variable without indices that has been found before; else null.
inline ScriptValue* Run::plainOperand(ScriptToken& token) const
{
    if (token.kind == TOK_NUMBER || token.kind == TOK_STRING)
        return &token.value;
    if (token.kind == TOK_VARIABLE && token.lookup.run == number && token.lookup.indices == 0)
        return token.lookup.variable;
    return nullptr;
}

/// Evaluates the shapes that loops are made of, where all operands are plain: `a`, `a < b`, `a = b`
/// and `a = b + c` with any operator for "<" and "+", and `a = f(b)`. It takes a fourth of the time
/// that the general way takes for them, and gives the same. \return null for any other list
inline ScriptValue* Run::evaluateShort(Tokens list)
{
    if (list.size() != 1 && list.size() != 3 && list.size() != 5)
        return nullptr;
    ScriptValue* const first = plainOperand(list[0]);
    if (first == nullptr || list.size() == 1)
        return first;
    const std::int32_t kind = list[1].kind;
    if (kind == assignment)
        return list[0].kind == TOK_VARIABLE ? assignShort(*first, list.subspan(2)) : nullptr;
    ScriptValue* const second = plainOperand(list[2]);
    if (second == nullptr || list.size() != 3 || !isPure(kind))
        return nullptr;
    applyQuickly(shortResult, *first, kind, *second);
    return &shortResult;
}

/// Assigns what `b`, `f(b)` or `b + c` gives. \return as `evaluateShort`
inline ScriptValue* Run::assignShort(ScriptValue& variable, Tokens source)
{
    ScriptValue* const left = plainOperand(source[0]);
    if (source.size() == 1) {
        if (left != nullptr)
            arithmetic::assign(variable, *left);
        else if (source[0].kind == TOK_CALL)
            assignCall(variable, source[0]);
        else
            return nullptr;
        return &variable;
    }
    const std::int32_t kind = source[1].kind;
    ScriptValue* const right = plainOperand(source[2]);
    if (left == nullptr || right == nullptr || !isPure(kind))
        return nullptr;
    if (&variable == left && kind == addition && left->type == TYPE_STRING &&
        right->type != TYPE_ARRAY) {
        arithmetic::appendText(variable.text, *right);
        return &variable;
    }
    // The result is computed in the variable where that holds no array.
    if (!variable.items.empty()) {
        applyPure(shortResult, *left, kind, *right);
        arithmetic::assign(variable, shortResult);
        return &variable;
    }
    applyQuickly(variable, *left, kind, *right);
    variable.reserved = 0;
    if (variable.type != TYPE_STRING)
        variable.text.clear();
    return &variable;
}

void Run::assignCall(ScriptValue& variable, ScriptToken& token)
{
    const auto mark = values.mark();
    arithmetic::transfer(variable, call(token));
    values.release(mark);
}

inline ScriptValue& Run::evaluate(Tokens list)
{
    ScriptValue* const value = evaluateShort(list);
    return value != nullptr ? *value : evaluateAny(list);
}

/// Evaluates what has no short way, or not yet: names are looked up on the first pass.
ScriptValue& Run::evaluateAny(Tokens list)
{
    list = withoutArgumentEnds(list);
    while (!list.empty() && isBrace(list.front().kind)) {
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
    if (const ScriptOrder* const order = rememberedOrder(list))
        return evaluateInOrder(list, *order);
    const ScriptOrder order = ordered(list);
    return evaluateInOrder(list, order);
}

/// The order of a list, which its first operator remembers from the first time on. Null where the
/// list has an unusual shape.
const ScriptOrder* Run::rememberedOrder(Tokens list)
{
    ScriptToken* holder = &list[0];
    if (holder->kind != openParenthesis) {
        if (list.size() < 2 || !isApplied(list[1].kind))
            return nullptr;
        holder = &list[1];
    }
    ScriptLookup& lookup = holder->lookup;
    if (lookup.run != number) {
        renewLookup(*holder);
        lookup.order = &orders.emplace_back(ordered(list));
    }
    return lookup.order->length == list.size() ? lookup.order : nullptr;
}

ScriptValue& Run::evaluateInOrder(Tokens list, const ScriptOrder& order)
{
    const auto resultMark = results.mark();
    const auto valueMark = values.mark();
    Operand* const found = results.take(list.size());
    for (const ScriptOrder::Group& group : order.groups)
        found[group.open] = evaluateGroup(list.subspan(group.open + 1, group.length));

    ScriptValue* appended = nullptr;
    for (const ScriptOrder::Step& step : order.steps) {
        if (applyReady(list, found, step))
            continue;
        Operand left = operandAt(list, found, step.left);
        Operand right = operandAt(list, found, step.right);
        // Elements are found again, since what a call on the right does may have moved the left
        // one.
        locate(right);
        locate(left);
        // `s = s + x` grows the string where it is: with a copy for each step, a loop of such steps
        // would be quadratic.
        if (step.isAppending && left.value->type == TYPE_STRING &&
            right.value->type != TYPE_ARRAY) {
            arithmetic::appendText(left.value->text, *right.value);
            appended = left.value;
            break;
        }
        found[step.position] = apply(left, step.kind, right, step.isLast);
    }

    ScriptValue* result = &nothing;
    if (appended != nullptr)
        result = appended;
    else if (order.result != ScriptOrder::nowhere)
        result = found[order.result].value;
    else if (!order.isBroken)
        result = &finish(list, found, order.rest);
    results.release(resultMark);
    values.release(valueMark);
    return *result;
}

/// Applies an operator that only reads two operands which are literals, variables that have been
/// found before, or results: with all else left to `apply`, nested arithmetic takes a fifth less
/// time. \return false, with nothing done, for any other step
inline bool Run::applyReady(Tokens list, Operand* found, const ScriptOrder::Step& step)
{
    if (!isPure(step.kind) || step.isAppending || step.left == ScriptOrder::nowhere ||
        step.right == ScriptOrder::nowhere)
        return false;
    const auto resultAt = [&](std::uint32_t position) {
        const std::int32_t kind = list[position].kind;
        return isApplied(kind) || kind == openParenthesis ? &found[position] : nullptr;
    };
    const Operand* const leftResult = resultAt(step.left);
    const Operand* const rightResult = resultAt(step.right);
    ScriptValue* const left =
        leftResult != nullptr ? leftResult->value : plainOperand(list[step.left]);
    ScriptValue* const right =
        rightResult != nullptr ? rightResult->value : plainOperand(list[step.right]);
    if (left == nullptr || right == nullptr)
        return false;
    ScriptValue& result = leftResult != nullptr && canHoldResult(*leftResult)     ? *left
                          : rightResult != nullptr && canHoldResult(*rightResult) ? *right
                                                                                  : takeValue();
    applyQuickly(result, *left, step.kind, *right);
    found[step.position] = {&result, nullptr, true};
    return true;
}

Operand Run::evaluateGroup(Tokens inner)
{
    const ScriptValue& value = evaluate(inner);
    // The temporary taken here is often the one in which the value was left.
    ScriptValue& kept = *values.take(1);
    if (&kept != &value)
        arithmetic::assign(kept, value);
    return {&kept, nullptr, true};
}

/// The value of what is left when all operators have been applied.
ScriptValue& Run::finish(Tokens list, const Operand* found, std::span<const std::uint32_t> rest)
{
    while (!rest.empty() && list[rest.back()].kind == TOK_ARGEND)
        rest = rest.first(rest.size() - 1);
    for (; !rest.empty(); rest = rest.subspan(1)) {
        const std::int32_t kind = list[rest.front()].kind;
        if (!isBrace(kind))
            break;
        passBrace(kind);
    }
    if (rest.empty())
        return nothing;
    const std::int32_t kind = list[rest.front()].kind;
    if (rest.size() == 1 && hasValueAlone(kind)) {
        Operand operand = operandAt(list, found, rest.front());
        locate(operand);
        return *operand.value;
    }
    // Meant: no way out of a list that no operator reduces, so the stack ends the process;
    // `EvaluateTokens.RecursesWithoutEndOnWhatItCannotReduce` holds it.
    const std::vector<std::uint32_t> again(rest.begin(), rest.end());
    return finish(list, found, again);
}

/// Evaluates a neighbour of an operator, or the lack of one, as a list of its own. The usual cases
/// are told apart here and the rest is a call away, which makes a loop's step half as long.
inline Operand Run::operandAt(Tokens list, const Operand* found, std::uint32_t position)
{
    if (position == ScriptOrder::nowhere)
        return {&nothing, nullptr, false};
    ScriptToken& token = list[position];
    if (token.kind == TOK_NUMBER || token.kind == TOK_STRING)
        return {&token.value, nullptr, false};
    if (token.kind == TOK_VARIABLE && token.lookup.run == number && token.lookup.indices == 0)
        return {token.lookup.variable, &token, false};
    if (isApplied(token.kind) || token.kind == openParenthesis)
        return found[position];
    return evaluateOperand(list, found, position);
}

Operand Run::evaluateOperand(Tokens list, const Operand* found, std::uint32_t position)
{
    ScriptToken& token = list[position];
    if (token.kind == TOK_VARIABLE) {
        // To read creates the variable, before the other side is evaluated.
        ScriptValue* const variable = findVariable(token);
        if (variable == nullptr)
            return {&nothing, nullptr, false};
        return {variable, &token, false};
    }
    if (token.kind == TOK_CALL)
        return {&call(token), nullptr, true};
    if (token.kind == TOK_FUNC)
        return {&nothing, nullptr, false};
    return {&finish(list, found, std::span(&position, 1)), nullptr, false};
}

/// Finds an element again. A variable itself never moves.
inline void Run::locate(Operand& operand)
{
    if (operand.variable == nullptr || operand.variable->lookup.indices == 0)
        return;
    if (ScriptValue* const place = findVariable(*operand.variable))
        operand.value = place;
}

/// \param isLastStep  whether the value is looked at before anything else is evaluated, so that a
///                    variable may stand for its copy
Operand Run::apply(const Operand& left, int kind, const Operand& right, bool isLastStep)
{
    if (kind == assignment)
        return assign(left, right, isLastStep);
    if (kind == increment || kind == decrement)
        return applyWriting(left, kind, right);
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

/// Forgets what an earlier run has found out about the token.
ScriptLookup& Run::renewLookup(ScriptToken& token) const
{
    token.statementLength = 0;
    token.lookup = {};
    token.lookup.run = number;
    return token.lookup;
}

/// As `resolveVariable`, with the table asked once a run for each token.
ScriptValue* Run::findVariable(ScriptToken& token)
{
    ScriptLookup& lookup = token.lookup;
    if (lookup.run != number) {
        const std::string_view root = Scanner(token.name).readName();
        if (root.empty())
            return nullptr;
        renewLookup(token);
        lookup.variable = &interpreter.variables[std::string(root)];
        lookup.indices = root.size() < token.name.size() ? root.size() : 0;
    }
    if (lookup.indices == 0)
        return lookup.variable;
    const std::string_view indices = std::string_view(token.name).substr(lookup.indices);
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
        renewLookup(token);
        lookup.builtin = &interpreter.builtins[token.name];
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
            renewLookup(parameter);
            lookup.variable = &interpreter.variables[parameter.name];
            lookup.shadow = &interpreter.variables["::" + parameter.name];
        }
        action(*lookup.variable, *lookup.shadow, i);
    }
}

// ------------------------------------------------------------------------------------- Statements

/// Where a block ends: the position behind its closing brace, or past the list where nothing closes
/// it. As `endOfStatement`, it is looked for once.
std::size_t Run::endOfBlock(Tokens list, std::size_t open)
{
    ScriptLookup& lookup = list[open].lookup;
    if (lookup.run != number)
        renewLookup(list[open]);
    if (lookup.blockLength != 0)
        return std::min(open + lookup.blockLength, list.size() + 1);
    std::size_t at = open + 1;
    for (int depth = 1; depth > 0; ++at) {
        if (at >= list.size())
            return list.size() + 1;
        if (list[at].kind == TOK_OPEN_BRACE)
            ++depth;
        else if (list[at].kind == TOK_CLOSE_BRACE)
            --depth;
    }
    lookup.blockLength = at - open;
    return at;
}

/// The first separator or `return` from `start` on, or the end. A loop comes back to each of its
/// statements and need not walk along all their tokens again: the length is remembered as soon as
/// the first token has a look-up of this run.
inline ScriptToken* Run::endOfStatement(ScriptToken* start, ScriptToken* end)
{
    if (start >= end)
        return end;
    const bool isKnown = start->lookup.run == number;
    if (isKnown && start->statementLength != 0)
        return std::min(start + start->statementLength, end);
    ScriptToken* it = start;
    while (it < end && it->kind != TOK_SEMICOLON && it->kind != TOK_RETURN)
        ++it;
    if (it == end || it == start)
        return it;
    // Braces and headers are looked up nowhere else.
    if (!isKnown && (isBrace(start->kind) || isControlForm(start->kind)))
        renewLookup(*start);
    if (start->lookup.run == number)
        start->statementLength = static_cast<std::uint32_t>(it - start);
    return it;
}

/// Runs the statements and puts the list's value into `last`.
void Run::runStatements(Tokens list, ScriptValue& last)
{
    becomeNull(last);
    ScriptToken* start = list.data();
    ScriptToken* const end = start + list.size();
    for (ScriptToken* it = endOfStatement(start, end); it < end; it = endOfStatement(start, end)) {
        // Meant: the literal behind it and nothing computed, so `return x;` returns no value;
        // `RunTokens.ReturnsTheStoredLiteralAndEvaluatesNothing` holds it.
        if (it->kind == TOK_RETURN)
            return arithmetic::assign(last, it + 1 < end ? it[1].value : nothing);
        const bool isSingle = it == start + 1;
        if (isSingle && isControlForm(start->kind)) {
            // Meant: cannot happen behind the test above; it stays for the day that one changes.
            if (it != start + 1) {
                std::cerr << "error parsing after while/for loop/if" << std::endl;
                return becomeNull(last);
            }
            const auto separator = static_cast<std::size_t>(it - list.data());
            const std::size_t next = runControlForm(list, separator, last);
            if (next >= list.size())
                return;
            it = list.data() + next;
        } else if (isSingle && isBrace(start->kind)) {
            passBrace(start->kind);
        } else if (it > start) {
            // Meant: a value that is not true leaves the last true one in place;
            // `RunTokens.KeepsTheLastTrueValue` holds it.
            const ScriptValue& value = evaluate({start, it});
            if (arithmetic::holds(value))
                arithmetic::assign(last, value);
        }
        start = it + 1;
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
    const std::size_t end = hasBlock ? endOfBlock(list, next) : next + 1;
    if (end > list.size())
        return end;
    // The header's separator ends an empty statement, which each pass can do without.
    const Tokens body = list.subspan(next, end - next);
    if (header.kind == TOK_WHILE)
        runWhile(header.args, body, last);
    else
        runFor(header.args, body, last);
    return end;
}

std::size_t Run::runIf(Tokens list, std::size_t separator)
{
    if (arithmetic::holds(evaluate(list[separator - 1].args)))
        return separator;
    const std::size_t next = separator + 1;
    if (next < list.size() && list[next].kind == TOK_OPEN_BRACE)
        return endOfBlock(list, next);
    // Meant: without a block exactly one token is skipped, and the rest of its statement is run;
    // `RunTokens.SkipsOneTokenBehindAFalseIfWithoutABlock` holds it.
    return next;
}

bool isOne(const ScriptValue& value)
{
    return value.type == TYPE_INT && value.number == 1;
}

/// Meant: only integer 1 keeps a loop going, not whatever is true; here and in `runFor`.
/// `RunTokens.LoopsOnIntegerOneAlone` holds it.
void Run::runWhile(Tokens condition, Tokens body, ScriptValue& last)
{
    ScriptValue value;
    condition = withoutArgumentEnds(condition);
    while (isOne(evaluate(condition)))
        runPass(body, value, last);
}

void Run::runFor(Tokens header, Tokens body, ScriptValue& last)
{
    Tokens clauses[3];
    for (Tokens& clause : clauses) {
        std::size_t length = 0;
        while (length < header.size() && header[length].kind != TOK_SEMICOLON)
            ++length;
        clause = withoutArgumentEnds(header.first(length));
        header = header.subspan(std::min(length + 1, header.size()));
    }
    ScriptValue value;
    for (evaluate(clauses[0]); isOne(evaluate(clauses[1])); evaluate(clauses[2]))
        runPass(body, value, last);
}

/// Runs a loop's body once; `value` is the loop's own place for the body's value.
void Run::runPass(Tokens body, ScriptValue& value, ScriptValue& last)
{
    runStatements(body, value);
    if (arithmetic::holds(value))
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
