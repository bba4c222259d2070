#include "script/internal/Machine.h"
#include "script/internal/Operators.h"

#include <cmath>
#include <functional>

namespace tamor::script
{
namespace
{
/// Whether a number is a float, or an integer that a float holds without loss.
bool isSingle(const ScriptValue& number)
{
    constexpr std::uint32_t limit = 1U << 24;
    return number.type == TYPE_FLOAT ||
           static_cast<std::uint32_t>(number.number) + limit <= 2 * limit;
}

float single(const ScriptValue& number)
{
    return number.type == TYPE_INT ? static_cast<float>(number.number) : number.asFloat();
}

// The fast ways of the operators. Each gives what the general routine gives, or false. Two floats
// need no wider type: 24 bits from more than twice as many are rounded as at once, for sums,
// differences, products and quotients alike; of a NaN the widest type says which one it is.

template <typename Operation>
struct Arithmetic
{
    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        if ((a.type | b.type) == TYPE_INT) {
            // Unsigned, since integers wrap.
            to.setInt(static_cast<int>(Operation()(static_cast<std::uint32_t>(a.number),
                                                   static_cast<std::uint32_t>(b.number))));
            return true;
        }
        return applySingle(to, a, b);
    }

    static bool applySingle(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        if (!isSingle(a) || !isSingle(b))
            return false;
        const float result = Operation()(single(a), single(b));
        if (std::isnan(result))
            return false;
        to.setFloat(result);
        return true;
    }
};

struct Quotient
{
    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        return Arithmetic<std::divides<>>::applySingle(to, a, b);
    }
};

struct Remainder
{
    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        if (!hasInteger(a) || !hasInteger(b) || integer(b) <= 0)
            return false;
        to.setInt(integer(a) % integer(b));
        return true;
    }

private:
    /// Whether a number has an integer when its fraction is cut off.
    static bool hasInteger(const ScriptValue& number)
    {
        constexpr float limit = 2147483648.0F;
        return number.type == TYPE_INT || (number.asFloat() > -limit && number.asFloat() < limit);
    }

    static int integer(const ScriptValue& number)
    {
        return number.type == TYPE_INT ? number.number : static_cast<int>(number.asFloat());
    }
};

template <typename Test>
struct Comparison
{
    static bool test(const ScriptValue& a, const ScriptValue& b)
    {
        return (a.type | b.type) == TYPE_INT ? Test()(a.number, b.number)
                                             : Test()(single(a), single(b));
    }

    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        to.setInt(test(a, b) ? 1 : 0);
        return true;
    }
};
using Less = Comparison<std::less<>>;
using Greater = Comparison<std::greater<>>;

struct Equal
{
    static bool test(const ScriptValue& a, const ScriptValue& b)
    {
        return a.type == b.type && Comparison<std::equal_to<>>::test(a, b);
    }

    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        to.setInt(test(a, b) ? 1 : 0);
        return true;
    }
};

struct Both
{
    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        to.setInt(isTrueNumber(a) && isTrueNumber(b) ? 1 : 0);
        return true;
    }
};

struct Either
{
    static bool apply(ScriptValue& to, const ScriptValue& a, const ScriptValue& b)
    {
        to.setInt(isTrueNumber(a) || isTrueNumber(b) ? 1 : 0);
        return true;
    }
};

/// The fast way of an operator, where the cells hold plain numbers. \return false where they do not
template <typename Operation>
bool isComputed(const Instruction& instruction, ScriptValue* lists)
{
    const ScriptValue& a = *instruction.a->place;
    const ScriptValue& b = *instruction.b->place;
    ScriptValue& to = *instruction.to->place;
    if (!areNumbers(a.type | b.type | to.type) || !Operation::apply(to, a, b))
        return false;
    if (instruction.keep >= 0)
        keepNumber(lists[instruction.keep], to);
    return true;
}

bool isCopied(const Instruction& instruction, ScriptValue* lists)
{
    const ScriptValue& from = *instruction.a->place;
    ScriptValue& to = *instruction.to->place;
    if (!isSimple(from.type) || !isSimple(to.type))
        return false;
    copyPlain(to, from);
    if (instruction.keep >= 0 && to.type != TYPE_NULL)
        keepNumber(lists[instruction.keep], to);
    return true;
}

/// "++" and "--" of an integer variable.
bool isCounted(const Instruction& instruction)
{
    ScriptValue& left = *instruction.a->place;
    ScriptValue& counted = left.type == TYPE_NULL ? *instruction.b->place : left;
    if (counted.type != TYPE_INT)
        return false;
    const std::uint32_t step = instruction.row == INCREMENT ? 1U : ~0U;
    counted.number = static_cast<std::int32_t>(static_cast<std::uint32_t>(counted.number) + step);
    return true;
}

/// Lets the fast instructions find a path's element, if it is there: then to look it up changes
/// nothing.
void aim(Path& path)
{
    ScriptValue* value = path.root->place;
    for (const unsigned index : path.indices) {
        if (value->type != TYPE_ARRAY || index >= value->items.size()) {
            path.place = &elsewhere;
            return;
        }
        value = &value->items[index];
    }
    settle(path, *value);
}

/// Recurses until the stack ends, which is long before the count of the levels is back at 0.
[[gnu::noinline]] std::uint32_t recurse(volatile std::uint32_t* outer)
{
    volatile std::uint32_t level = *outer + 1;
    return level == 0 ? 0 : recurse(&level) + level;
}

void neverEnd()
{
    volatile std::uint32_t level = 0;
    recurse(&level);
}
} // namespace

/// Whether a value lets a condition hold.
template <bool (*numberHolds)(const ScriptValue&)>
bool Machine::isHeld(const Instruction& instruction, bool (*general)(const ScriptValue&))
{
    const ScriptValue& value = *instruction.a->place;
    return areNumbers(value.type) ? numberHolds(value) : holds(instruction, general);
}

/// Whether a comparison, or a value, lets a condition hold, by the general way.
bool Machine::holds(const Instruction& instruction, bool (*test)(const ScriptValue&))
{
    if (instruction.b == nullptr) {
        const bool result = test(read(*instruction.a));
        release(*instruction.a);
        return result;
    }
    const ScriptValue& a = *instruction.a->place;
    const ScriptValue& b = *instruction.b->place;
    bool result = false;
    if (instruction.row == EQUAL && a.type == TYPE_STRING && b.type == TYPE_STRING) {
        // Two texts that nothing has to look up.
        result = a.text == b.text;
    } else {
        const auto [left, right] = places(*instruction.a, *instruction.b);
        result = test(operatorRow(instruction.row)
                          .compute(left != nullptr ? *left : nothing.value,
                                   right != nullptr ? *right : nothing.value));
    }
    release(*instruction.b);
    release(*instruction.a);
    return result;
}

/// Computes an operator, the fast way where that goes.
template <typename Operation>
void Machine::apply(const Instruction& instruction, ScriptValue* lists)
{
    if (!isComputed<Operation>(instruction, lists))
        compute(instruction, lists);
}

/// Whether a comparison lets a condition hold. \param general  how to tell where it gave any value
template <typename Test>
bool Machine::compare(const Instruction& instruction, bool (*general)(const ScriptValue&))
{
    const ScriptValue& a = *instruction.a->place;
    const ScriptValue& b = *instruction.b->place;
    if (areNumbers(a.type | b.type))
        return Test::test(a, b);
    return holds(instruction, general);
}

/// Where a loop goes on: at the next pass, of which it counts the brace, or behind itself.
const Instruction* Machine::next(const Instruction* code, const Instruction* loop, bool goesOn)
{
    if (!goesOn)
        return loop + 1;
    addBraces(interpreter, loop->keep);
    return code + loop->target;
}

/// Runs a program from an instruction on; `lists` are the values of its lists.
/// \return false where it was left because the host's code has run
bool Machine::execute(const Program& program, ScriptValue* lists, std::size_t at)
{
    const std::uint64_t startEpoch = epoch;
    const Instruction* const code = program.code.data();
    const Instruction* in = code + at;
    const auto unless = [&](bool holds) { return holds ? in + 1 : code + in->target; };
    const auto loop = [&](bool goesOn) { return next(code, in, goesOn); };
    // clang-format off
    for (;;) {
        switch (in->opcode) {
        case Opcode::ADD: apply<Arithmetic<std::plus<>>>(*in++, lists); break;
        case Opcode::SUBTRACT: apply<Arithmetic<std::minus<>>>(*in++, lists); break;
        case Opcode::MULTIPLY: apply<Arithmetic<std::multiplies<>>>(*in++, lists); break;
        case Opcode::DIVIDE: apply<Quotient>(*in++, lists); break;
        case Opcode::MODULO: apply<Remainder>(*in++, lists); break;
        case Opcode::LESS: apply<Less>(*in++, lists); break;
        case Opcode::GREATER: apply<Greater>(*in++, lists); break;
        case Opcode::EQUAL: apply<Equal>(*in++, lists); break;
        case Opcode::AND: apply<Both>(*in++, lists); break;
        case Opcode::OR: apply<Either>(*in++, lists); break;
        case Opcode::COMPUTE: compute(*in++, lists); break;
        case Opcode::COPY: if (!isCopied(*in, lists)) copy(*in, lists); ++in; break;
        case Opcode::COUNT: if (!isCounted(*in)) step(*in, lists); ++in; break;
        case Opcode::STEP: step(*in++, lists); break;
        case Opcode::AIM: aim(static_cast<Path&>(*in++->a)); break;
        case Opcode::TOUCH: find(*in++->a); break;
        case Opcode::CALL: call<false>(*in++, lists); break;
        case Opcode::KEEP: keep(*in++, lists); break;
        case Opcode::JUMP: in = code + in->target; break;
        case Opcode::IF: in = unless(isHeld<isTrueNumber>(*in, isTrue)); break;
        case Opcode::IF_LESS: in = unless(compare<Less>(*in, isTrue)); break;
        case Opcode::IF_GREATER: in = unless(compare<Greater>(*in, isTrue)); break;
        case Opcode::IF_EQUAL: in = unless(compare<Equal>(*in, isTrue)); break;
        case Opcode::LOOP: in = loop(isHeld<isOne>(*in, isOne)); break;
        case Opcode::LOOP_LESS: in = loop(compare<Less>(*in, isOne)); break;
        case Opcode::LOOP_GREATER: in = loop(compare<Greater>(*in, isOne)); break;
        case Opcode::LOOP_EQUAL: in = loop(compare<Equal>(*in, isOne)); break;
        case Opcode::BEGIN_PASS: lists[in++->keep].type = TYPE_NULL; break;
        case Opcode::END_PASS: endPass(*in++, lists); break;
        case Opcode::CHECK_HOST: if (epoch != startEpoch) return false; ++in; break;
        case Opcode::BRACES: addBraces(interpreter, in++->target); break;
        case Opcode::RETURN: giveValue(*in, lists); in = code + in->target; break;
        case Opcode::END: return true;
        case Opcode::NEVER_END: neverEnd(); break;
        }
    }
    // clang-format on
}
} // namespace tamor::script
