/// \file
/// What a token list is lowered to: instructions, and the cells that they work on. Not for hosts.
#pragma once

#include "script/ScriptToken.h"
#include "script/internal/BumpStack.h"
#include "script/internal/Cells.h"

#include <cstdint>
#include <vector>

namespace tamor::script
{
struct Callee;

/// What an instruction does. `a` and `b` are its operands, `to` is where its result goes, and where
/// `keep` is not negative, a true result also becomes the value of that list.
enum class Opcode : std::uint8_t
{
    // Fast where both operands, and what is to be overwritten, are plain numbers.
    ADD,
    SUBTRACT,
    MULTIPLY,
    DIVIDE,
    MODULO,
    LESS,
    GREATER,
    EQUAL,
    AND,
    OR,
    COMPUTE, ///< any operator that writes to none of its operands: `row` says which
    // Writing.
    COPY,  ///< to = a; where `row` is 1, `a` is a register that nobody reads again
    COUNT, ///< "++" or "--" behind or in front of a variable: `a`, or `b` where `a` is missing
    STEP,  ///< any other "++" or "--"
    AIM,   ///< lets the path `a` refer to its element for the next instruction, if it is there
    TOUCH, ///< looks `a` up, which creates it, before a call is evaluated
    CALL,
    KEEP, ///< lets `a` be a statement's value
    // Control.
    JUMP,
    IF,      ///< goes on where `a` is true, else jumps
    IF_LESS, ///< the same with a < b, and so on
    IF_GREATER,
    IF_EQUAL,
    LOOP, ///< jumps back where `a` is integer 1, and counts the brace of the next pass
    LOOP_LESS,
    LOOP_GREATER,
    LOOP_EQUAL,
    BEGIN_PASS, ///< a pass of a loop that has a list value of its own
    END_PASS,
    CHECK_HOST, ///< leaves the program where the host's code has run since its start
    BRACES,     ///< adds `target` to the block depth
    RETURN,     ///< the list's value becomes `a`; jumps
    END,
    NEVER_END ///< a list that nothing reduces
};

struct CallSite;

struct Instruction
{
    Opcode opcode;
    /// The operator's kind, for the general routine.
    std::uint8_t row = 0;
    /// The list of which a true result becomes the value, or -1. In a LOOP, the braces that the next
    /// pass opens.
    std::int16_t keep = -1;
    /// Where a jump goes.
    std::int32_t target = 0;
    Cell* to = nullptr;
    union
    {
        Cell* a = nullptr;
        CallSite* site; ///< of a CALL
    };
    Cell* b = nullptr;
};

/// A call in a program.
struct CallSite
{
    Callee* callee = nullptr;
    /// The arguments, in a row of `Program::operands`.
    Cell** arguments = nullptr;
    std::uint32_t count = 0;
    /// The registers below this number hold values that are still to be read.
    std::uint32_t liveRegisters = 0;
};

/// A lowered list. Nothing in it points to the tokens that it was made from.
struct Program
{
    std::vector<Instruction> code;
    BumpStack<ValueCell> constants;
    BumpStack<Path> paths;
    BumpStack<CallSite> sites;
    BumpStack<Cell*> operands;
    /// How many list values are kept at once: the program's own, and one for each loop around a
    /// `return`.
    std::int32_t listValues = 1;

    /// A length to go back to.
    struct Mark
    {
        std::size_t code = 0;
        BumpStack<Cell*>::Mark operands = {};
        BumpStack<ValueCell>::Mark constants = {};
        BumpStack<Path>::Mark paths = {};
        BumpStack<CallSite>::Mark sites = {};
    };

    Mark mark() const
    {
        return {code.size(), operands.mark(), constants.mark(), paths.mark(), sites.mark()};
    }

    void release(const Mark& mark)
    {
        code.resize(mark.code);
        operands.release(mark.operands);
        constants.release(mark.constants);
        paths.release(mark.paths);
        sites.release(mark.sites);
    }

    void clear()
    {
        release({});
        listValues = 1;
    }
};
} // namespace tamor::script
