/// \file
/// Lowering: from a token list to a program. Not for hosts.
///
/// An expression is put in order once, here, exactly as the language applies its operators: groups
/// from the left, then a sweep for each row of the operators, each from the right. What a list does
/// while it is lowered cannot be observed: nothing is evaluated, and names are looked up when the
/// program runs.
#pragma once

#include "script/ScriptToken.h"
#include "script/internal/Order.h"
#include "script/internal/Program.h"
#include "script/internal/Statements.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tamor::script
{
class Machine;

/// Appends the code of lists, expressions and loops to a program.
class Lowering
{
public:
    Lowering(Machine& owner, Program& filled) : machine(owner), program(filled) {}

    /// Begins anew, with an empty program.
    void start();

    /// An expression as a statement; a true value is kept as that of the list `keep`, unless that
    /// is negative.
    void statement(Tokens list, std::int16_t keep);

    /// The statements of a list from position `first` on; a true value of one is kept.
    void statements(Tokens list, std::size_t first, std::int16_t keep);

    /// What a loop needs so that its condition can be lowered anew.
    struct LoopEnd
    {
        Program::Mark mark; ///< in front of the condition
        std::int32_t top;   ///< where a pass begins
        std::int16_t braces;
    };

    /// A `while` or a `for` with the list `body`.
    /// \param isChecked  whether to leave the program in front of the condition where the host's
    ///                   code has run
    LoopEnd loop(const ScriptToken& header, Tokens body, std::int16_t keep, bool isChecked);

    /// The condition behind a loop's body.
    void loopCondition(Tokens condition, const LoopEnd& loopEnd);

    /// What an expression gives, whatever that is, as the program's value.
    void result(Tokens list);

    /// The end of the program.
    void end();

private:
    // Expressions.
    Cell& value(Tokens list);
    Cell& closeLevel();
    Cell& valueOfRest(const Order& order);
    Cell& applied(const Order::Step& step);
    Cell& assigned(Cell& left, Cell& right, const Order::Step& step);
    Cell& computed(std::int32_t kind, Cell& left, Cell& right);
    Cell& counted(const Order::Step& step, Cell& left, Cell& right);
    Cell& operand(std::uint32_t entry);
    Cell& valueOfToken(const ScriptToken& token);
    Cell& call(const ScriptToken& token);
    void lowerArguments(Tokens args);
    Cell& copied(Cell& cell);
    void aim(Cell& cell);

    // Cells.
    Cell& constant(const ScriptValue& literal);
    Cell& name(const std::string& path);
    Cell& takeRegister();
    void giveBack(Cell& cell);
    void endStatement();

    // Code.
    Instruction& emit(Opcode opcode);
    bool isLastResult(const Cell& cell, std::size_t begin) const;
    void keepValue(Cell& cell, std::int16_t keep, std::size_t begin);
    Instruction& jumpOn(Cell& condition, std::size_t begin, bool isLoop);
    void settleBraces(std::int32_t owed);

    // Statements.
    struct List;
    void chain(List& list, std::size_t position);
    std::size_t control(List& list, std::size_t header);
    void jump(List& list, Instruction& instruction, std::size_t position);

    Machine& machine;
    Program& program;
    std::vector<OrderEntry> entries;
    /// Where the groups that are open begin in `entries`.
    std::vector<std::uint32_t> levels;
    /// The arguments of the calls that are being lowered.
    std::vector<Cell*> arguments;
    std::vector<Cell*> freeRegisters;
    std::uint32_t registers = 0;
    /// The braces that have been passed and not been added to the block depth.
    std::int32_t braces = 0;
};
} // namespace tamor::script
