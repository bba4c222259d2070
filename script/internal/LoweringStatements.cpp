#include "script/internal/Lowering.h"

#include "script/internal/Machine.h"

#include <algorithm>

namespace tamor::script
{
void Lowering::start()
{
    entries.clear();
    levels.clear();
    arguments.clear();
    braces = 0;
    endStatement();
}

void Lowering::statement(Tokens list, std::int16_t keep)
{
    const std::size_t begin = program.code.size();
    keepValue(value(list), keep, begin);
    endStatement();
}

void Lowering::result(Tokens list)
{
    Cell& cell = value(list);
    settleBraces(0);
    Instruction& instruction = emit(Opcode::RETURN);
    instruction.a = &cell;
    instruction.keep = 0;
    instruction.target = static_cast<std::int32_t>(program.code.size());
    endStatement();
}

void Lowering::end()
{
    settleBraces(0);
    emit(Opcode::END);
}

/// A list whose statements are being lowered. A statement's code may be reached from the one before
/// it and by jumps; that a jump may lead into the middle of a statement is the language's way.
struct Lowering::List
{
    /// A position of the list at which a statement begins.
    struct Start
    {
        std::int32_t code = -1;
        /// The braces that are owed there, whichever way it is reached; as soon as one is known.
        bool isReached = false;
        std::int32_t braces = 0;
    };

    /// A jump whose target is a position of the list.
    struct Jump
    {
        std::size_t instruction;
        std::size_t position;
    };

    Tokens tokens;
    std::int16_t keep;
    std::vector<Start> starts;
    std::vector<Jump> jumps;
};

void Lowering::statements(Tokens tokens, std::size_t first, std::int16_t keep)
{
    List list{tokens, keep, {}, {}};
    list.starts.resize(tokens.size() + 1);
    list.starts.back().isReached = true;
    chain(list, first);
    for (std::size_t position = first; position < tokens.size(); ++position) {
        const List::Start& start = list.starts[position];
        if (start.isReached && start.code < 0) {
            braces = start.braces;
            chain(list, position);
        }
    }
    // Behind the last chain is the list's end.
    if (list.jumps.back().instruction + 1 == program.code.size() &&
        list.jumps.back().position == tokens.size() && program.code.back().opcode == Opcode::JUMP) {
        list.jumps.pop_back();
        program.code.pop_back();
    }
    list.starts.back().code = static_cast<std::int32_t>(program.code.size());
    for (const List::Jump& jump : list.jumps)
        program.code[jump.instruction].target = list.starts[jump.position].code;
    braces = 0;
}

/// Lets an instruction that has just been emitted jump to a position of the list.
void Lowering::jump(List& list, Instruction& instruction, std::size_t position)
{
    List::Start& start = list.starts[position];
    if (!start.isReached)
        start.braces = braces;
    start.isReached = true;
    list.jumps.push_back({static_cast<std::size_t>(&instruction - program.code.data()), position});
}

/// Emits the statements from a position on, up to one that has its code already or to the end.
void Lowering::chain(List& list, std::size_t position)
{
    const Tokens tokens = list.tokens;
    for (;;) {
        position = std::min(position, tokens.size());
        List::Start& start = list.starts[position];
        if (start.isReached)
            settleBraces(start.braces);
        if (start.code >= 0 || position == tokens.size())
            return jump(list, emit(Opcode::JUMP), position);
        start = {static_cast<std::int32_t>(program.code.size()), true, braces};

        const std::size_t separator = endOfStatement(tokens, position);
        if (separator < tokens.size() && tokens[separator].kind == TOK_RETURN) {
            // Meant: the literal behind it and nothing computed, so `return x;` returns no value;
            // `RunTokens.ReturnsTheStoredLiteralAndEvaluatesNothing` holds it.
            settleBraces(0);
            Cell& literal = separator + 1 < tokens.size() ? constant(tokens[separator + 1].value)
                                                          : machine.nothing;
            Instruction& instruction = emit(Opcode::RETURN);
            instruction.a = &literal;
            instruction.keep = list.keep;
            return jump(list, instruction, tokens.size());
        }
        // What stands behind the last separator is never run.
        if (separator == tokens.size()) {
            position = separator;
        } else if (isControlStatement(tokens.subspan(position, separator - position))) {
            position = control(list, position);
        } else {
            statement(tokens.subspan(position, separator - position), list.keep);
            position = separator + 1;
        }
    }
}

/// Emits a control form. \return the position at which the list goes on
std::size_t Lowering::control(List& list, std::size_t headerPosition)
{
    const Tokens tokens = list.tokens;
    const ScriptToken& header = tokens[headerPosition];
    const std::size_t separator = headerPosition + 1;
    if (header.kind == TOK_IF) {
        const std::size_t otherwise = std::min(behindFalseIf(tokens, separator), tokens.size());
        const std::size_t begin = program.code.size();
        Cell& condition = value(header.args);
        if (list.starts[otherwise].isReached)
            settleBraces(list.starts[otherwise].braces);
        jump(list, jumpOn(condition, begin, false), otherwise);
        endStatement();
        return separator + 1;
    }
    settleBraces(0);
    const std::size_t bodyEnd = endOfBody(tokens, separator);
    // A body that does not end there ends the list.
    if (bodyEnd > tokens.size())
        return tokens.size();
    loop(header, tokens.subspan(separator, bodyEnd - separator), list.keep, false);
    return bodyEnd + 1;
}

Lowering::LoopEnd Lowering::loop(const ScriptToken& header, Tokens body, std::int16_t keep,
                                 bool isChecked)
{
    const Clauses clauses = clausesOf(header);
    statement(clauses.first, -1);
    settleBraces(0);
    const std::size_t entry = program.code.size();
    emit(Opcode::JUMP);

    // The jump to the next pass counts the brace that the body begins with.
    LoopEnd loopEnd{{}, static_cast<std::int32_t>(program.code.size()), 0};
    const bool hasBlock = body.size() > 2 && body[0].kind == TOK_SEMICOLON &&
                          body[1].kind == TOK_OPEN_BRACE && body[2].kind == TOK_SEMICOLON;
    if (hasBlock)
        loopEnd.braces = 1;
    // Where a pass may return, its value is known at its end only.
    const bool returns = std::any_of(body.begin(), body.end(), [](const ScriptToken& token) {
        return token.kind == TOK_RETURN;
    });
    const auto passKeep = returns ? static_cast<std::int16_t>(program.listValues++) : keep;
    if (returns)
        emit(Opcode::BEGIN_PASS).keep = passKeep;
    statements(body, hasBlock ? 3 : 0, passKeep);
    if (returns) {
        Instruction& instruction = emit(Opcode::END_PASS);
        instruction.keep = keep;
        instruction.target = passKeep;
    }
    statement(clauses.step, -1);
    settleBraces(0);

    program.code[entry].target = static_cast<std::int32_t>(program.code.size());
    if (isChecked)
        emit(Opcode::CHECK_HOST);
    loopEnd.mark = program.mark();
    loopCondition(clauses.condition, loopEnd);
    return loopEnd;
}

void Lowering::loopCondition(Tokens condition, const LoopEnd& loopEnd)
{
    const std::size_t begin = program.code.size();
    Cell& cell = value(condition);
    settleBraces(0);
    // Meant: only integer 1 keeps a loop going, not whatever is true;
    // `RunTokens.LoopsOnIntegerOneAlone` holds it.
    Instruction& instruction = jumpOn(cell, begin, true);
    instruction.target = loopEnd.top;
    instruction.keep = loopEnd.braces;
    endStatement();
}
} // namespace tamor::script
