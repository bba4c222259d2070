/// \file
/// Keeps the positions of tokens beside them while a text is parsed. Not for hosts.
#pragma once

#include "script/ScriptInterpreter.h"
#include "script/ScriptPositions.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tamor::script
{
class PositionWriter
{
public:
    /// \param listSize  the tokens that are in the list already
    PositionWriter(std::string_view wholeText, ScriptPositions& filled,
                   const ScriptInterpreter& interpreter, std::size_t listSize);

    /// An item of the text begins at an offset, which is never before the last one's.
    void begin(std::size_t offset);

    /// A token of the present item is about to be appended.
    void emit(const ScriptInterpreter& interpreter, bool isArgument);

    /// The argument list of the present item begins, and so do items inside it.
    void beginArguments();

    /// The argument list ends, and its item is the present one again.
    void endArguments();

    /// The list that has ended is that of the token that was appended last, with as many tokens.
    void attachArguments(std::size_t count);

private:
    struct OpenArguments
    {
        ScriptPosition item;
        std::vector<ScriptPosition> positions;
    };

    std::vector<ScriptPosition>& listOf(const ScriptInterpreter& interpreter, bool isArgument);

    std::string_view text;
    ScriptPositions& positions;
    /// How far lines and columns have been counted, and what they are there.
    std::size_t offset = 0;
    ScriptPosition reached{1, 1, {}};
    ScriptPosition item;
    std::vector<OpenArguments> openArguments;
    std::vector<ScriptPosition> endedArguments;
    /// Where the last token went.
    std::vector<ScriptPosition>* last = nullptr;
    const ScriptFunction* function = nullptr;
    std::vector<ScriptPosition>* body = nullptr;
};
} // namespace tamor::script
