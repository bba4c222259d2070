#include "script/internal/Limits.h"

#include "script/internal/Machine.h"

#include <iostream>
#include <numeric>
#include <string>

namespace tamor::script
{
namespace
{
/// The bytes of a value's payloads.
std::uint64_t payload(const ScriptValue& value)
{
    return std::accumulate(value.items.begin(), value.items.end(), std::uint64_t{value.text.size()},
                           [](std::uint64_t sum, const ScriptValue& item) {
                               return sum + sizeof item + payload(item);
                           });
}
} // namespace

void reachLimit(ScriptInterpreter& interpreter, ScriptLimit limit, std::uint64_t number)
{
    if (interpreter.reachedLimit != ScriptLimit::NONE)
        return;
    interpreter.reachedLimit = limit;
    const char* const unit = limit == ScriptLimit::STEPS   ? " steps"
                             : limit == ScriptLimit::BYTES ? " bytes"
                                                           : " calls within calls";
    std::cerr << "The script ends at its limit of " << std::to_string(number) << unit << std::endl;
}

/// Takes the limits of the host at the start of a run that is not within another.
void Machine::startLimits()
{
    limits = interpreter.limits;
    isLimited = limits.areSet();
    interpreter.reachedLimit = ScriptLimit::NONE;
    usedSteps = 0;
    usedBytes = 0;
    callDepth = 0;
}

namespace
{
/// Counts an execution within others.
class Level
{
public:
    explicit Level(std::uint64_t& newDepth) : depth(newDepth) { ++depth; }
    ~Level() { --depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    std::uint64_t& depth;
};
} // namespace

/// As `execute`, by the general ways alone, with a look at the limits before each instruction. One
/// that is reached ends the program where it is.
bool Machine::executeWithLimits(const Program& program, ScriptValue* lists, std::size_t at)
{
    const Level level(callDepth);
    const std::uint64_t startEpoch = epoch;
    const Instruction* const code = program.code.data();
    const Instruction* in = code + at;
    while (mayRun(*in)) {
        switch (in->opcode) {
        case Opcode::COPY:
            copy(*in++, lists);
            break;
        case Opcode::COUNT:
        case Opcode::STEP:
            step(*in++, lists);
            break;
        case Opcode::AIM:
            in++->a->place = &elsewhere;
            break;
        case Opcode::TOUCH:
            find(*in++->a);
            break;
        case Opcode::CALL:
            call<true>(*in++, lists);
            break;
        case Opcode::KEEP:
            keep(*in++, lists);
            break;
        case Opcode::JUMP:
            in = code + in->target;
            break;
        case Opcode::IF:
        case Opcode::IF_LESS:
        case Opcode::IF_GREATER:
        case Opcode::IF_EQUAL:
            in = holds(*in, isTrue) ? in + 1 : code + in->target;
            break;
        case Opcode::LOOP:
        case Opcode::LOOP_LESS:
        case Opcode::LOOP_GREATER:
        case Opcode::LOOP_EQUAL:
            in = next(code, in, holds(*in, isOne));
            break;
        case Opcode::BEGIN_PASS:
            lists[in++->keep].type = TYPE_NULL;
            break;
        case Opcode::END_PASS:
            endPass(*in++, lists);
            break;
        case Opcode::CHECK_HOST:
            if (epoch != startEpoch)
                return false;
            ++in;
            break;
        case Opcode::BRACES:
            addBraces(interpreter, in++->target);
            break;
        case Opcode::RETURN:
            giveValue(*in, lists);
            in = code + in->target;
            break;
        case Opcode::END:
            return true;
        default:
            // An operator.
            compute(*in++, lists);
            break;
        }
    }
    return true;
}

/// Ends the run. The stream of the message may be the host's.
bool Machine::endAt(ScriptLimit limit, std::uint64_t number)
{
    reachLimit(interpreter, limit, number);
    hostActed();
    return false;
}

/// Whether the limits leave room for an instruction, which is counted.
bool Machine::mayRun(const Instruction& instruction)
{
    if (interpreter.reachedLimit != ScriptLimit::NONE)
        return false;
    if (limits.steps != 0 && ++usedSteps > limits.steps)
        return endAt(ScriptLimit::STEPS, limits.steps);
    // Without a limit of its own, a list that never ends comes to the one that there is.
    const bool isEndless = instruction.opcode == Opcode::NEVER_END;
    if (limits.depth != 0 && (isEndless || callDepth > std::uint64_t{limits.depth} + 1))
        return endAt(ScriptLimit::DEPTH, limits.depth);
    if (isEndless)
        return limits.steps != 0 ? endAt(ScriptLimit::STEPS, limits.steps)
                                 : endAt(ScriptLimit::BYTES, limits.bytes);
    if (limits.bytes == 0)
        return true;
    countBytes(instruction);
    return usedBytes <= limits.bytes || endAt(ScriptLimit::BYTES, limits.bytes);
}

/// Counts the values that an instruction reads. To look a name up creates it, which the instruction
/// is about to do.
void Machine::countBytes(const Instruction& instruction)
{
    switch (instruction.opcode) {
    case Opcode::CALL:
        for (std::uint32_t i = 0; i < instruction.site->count; ++i)
            usedBytes += payload(read(*instruction.site->arguments[i]));
        break;
    case Opcode::AIM:
    case Opcode::TOUCH:
        break;
    default:
        // An element may move when another one is looked up, so each has its turn.
        for (Cell* const operand : {instruction.a, instruction.b})
            if (operand != nullptr)
                usedBytes += payload(read(*operand));
        break;
    }
}

/// Whether the limits leave room for an array that grows up to an index, which is counted: if not,
/// the run ends at the next instruction.
bool Machine::mayGrow(const ScriptValue& array, unsigned index)
{
    if (runDepth == 0 || limits.bytes == 0)
        return true;
    usedBytes += (std::uint64_t{index} + 1 - array.items.size()) * sizeof array;
    return usedBytes <= limits.bytes;
}
} // namespace tamor::script
