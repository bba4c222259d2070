#include "script/internal/Lowering.h"

#include "script/internal/Machine.h"
#include "script/internal/Operators.h"

#include <algorithm>

namespace tamor::script
{
namespace
{
constexpr std::uint32_t nowhere = OrderEntry::nowhere;

/// The instruction of an operator: one of its own where there is a fast way, else the general one.
Opcode opcodeOf(std::int32_t kind)
{
    switch (kind) {
    case MULTIPLY:
        return Opcode::MULTIPLY;
    case DIVIDE:
        return Opcode::DIVIDE;
    case MODULO:
        return Opcode::MODULO;
    case ADD:
        return Opcode::ADD;
    case SUBTRACT:
        return Opcode::SUBTRACT;
    case AND:
        return Opcode::AND;
    case OR:
        return Opcode::OR;
    case LESS:
        return Opcode::LESS;
    case GREATER:
        return Opcode::GREATER;
    case EQUAL:
        return Opcode::EQUAL;
    default:
        return Opcode::COMPUTE;
    }
}

/// Whether a cell is a name whose place is known by its form. An unusual path may name nothing.
bool isPlainName(const Cell& cell)
{
    return cell.kind == CellKind::VARIABLE ||
           (cell.kind == CellKind::PATH && static_cast<const Path&>(cell).root != nullptr);
}

/// Whether to evaluate the token may give a variable another value.
bool isWriting(const ScriptToken& token)
{
    return token.kind == TOK_CALL || token.kind == ASSIGN || token.kind == INCREMENT ||
           token.kind == DECREMENT;
}

/// Whether to evaluate the token may change what others have; to read an element grows its array.
bool isImpure(const ScriptToken& token)
{
    return isWriting(token) ||
           (token.kind == TOK_VARIABLE && token.name.find('[') != std::string::npos);
}

bool isCall(const OrderEntry& entry)
{
    return entry.token != nullptr && entry.kind == TOK_CALL;
}
} // namespace

// ---------------------------------------------------------------------------------------- A list

/// Emits the code of an expression. \return where its value stands then
Cell& Lowering::value(Tokens list)
{
    while (!list.empty() && list.back().kind == TOK_ARGEND)
        list = list.first(list.size() - 1);
    const std::size_t outerLevels = levels.size();
    const auto open = [&] { levels.push_back(static_cast<std::uint32_t>(entries.size())); };
    const auto close = [&] {
        OrderEntry result;
        // A group gives a copy.
        result.cell = &copied(closeLevel());
        entries.push_back(result);
    };
    open();
    for (const ScriptToken& token : list) {
        const bool isFirst = entries.size() == levels.back();
        if (token.kind == OPEN_PARENTHESIS)
            open();
        else if (token.kind == CLOSE_PARENTHESIS && levels.size() > outerLevels + 1)
            close();
        else if (isFirst && token.kind == TOK_OPEN_BRACE)
            ++braces;
        else if (isFirst && token.kind == TOK_CLOSE_BRACE)
            --braces;
        else
            entries.push_back({token.kind, &token});
    }
    // A group that nothing closes reaches to the end of the list.
    while (levels.size() > outerLevels + 1)
        close();
    return closeLevel();
}

/// Emits the operators of the innermost level that is open, and takes the level away.
Cell& Lowering::closeLevel()
{
    const std::uint32_t begin = levels.back();
    levels.pop_back();
    while (entries.size() > begin && entries.back().kind == TOK_ARGEND)
        entries.pop_back();
    Cell* result = &machine.nothing;
    if (entries.size() == begin + 1) {
        result = &operand(begin);
    } else if (entries.size() > begin) {
        Order order(entries, begin);
        for (Order::Step step{}; order.next(step);) {
            Cell& cell = applied(step);
            if (step.place != nowhere)
                entries[step.place].cell = &cell;
            else
                giveBack(cell);
        }
        if (!order.isBroken())
            result = &valueOfRest(order);
    }
    entries.resize(begin);
    return *result;
}

/// The value of what is left when all operators have been applied, as a list of its own.
Cell& Lowering::valueOfRest(const Order& order)
{
    std::uint32_t first = order.first();
    std::uint32_t last = order.last();
    if (first == nowhere)
        return machine.nothing;
    const auto isBrace = [](std::int32_t kind) {
        return kind == TOK_OPEN_BRACE || kind == TOK_CLOSE_BRACE;
    };
    while (last != first && entries[last].kind == TOK_ARGEND)
        last = entries[last].previous;
    while (first != last && isBrace(entries[first].kind)) {
        operand(first);
        first = entries[first].next;
    }
    if (first == last)
        return operand(first);
    // Meant: no way out of a list that no operator reduces, so the stack ends the process;
    // `EvaluateTokens.RecursesWithoutEndOnWhatItCannotReduce` holds it.
    emit(Opcode::NEVER_END);
    return machine.nothing;
}

// ----------------------------------------------------------------------------------- An operator

/// Emits one operator: its operands as lists of their own, the left one first, then itself.
Cell& Lowering::applied(const Order::Step& step)
{
    Cell& left = step.left == nowhere ? machine.nothing : operand(step.left);
    // To read a name creates it, before what a call on the right may do. A call that assigns its
    // value itself looks the variable up before it is made, which will do if no argument writes.
    if (isName(left) && step.right != nowhere && isCall(entries[step.right])) {
        const auto& args = entries[step.right].token->args;
        if (step.kind != ASSIGN || !step.isFinal || left.kind != CellKind::VARIABLE ||
            std::any_of(args.begin(), args.end(), isWriting))
            emit(Opcode::TOUCH).a = &left;
    }
    Cell& right = step.right == nowhere ? machine.nothing : operand(step.right);
    switch (step.kind) {
    case ASSIGN:
        return assigned(left, right, step);
    case INCREMENT:
    case DECREMENT:
        return counted(step, left, right);
    default:
        return computed(step.kind, left, right);
    }
}

Cell& Lowering::computed(std::int32_t kind, Cell& left, Cell& right)
{
    giveBack(right);
    giveBack(left);
    aim(left);
    aim(right);
    Instruction& instruction = emit(opcodeOf(kind));
    instruction.row = static_cast<std::uint8_t>(kind);
    instruction.a = &left;
    instruction.b = &right;
    instruction.to = &takeRegister();
    return *instruction.to;
}

/// Emits an assignment; one that ends its list and assigns what was computed last is written by the
/// instruction that computes it.
Cell& Lowering::assigned(Cell& left, Cell& right, const Order::Step& step)
{
    if (!isPlainName(left)) {
        // Whatever is no name is a value that nobody sees any more.
        giveBack(left);
        // To read the left name first may create what the right one names.
        if (isName(left) && isName(right))
            emit(Opcode::TOUCH).a = &left;
        Cell& result = copied(right);
        if (isName(left)) {
            Instruction& instruction = emit(Opcode::COPY);
            instruction.to = &left;
            instruction.a = &result;
        }
        return result;
    }
    if (step.isFinal && isLastResult(right, 0)) {
        Instruction& last = program.code.back();
        // A group is evaluated before the name on the left is looked up.
        const bool isPlainCopy = last.opcode == Opcode::COPY && last.a->kind != CellKind::PATH &&
                                 left.kind == CellKind::VARIABLE;
        const bool isPlainCall = last.opcode == Opcode::CALL && isCall(entries[step.right]);
        if (last.opcode <= Opcode::COMPUTE || isPlainCopy || isPlainCall) {
            last.to = &left;
            giveBack(right);
            if (!isPlainCall) {
                const Instruction writing = last;
                program.code.pop_back();
                aim(left);
                program.code.push_back(writing);
            }
            return left;
        }
    }
    aim(left);
    aim(right);
    Instruction& instruction = emit(Opcode::COPY);
    instruction.to = &left;
    instruction.a = &right;
    if (step.isFinal) {
        instruction.row = right.kind == CellKind::REGISTER ? 1 : 0;
        giveBack(right);
        return left;
    }
    return isName(right) ? copied(left) : right;
}

/// Emits "++" or "--".
Cell& Lowering::counted(const Order::Step& step, Cell& left, Cell& right)
{
    const bool isAlone = step.place == nowhere && ((isName(left) && step.right == nowhere) ||
                                                   (isName(right) && step.left == nowhere));
    giveBack(right);
    giveBack(left);
    aim(left);
    aim(right);
    Instruction& instruction = emit(isAlone ? Opcode::COUNT : Opcode::STEP);
    instruction.row = static_cast<std::uint8_t>(step.kind);
    instruction.a = &left;
    instruction.b = &right;
    if (isAlone)
        return machine.nothing;
    instruction.to = &takeRegister();
    return *instruction.to;
}

/// The value of an entry as a list of its own.
Cell& Lowering::operand(std::uint32_t entry)
{
    return entries[entry].token == nullptr ? *entries[entry].cell
                                           : valueOfToken(*entries[entry].token);
}

Cell& Lowering::valueOfToken(const ScriptToken& token)
{
    switch (token.kind) {
    case TOK_NUMBER:
    case TOK_STRING:
        return constant(token.value);
    case TOK_VARIABLE:
        return name(token.name);
    case TOK_CALL:
        return call(token);
    case TOK_OPEN_BRACE:
        ++braces;
        break;
    case TOK_CLOSE_BRACE:
        --braces;
        break;
    case TOK_FUNC:
    case TOK_ARGEND:
        break;
    default:
        // An operator by itself means nothing; nothing else has a value, or an end.
        if (!isApplied(token.kind))
            emit(Opcode::NEVER_END);
    }
    return machine.nothing;
}

// --------------------------------------------------------------------------------------- A call

Cell& Lowering::call(const ScriptToken& token)
{
    const std::uint32_t live = registers;
    const std::size_t outer = arguments.size();
    lowerArguments(token.args);
    CallSite& site = *program.sites.take(1);
    site.callee = &machine.callee(token.name);
    site.count = static_cast<std::uint32_t>(arguments.size() - outer);
    site.arguments = program.operands.take(site.count);
    site.liveRegisters = live;
    for (std::uint32_t i = 0; i < site.count; ++i) {
        site.arguments[i] = arguments[outer + i];
        giveBack(*site.arguments[i]);
    }
    arguments.resize(outer);
    // The host may look at the block depth.
    settleBraces(0);
    Instruction& instruction = emit(Opcode::CALL);
    instruction.site = &site;
    instruction.to = &takeRegister();
    return *instruction.to;
}

/// Emits the pieces of a call that are not empty. What stands behind the last TOK_ARGEND is no
/// piece.
void Lowering::lowerArguments(Tokens args)
{
    std::size_t lastImpure = args.size();
    while (lastImpure > 0 && !isImpure(args[lastImpure - 1]))
        --lastImpure;
    std::size_t start = 0;
    for (std::size_t at = 0; at < args.size(); ++at) {
        if (args[at].kind != TOK_ARGEND)
            continue;
        if (at > start) {
            Cell& cell = value(args.subspan(start, at - start));
            // A name is read when the call is made, unless a later argument may change it, or see
            // that an element has been read.
            const bool isSeen = cell.kind == CellKind::PATH && at + 1 < args.size();
            arguments.push_back(isSeen || lastImpure > at ? &copied(cell) : &cell);
        }
        start = at + 1;
    }
}
} // namespace tamor::script
