#include "script/internal/PositionWriter.h"

#include <utility>

namespace tamor::script
{
PositionWriter::PositionWriter(std::string_view wholeText, ScriptPositions& filled,
                               const ScriptInterpreter& interpreter, std::size_t listSize)
    : text(wholeText), positions(filled)
{
    positions.list.resize(listSize);
    for (const auto& [name, entry] : interpreter.functions)
        positions.bodies[name].resize(entry.body.size());
}

void PositionWriter::begin(std::size_t itemOffset)
{
    for (; offset < itemOffset; ++offset) {
        ++reached.column;
        if (text[offset] == '\n') {
            ++reached.line;
            reached.column = 1;
        }
    }
    item = reached;
}

void PositionWriter::emit(const ScriptInterpreter& interpreter, bool isArgument)
{
    last = &listOf(interpreter, isArgument);
    last->push_back(item);
}

std::vector<ScriptPosition>& PositionWriter::listOf(const ScriptInterpreter& interpreter,
                                                    bool isArgument)
{
    if (interpreter.currentFunction == nullptr)
        return isArgument ? openArguments.back().positions : positions.list;
    if (function != interpreter.currentFunction) {
        function = interpreter.currentFunction;
        for (const auto& [name, entry] : interpreter.functions)
            if (&entry == function)
                body = &positions.bodies[name];
    }
    return *body;
}

void PositionWriter::beginArguments()
{
    openArguments.push_back({item, {}});
}

void PositionWriter::endArguments()
{
    item = openArguments.back().item;
    endedArguments = std::move(openArguments.back().positions);
    openArguments.pop_back();
}

void PositionWriter::attachArguments(std::size_t count)
{
    endedArguments.resize(count, {item.line, item.column, {}});
    last->back().args = std::move(endedArguments);
    endedArguments.clear();
}
} // namespace tamor::script
