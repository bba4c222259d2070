// The lists of hosts, which are run where they are, a statement at a time.
#include "script/internal/Machine.h"

namespace tamor::script
{
/// A call of the host's: a run, or one within another.
class Machine::HostCall
{
public:
    explicit HostCall(Machine& owner) : machine(owner), mark(owner.values.mark())
    {
        if (machine.runDepth == machine.scratches.size())
            machine.scratches.push_back(std::make_unique<Scratch>(machine));
        scratch = machine.scratches[machine.runDepth].get();
        if (machine.runDepth == 0)
            machine.startLimits();
        machine.hostActed();
        scratch->start();
        ++machine.runDepth; // last: what throws before it has begun nothing
    }

    ~HostCall()
    {
        machine.values.release(mark);
        --machine.runDepth;
    }

    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;

    Scratch* scratch = nullptr;

private:
    Machine& machine;
    BumpStack<ScriptValue>::Mark mark;
};
namespace
{
/// The place of a list's value, in which nothing has been kept yet.
ScriptValue* noValue(ScriptValue* list)
{
    list->type = TYPE_NULL;
    list->number = 0;
    list->reserved = 0;
    return list;
}
} // namespace

ScriptValue Machine::evaluate(Tokens list)
{
    const HostCall host(*this);
    Lowering& lowering = host.scratch->lowering;
    lowering.result(list);
    lowering.end();
    ScriptValue* const result = noValue(values.take(1));
    executeAny(host.scratch->program, result);
    return takeListValue(*result);
}

ScriptValue Machine::run(const std::vector<ScriptToken>& list)
{
    const HostCall host(*this);
    Scratch& scratch = *host.scratch;
    ScriptValue* const last = noValue(values.take(1));
    for (std::size_t start = 0; interpreter.reachedLimit == ScriptLimit::NONE;) {
        const std::size_t separator = endOfStatement(list, start);
        if (separator >= list.size())
            break;
        if (list[separator].kind == TOK_RETURN) {
            assign(*last, separator + 1 < list.size() ? list[separator + 1].value : nothing.value);
            break;
        }
        const Tokens statement = Tokens(list).subspan(start, separator - start);
        if (isControlStatement(statement)) {
            start = runControl(list, start, scratch, last);
            continue;
        }
        if (!statement.empty()) {
            scratch.start();
            scratch.lowering.statement(statement, 0);
            scratch.lowering.end();
            executeAny(scratch.program, last);
        }
        start = separator + 1;
    }
    return takeListValue(*last);
}

/// Runs a control form of a host's list. \return where the list goes on; it may have been changed
std::size_t Machine::runControl(const std::vector<ScriptToken>& list, std::size_t header,
                                Scratch& scratch, ScriptValue* last)
{
    const std::size_t separator = header + 1;
    scratch.start();
    if (list[header].kind == TOK_IF) {
        scratch.lowering.result(list[header].args);
        scratch.lowering.end();
        const auto mark = values.mark();
        ScriptValue* const condition = noValue(values.take(1));
        executeAny(scratch.program, condition);
        values.release(mark);
        return isTrue(*condition) ? separator + 1 : behindFalseIf(list, separator);
    }
    const std::size_t end = endOfBody(list, separator);
    // A body that does not end there ends the list.
    if (end > list.size())
        return list.size();
    runLoop(list, header, end, scratch, last);
    return end + 1;
}

/// Runs a loop of a host's list, with the body that it has when it begins.
void Machine::runLoop(const std::vector<ScriptToken>& list, std::size_t header, std::size_t end,
                      Scratch& scratch, ScriptValue* last)
{
    const Tokens body = Tokens(list).subspan(header + 1, end - header - 1);
    const bool isChecked =
        list[header].kind == TOK_WHILE && (holdsCall(list[header].args) || holdsCall(body));
    Lowering& lowering = scratch.lowering;
    const Lowering::LoopEnd loopEnd = lowering.loop(list[header], body, 0, isChecked);
    lowering.end();

    const auto mark = values.mark();
    ScriptValue* const lists = values.take(static_cast<std::size_t>(scratch.program.listValues));
    std::swap(lists[0], *last);
    std::size_t at = 0;
    while (!executeAny(scratch.program, lists, at)) {
        // The host's code has run, and may have edited the condition.
        scratch.program.release(loopEnd.mark);
        lowering.loopCondition(header < list.size() ? Tokens(list[header].args) : Tokens(),
                               loopEnd);
        lowering.end();
        at = loopEnd.mark.code;
    }
    std::swap(lists[0], *last);
    values.release(mark);
}
} // namespace tamor::script
