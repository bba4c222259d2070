#include "script/internal/Lowering.h"

#include "script/internal/Machine.h"
#include "script/internal/Scanner.h"

namespace tamor::script
{
// ----------------------------------------------------------------------------------------- Cells

/// The cell, or for a name a register with a copy of its present value.
Cell& Lowering::copied(Cell& cell)
{
    if (!isName(cell))
        return cell;
    Cell& copy = takeRegister();
    aim(cell);
    Instruction& instruction = emit(Opcode::COPY);
    instruction.to = &copy;
    instruction.a = &cell;
    return copy;
}

/// Has a path refer to its element for the next instruction.
void Lowering::aim(Cell& cell)
{
    if (cell.kind == CellKind::PATH && static_cast<const Path&>(cell).root != nullptr)
        emit(Opcode::AIM).a = &cell;
}

Cell& Lowering::constant(const ScriptValue& literal)
{
    ValueCell& cell = *program.constants.take(1);
    cell.kind = CellKind::CONSTANT;
    cell.value = literal;
    settle(cell, cell.value);
    return cell;
}

/// The cell of a variable's path.
Cell& Lowering::name(const std::string& path)
{
    Scanner scanner(path);
    const std::string_view root = scanner.readName();
    if (scanner.atEnd() && !root.empty())
        return machine.variable(root);
    Path& cell = *program.paths.take(1);
    cell.place = &elsewhere;
    cell.kind = CellKind::PATH;
    cell.root = nullptr;
    cell.text = path;
    cell.indices.clear();
    if (!root.empty() && scanner.readIndices(cell.indices))
        cell.root = &machine.variable(root);
    return cell;
}

Cell& Lowering::takeRegister()
{
    if (freeRegisters.empty())
        return machine.registerAt(registers++);
    Cell* const cell = freeRegisters.back();
    freeRegisters.pop_back();
    return *cell;
}

/// Lets a register be used again from the next instruction on, which may still read it.
void Lowering::giveBack(Cell& cell)
{
    if (cell.kind == CellKind::REGISTER)
        freeRegisters.push_back(&cell);
}
// ------------------------------------------------------------------------------------------ Code

Instruction& Lowering::emit(Opcode opcode)
{
    Instruction& instruction = program.code.emplace_back();
    instruction.opcode = opcode;
    return instruction;
}

/// Whether the cell is a register that the last instruction has written, from `begin` on.
bool Lowering::isLastResult(const Cell& cell, std::size_t begin) const
{
    return cell.kind == CellKind::REGISTER && program.code.size() > begin &&
           program.code.back().to == &cell;
}

/// Lets the value of a cell be that of a statement, of which the code begins at `begin`.
void Lowering::keepValue(Cell& cell, std::int16_t keep, std::size_t begin)
{
    Instruction* const last = program.code.size() > begin ? &program.code.back() : nullptr;
    if (last != nullptr && last->to == &cell) {
        last->keep = keep;
        // The value of a call by itself goes nowhere else.
        if (last->opcode == Opcode::CALL && cell.kind == CellKind::REGISTER)
            last->to = nullptr;
    } else if (keep >= 0 && (cell.kind != CellKind::CONSTANT ||
                             isTrue(static_cast<const ValueCell&>(cell).value))) {
        Instruction& instruction = emit(Opcode::KEEP);
        instruction.a = &cell;
        instruction.keep = keep;
    } else if (isName(cell)) {
        // To read a name creates it, also where nobody wants its value.
        emit(Opcode::TOUCH).a = &cell;
    }
}

/// Emits the jump on a condition, of which the code begins at `begin`.
Instruction& Lowering::jumpOn(Cell& condition, std::size_t begin, bool isLoop)
{
    if (isLastResult(condition, begin)) {
        Instruction& last = program.code.back();
        const auto become = [&](Opcode ifOpcode, Opcode loopOpcode) -> Instruction& {
            last.opcode = isLoop ? loopOpcode : ifOpcode;
            return last;
        };
        if (last.opcode == Opcode::LESS)
            return become(Opcode::IF_LESS, Opcode::LOOP_LESS);
        if (last.opcode == Opcode::GREATER)
            return become(Opcode::IF_GREATER, Opcode::LOOP_GREATER);
        if (last.opcode == Opcode::EQUAL)
            return become(Opcode::IF_EQUAL, Opcode::LOOP_EQUAL);
    }
    aim(condition);
    Instruction& instruction = emit(isLoop ? Opcode::LOOP : Opcode::IF);
    instruction.a = &condition;
    return instruction;
}

/// Emits what has to be added to the block depth so that `owed` braces are left to be added.
void Lowering::settleBraces(std::int32_t owed)
{
    if (braces != owed)
        emit(Opcode::BRACES).target = braces - owed;
    braces = owed;
}

void Lowering::endStatement()
{
    registers = 0;
    freeRegisters.clear();
}
} // namespace tamor::script
