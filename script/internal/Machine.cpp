#include "script/internal/Machine.h"

#include "script/internal/Elements.h"
#include "script/internal/Operators.h"
#include "script/internal/Texts.h"

#include <algorithm>

namespace tamor::script
{
Machine::Machine(ScriptInterpreter& owner) : interpreter(owner)
{
    nothing.kind = CellKind::CONSTANT;
    nothing.place = &nothing.value;
}

// ----------------------------------------------------------------------------------------- Cells

Variable& Machine::variable(std::string_view name)
{
    const auto found = variables.find(name);
    if (found != variables.end())
        return *found->second;
    auto made = std::make_unique<Variable>();
    made->place = &elsewhere;
    made->kind = CellKind::VARIABLE;
    made->name = name;
    const std::string_view key = made->name;
    return *variables.emplace(key, std::move(made)).first->second;
}

Callee& Machine::callee(std::string_view name)
{
    const auto found = callees.find(name);
    if (found != callees.end())
        return *found->second;
    auto made = std::make_unique<Callee>();
    made->name = name;
    const std::string_view key = made->name;
    return *callees.emplace(key, std::move(made)).first->second;
}

Cell& Machine::registerAt(std::uint32_t number)
{
    while (number >= registers.size()) {
        ValueCell& made = registers.emplace_back();
        made.kind = CellKind::REGISTER;
        made.value.setInt(0);
        made.place = &made.value;
    }
    return registers[number];
}

/// Forgets what the host's code may have changed.
void Machine::hostActed()
{
    for (Variable* const variable : known) {
        variable->slot = nullptr;
        variable->place = &elsewhere;
    }
    known.clear();
    ++epoch;
}

/// Where a cell's value stands; a name is created where it is new. Null where a path names nothing.
ScriptValue* Machine::find(Cell& cell)
{
    switch (cell.kind) {
    case CellKind::VARIABLE: {
        auto& variable = static_cast<Variable&>(cell);
        return variable.slot != nullptr ? variable.slot : lookUp(variable);
    }
    case CellKind::PATH:
        return walk(static_cast<Path&>(cell));
    default:
        return &static_cast<ValueCell&>(cell).value;
    }
}

ScriptValue* Machine::lookUp(Variable& variable)
{
    // First among those that `hostActed` makes forget: a place that it did not know would stay.
    known.push_back(&variable);
    variable.slot = &interpreter.variables[variable.name];
    settle(variable, *variable.slot);
    return variable.slot;
}

ScriptValue* Machine::walk(Path& path)
{
    if (path.root == nullptr)
        return resolveVariable(interpreter, path.text);
    ScriptValue* value = find(*path.root);
    for (std::size_t i = 0; i < path.indices.size() && value != nullptr; ++i)
        value = findElement(interpreter, *value, path.indices[i]);
    return value;
}

ScriptValue& Machine::read(Cell& cell)
{
    ScriptValue* const value = find(cell);
    return value != nullptr ? *value : nothing.value;
}

/// The places of two operands. Both are looked up, the left one first; then, as to look one up may
/// have moved the other, the right one again and the left one. Null for a path that names nothing.
std::pair<ScriptValue*, ScriptValue*> Machine::places(Cell& left, Cell& right)
{
    ScriptValue* leftPlace = find(left);
    ScriptValue* rightPlace = find(right);
    if (left.kind == CellKind::PATH || right.kind == CellKind::PATH) {
        rightPlace = find(right);
        leftPlace = find(left);
    }
    return {leftPlace, rightPlace};
}

/// Makes a register a plain number again when its value has been used.
void Machine::release(Cell& cell)
{
    if (cell.kind != CellKind::REGISTER)
        return;
    ScriptValue& value = static_cast<ValueCell&>(cell).value;
    if (cell.place == &value && (value.type == TYPE_INT || value.type == TYPE_FLOAT))
        return;
    value.setInt(0);
    value.text.clear();
    value.items.clear();
    value.reserved = 0;
    cell.place = &value;
}

// -------------------------------------------------------------------------------------- Operators

/// Applies any operator that writes to none of its operands.
void Machine::compute(const Instruction& instruction, ScriptValue* lists)
{
    const auto [left, right] = places(*instruction.a, *instruction.b);
    const ScriptValue& leftValue = left != nullptr ? *left : nothing.value;
    const ScriptValue& rightValue = right != nullptr ? *right : nothing.value;
    // `s = s + x` grows the string where it is: with a copy for each step, a loop of such steps
    // would be quadratic.
    if (instruction.row == ADD && instruction.to == instruction.a && left != nullptr &&
        left->type == TYPE_STRING && rightValue.type != TYPE_ARRAY) {
        appendText(left->text, rightValue);
        left->number = 0;
        left->items.clear();
        left->reserved = 0;
        if (instruction.b != instruction.a)
            release(*instruction.b);
        if (instruction.keep >= 0 && isTrue(*left))
            assign(lists[instruction.keep], *left);
        return;
    }
    ScriptValue result = operatorRow(instruction.row).compute(leftValue, rightValue);
    release(*instruction.a);
    release(*instruction.b);
    deliver(instruction, std::move(result), lists);
}

/// Makes a variable a copy of a cell's value, whatever they hold.
void Machine::assignAny(Variable& to, Cell& from)
{
    if (to.place != &elsewhere && from.place != &elsewhere) {
        // The copy is as plain as what it is copied from.
        return assign(*to.place, *from.place);
    }
    const ScriptValue& value = read(from);
    ScriptValue& place = *find(to);
    assign(place, value);
    settle(to, place);
}

/// Puts a result where the instruction wants it.
void Machine::deliver(const Instruction& instruction, ScriptValue&& result, ScriptValue* lists)
{
    ScriptValue* value = instruction.to != nullptr ? find(*instruction.to) : nullptr;
    if (value != nullptr) {
        *value = std::move(result);
        if (instruction.to->kind != CellKind::PATH)
            settle(*instruction.to, *value);
    } else {
        value = &result;
    }
    // Meant: a value that is not true leaves the last true one in place;
    // `RunTokens.KeepsTheLastTrueValue` holds it.
    if (instruction.keep >= 0 && isTrue(*value))
        assign(lists[instruction.keep], *value);
}

/// Lets a value be that of a statement.
void Machine::keep(const Instruction& instruction, ScriptValue* lists)
{
    const ScriptValue& value = read(*instruction.a);
    if (isTrue(value))
        assign(lists[instruction.keep], value);
    release(*instruction.a);
}

/// Lets the value of a pass be that of the list around it.
void Machine::endPass(const Instruction& instruction, ScriptValue* lists)
{
    const ScriptValue& value = lists[instruction.target];
    if (isTrue(value))
        assign(lists[instruction.keep], value);
}

/// Lets a value be that of a list, whatever it is.
void Machine::giveValue(const Instruction& instruction, ScriptValue* lists)
{
    assign(lists[instruction.keep], read(*instruction.a));
    release(*instruction.a);
}

/// An assignment, or a copy on its way to a register.
void Machine::copy(const Instruction& instruction, ScriptValue* lists)
{
    ScriptValue& from = *instruction.a->place;
    ScriptValue& to = *instruction.to->place;
    if (instruction.row == 0 && &from != &elsewhere && &to != &elsewhere) {
        // Nothing is to be looked up, and the copy is as plain as what it is copied from.
        if (instruction.keep >= 0 && isTrue(from))
            assign(lists[instruction.keep], from);
        return assign(to, from);
    }
    const auto [left, right] = places(*instruction.to, *instruction.a);
    const ScriptValue& value = right != nullptr ? *right : nothing.value;
    if (instruction.keep >= 0 && isTrue(value))
        assign(lists[instruction.keep], value);
    if (left != nullptr) {
        if (instruction.row != 0)
            *left = std::move(*right);
        else
            assign(*left, value);
        if (instruction.to->kind != CellKind::PATH)
            settle(*instruction.to, *left);
    }
    if (instruction.row != 0)
        release(*instruction.a);
}

/// "++" and "--", which write to a variable, or to a copy of anything else.
void Machine::step(const Instruction& instruction, ScriptValue* lists)
{
    Cell& leftCell = *instruction.a;
    Cell& rightCell = *instruction.b;
    const auto [left, right] = places(leftCell, rightCell);
    ScriptValue leftCopy;
    ScriptValue rightCopy;
    if (!isName(leftCell))
        leftCopy = *left;
    if (!isName(rightCell))
        rightCopy = *right;
    ScriptValue& leftPlace = isName(leftCell) && left != nullptr ? *left : leftCopy;
    ScriptValue& rightPlace = isName(rightCell) && right != nullptr ? *right : rightCopy;
    ScriptValue result = applyStep(leftPlace, instruction.row, rightPlace);
    for (Cell* const cell : {&leftCell, &rightCell}) {
        release(*cell);
        if (cell->kind == CellKind::VARIABLE)
            settle(*cell, *find(*cell));
    }
    deliver(instruction, std::move(result), lists);
}

void assignElements(ScriptValue& to, const ScriptValue& from)
{
    if (&to == &from)
        return;
    ScriptValue copy(from);
    to = std::move(copy);
}

ScriptValue takeListValue(ScriptValue& list)
{
    if (list.type == TYPE_NULL || list.type == TYPE_INT || list.type == TYPE_FLOAT) {
        ScriptValue result;
        result.type = list.type;
        result.number = list.number;
        result.reserved = list.reserved;
        return result;
    }
    return std::move(list);
}

namespace
{
/// Whether `inner` is an element of `outer`, at any depth.
bool isInside(const ScriptValue& inner, const ScriptValue& outer)
{
    return std::any_of(outer.items.begin(), outer.items.end(), [&](const ScriptValue& item) {
        return &item == &inner || isInside(inner, item);
    });
}
} // namespace

ScriptValue applyStep(ScriptValue& left, std::int32_t kind, ScriptValue& right)
{
    const auto stepped = [&](const ScriptValue& value) {
        return kind == INCREMENT ? add(value, 1) : subtract(value, 1);
    };
    ScriptValue result;
    if (left.type == TYPE_NULL) {
        // An element of what is overwritten is gone then.
        const bool leftGoes = isInside(left, right);
        result = right = stepped(right);
        if (leftGoes)
            return result;
    }
    if (right.type == TYPE_NULL)
        result = left = stepped(left);
    return result;
}
} // namespace tamor::script
