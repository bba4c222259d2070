#include "script/internal/Machine.h"

#include <algorithm>
#include <iostream>

namespace tamor::script
{
namespace
{
bool areSame(const ScriptValue& a, const ScriptValue& b)
{
    return a.type == b.type && a.number == b.number && a.reserved == b.reserved &&
           a.text == b.text &&
           std::equal(a.items.begin(), a.items.end(), b.items.begin(), b.items.end(), areSame);
}

bool areSame(const std::vector<ScriptToken>& a, const std::vector<ScriptToken>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const ScriptToken& one, const ScriptToken& other) {
                          return one.kind == other.kind && one.name == other.name &&
                                 areSame(one.value, other.value) && areSame(one.args, other.args);
                      });
}
} // namespace

namespace
{
/// Puts the value of a call where the instruction wants it, if that is a number.
bool isDelivered(const Instruction& instruction, const ScriptValue& value, ScriptValue* lists)
{
    if (!areNumbers(value.type) || value.reserved != 0)
        return false;
    if (instruction.to != nullptr) {
        ScriptValue& to = *instruction.to->place;
        if (!isSimple(to.type))
            return false;
        copyPlain(to, value);
    }
    if (instruction.keep >= 0)
        keepNumber(lists[instruction.keep], value);
    return true;
}
} // namespace

/// Keeps a program that runs, and those that are out of date until nobody runs them.
class Machine::ActiveCall
{
public:
    ActiveCall(Machine& owner, FunctionCode& called) : machine(owner), code(called)
    {
        ++code.users;
    }

    ~ActiveCall()
    {
        if (--code.users == 0 && !machine.retired.empty())
            std::erase_if(machine.retired, [](const auto& old) { return old->users == 0; });
    }

    ActiveCall(const ActiveCall&) = delete;
    ActiveCall& operator=(const ActiveCall&) = delete;

private:
    Machine& machine;
    FunctionCode& code;
};

// -------------------------------------------------------------------------------------- Looking up

/// Finds out what a name stands for, and lowers its function unless the last program is up to date.
void Machine::renew(Callee& callee)
{
    callee.builtin = interpreter.builtins[callee.name];
    callee.code = nullptr;
    callee.epoch = epoch;
    if (callee.builtin != nullptr)
        return;
    const ScriptFunction& function = interpreter.functions[callee.name];
    if (function.body.empty())
        return;
    const auto isUpToDate = [&](const ScriptFunction& tokens) {
        return areSame(tokens.body, function.body) &&
               areSame(tokens.parameters, function.parameters);
    };
    if (callee.lowered == nullptr || !isUpToDate(callee.lowered->tokens)) {
        if (callee.lowered != nullptr && callee.lowered->users > 0)
            retired.push_back(std::move(callee.lowered));
        callee.lowered = lower(function);
    }
    callee.code = callee.lowered.get();
}

std::unique_ptr<FunctionCode> Machine::lower(const ScriptFunction& function)
{
    auto code = std::make_unique<FunctionCode>();
    code->tokens = function;
    // Meant: steps of 2 through names and their TOK_ARGENDs, so a parameter that is no name is told
    // by its token's place; `Calls.BindTheNamesInFrontOfOneThatIsNone` holds it.
    for (std::size_t i = 0; i + 1 < function.parameters.size(); i += 2) {
        const ScriptToken& parameter = function.parameters[i];
        code->hasBadParameter = parameter.kind != TOK_VARIABLE;
        if (code->hasBadParameter)
            break;
        code->parameters.push_back({&variable(parameter.name), &variable("::" + parameter.name)});
    }
    Lowering lowering(*this, code->program);
    lowering.statements(function.body, 0, 0);
    lowering.end();
    return code;
}

// ------------------------------------------------------------------------------------------- Calls

void Machine::callBuiltin(const Instruction& instruction, const Callee& callee, ScriptValue* lists)
{
    const CallSite& site = *instruction.site;
    const auto mark = values.mark();
    ScriptValue* const row = values.take(site.count + 1);
    for (std::uint32_t i = 0; i < site.count; ++i) {
        assign(row[i], read(*site.arguments[i]));
        release(*site.arguments[i]);
    }
    ScriptValue* const saved = saveRegisters(site.liveRegisters);
    ScriptValue result = callee.builtin(callee.name, static_cast<std::int32_t>(site.count), row);
    hostActed();
    restoreRegisters(saved, site.liveRegisters);
    values.release(mark);
    deliver(instruction, std::move(result), lists);
}

/// Gives the parameters their arguments; their values from before are kept in their shadows.
///
/// Meant: one shadow for each name and no stack of them, so a recursive call loses its caller's
/// values; `Calls.LoseTheOutermostValueOfAParameterInARecursion` holds it.
/// Meant: the second parameter receives the third argument, and so on;
/// `Calls.BindEverySecondArgument` holds it.
/// \return the number of parameters that have received one
inline std::size_t Machine::bind(const FunctionCode& code, const CallSite& site)
{
    if (site.count != 1 || code.parameters.empty() || site.arguments[0]->kind == CellKind::PATH ||
        site.arguments[0] == code.parameters[0].shadow)
        return bindAny(code, site);
    assignVariable(*code.parameters[0].shadow, *code.parameters[0].variable);
    assignVariable(*code.parameters[0].variable, *site.arguments[0]);
    return 1;
}

// Part of `call`, or the two would save the machine's registers one after the other.
template <bool isWithLimits>
[[gnu::always_inline]] inline void Machine::callFunction(const Instruction& instruction,
                                                         Callee& callee, ScriptValue* lists)
{
    const CallSite& site = *instruction.site;
    FunctionCode& code = *callee.code;
    const ActiveCall active(*this, code);
    const auto mark = values.mark();
    const std::uint64_t startEpoch = epoch;
    const std::size_t bound = bind(code, site);
    for (std::uint32_t i = 0; i < site.count; ++i)
        if (site.arguments[i]->kind == CellKind::REGISTER)
            release(*site.arguments[i]);
    ScriptValue* const saved = site.liveRegisters > 0 ? saveRegisters(site.liveRegisters) : nullptr;

    ScriptValue* const inner = values.take(static_cast<std::size_t>(code.program.listValues));
    inner->type = TYPE_NULL;
    inner->number = 0;
    inner->reserved = 0;
    if constexpr (isWithLimits)
        executeWithLimits(code.program, inner);
    else
        execute(code.program, inner);

    if (epoch == startEpoch) {
        for (std::size_t i = 0; i < bound; ++i)
            assignVariable(*code.parameters[i].variable, *code.parameters[i].shadow);
    } else {
        unbind(code, callee, site.count);
    }
    if (saved != nullptr)
        restoreRegisters(saved, site.liveRegisters);
    values.release(mark);
    if (!isDelivered(instruction, *inner, lists))
        deliver(instruction, takeListValue(*inner), lists);
}

template <bool isWithLimits>
void Machine::call(const Instruction& instruction, ScriptValue* lists)
{
    const CallSite& site = *instruction.site;
    // The variable that takes the value is created before the call is made, and so are those that
    // are its arguments.
    if (instruction.to != nullptr && instruction.to->kind == CellKind::VARIABLE &&
        instruction.to->place == &elsewhere)
        find(*instruction.to);
    for (std::uint32_t i = 0; i < site.count; ++i)
        if (site.arguments[i]->place == &elsewhere)
            find(*site.arguments[i]);

    Callee& callee = *site.callee;
    if (callee.epoch != epoch)
        renew(callee);
    if (callee.builtin != nullptr)
        return callBuiltin(instruction, callee, lists);
    if (callee.code != nullptr)
        return callFunction<isWithLimits>(instruction, callee, lists);
    std::cerr << "cannot find reference to " << callee.name << std::endl;
    hostActed();
    deliver(instruction, {}, lists);
}

template void Machine::call<false>(const Instruction&, ScriptValue*);
template void Machine::call<true>(const Instruction&, ScriptValue*);

// -------------------------------------------------------------------------------------- Parameters

/// Gives the parameters their arguments, as `bind` says, by way of copies: all arguments have their
/// values before the first parameter changes.
std::size_t Machine::bindAny(const FunctionCode& code, const CallSite& site)
{
    const std::size_t bound = std::min(code.parameters.size(), (site.count + std::size_t{1}) / 2);
    if (bound > 0) {
        ScriptValue* const row = values.take(site.count);
        for (std::size_t i = 0; i < site.count; ++i)
            assign(row[i], read(*site.arguments[i]));
        for (std::size_t i = 0; i < bound; ++i) {
            Variable& variable = *code.parameters[i].variable;
            assignVariable(*code.parameters[i].shadow, variable);
            ScriptValue& place = *find(variable);
            assign(place, row[2 * i]);
            settle(variable, place);
        }
    }
    if (code.hasBadParameter && 2 * code.parameters.size() < site.count)
        sayBadParameter(2 * code.parameters.size());
    return bound;
}

/// Gives the parameters their old values back by what the function is now: the host's code has run.
/// Where the function is gone, they are the parameters that were bound.
void Machine::unbind(const FunctionCode& code, const Callee& callee, std::size_t count)
{
    const auto found = interpreter.functions.find(callee.name);
    const std::vector<ScriptToken>& parameters =
        found != interpreter.functions.end() ? found->second.parameters : code.tokens.parameters;
    for (std::size_t i = 0; i + 1 < parameters.size() && i < count; i += 2) {
        if (parameters[i].kind != TOK_VARIABLE)
            return sayBadParameter(i);
        const std::string& name = parameters[i].name;
        assignVariable(variable(name), variable("::" + name));
    }
}

void Machine::sayBadParameter(std::size_t argument)
{
    std::cerr << "token " << argument << " is not a variable name" << std::endl;
    hostActed();
}

// --------------------------------------------------------------------------------------- Registers

/// Puts the values of the first registers aside, as what is called has the same ones.
ScriptValue* Machine::saveRegisters(std::uint32_t count)
{
    ScriptValue* const saved = values.take(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        auto& cell = static_cast<ValueCell&>(registerAt(i));
        std::swap(saved[i], cell.value);
        cell.place = &elsewhere;
        release(cell);
    }
    return saved;
}

void Machine::restoreRegisters(ScriptValue* saved, std::uint32_t count)
{
    for (std::uint32_t i = 0; i < count; ++i) {
        auto& cell = static_cast<ValueCell&>(registerAt(i));
        std::swap(saved[i], cell.value);
        settle(cell, cell.value);
    }
}
} // namespace tamor::script
