/// \file
/// Where values stand while a program runs: what an instruction works on. Not for hosts.
#pragma once

#include "script/ScriptValue.h"
#include "script/internal/Plain.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamor::script
{
enum class CellKind : std::uint8_t
{
    CONSTANT, ///< a literal, of the program's own
    REGISTER, ///< a result on its way to the next operator
    VARIABLE, ///< a name, and where its value stands in the interpreter's table
    PATH      ///< a name with indices, which is walked each time
};

/// A place for a value, as the running loop sees it.
///
/// `place` is for the fast instructions, which work on plain values only: it is the value where that
/// is plain, or of a type whose tag the fast instructions refuse. Wherever they must not look,
/// because the value's place is not known or the value is not plain, it is `elsewhere`, and they
/// leave the work to the general routines, which ask `Machine::find`.
struct Cell
{
    ScriptValue* place;
    CellKind kind;
};

/// What no fast instruction touches: its tag is none of the language's.
inline ScriptValue elsewhere = [] {
    ScriptValue value;
    value.type = -2;
    return value;
}();

/// A constant or a register.
struct ValueCell : Cell
{
    ScriptValue value;
};

/// A variable of one interpreter; each name has one. It is looked up when it is first met and again
/// after each time that the host's code has run.
struct Variable : Cell
{
    /// Its value in the interpreter's table, or null while it is not looked up.
    ScriptValue* slot = nullptr;
    std::string name;
};

/// A path that is more than a name. Its `place` is good for the instruction behind an AIM only, as
/// elements move when their array grows.
struct Path : Cell
{
    /// Null for a path of an unusual form, which is resolved by its text.
    Variable* root = nullptr;
    std::vector<unsigned> indices;
    std::string text;
};

/// Whether a cell is a name, which an operator may write to and others may change.
inline bool isName(const Cell& cell)
{
    return cell.kind == CellKind::VARIABLE || cell.kind == CellKind::PATH;
}

/// Says where the fast instructions find the cell's value.
inline void settle(Cell& cell, ScriptValue& value)
{
    cell.place = isPlain(value) ? &value : &elsewhere;
}
} // namespace tamor::script
