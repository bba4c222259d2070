/// \file
/// What a script may take, for hosts that run scripts which they have not written.
#pragma once

#include <cstdint>

namespace tamor
{
/// What a run may take at most; 0 stands for no limit, and there is none at first.
///
/// A run is a call of `runFile`, `runTokens` or `evaluateTokens`, with what built-ins run within it.
/// Without limits it has its full speed; with one it is several times slower.
struct ScriptLimits
{
    /// Steps: an operator, a copy, a call, a condition. It ends loops and recursions.
    std::uint64_t steps = 0;
    /// Bytes of the texts and arrays that the steps read and make, all together, whether they are
    /// still held or not. It bounds the time that they are copied for, and the memory, to a few
    /// times as much.
    std::uint64_t bytes = 0;
    /// Calls within calls, of the script's functions and in its text. With it a script cannot fill
    /// the stack: some thousand fit into the usual one of 8 MB.
    std::uint32_t depth = 0;

    /// Whether there is a limit.
    bool areSet() const { return steps != 0 || bytes != 0 || depth != 0; }
};

/// A limit that a run has come to.
enum class ScriptLimit : std::uint8_t
{
    NONE,
    STEPS,
    BYTES,
    DEPTH
};
} // namespace tamor
