/// \file
/// The engine's interpreter beside the plain one: whole programs, run again and again, with a host
/// that changes everything it may change, between the runs and during them.
#pragma once

#include <string>

namespace tamor::test
{
struct ProgramComparison
{
    /// False where the rules leave the outcome open or let the process end.
    bool hasOutcome = false;
    /// What differs, with the program; else empty.
    std::string difference;
};

/// Runs the program of a seed with both interpreters.
ProgramComparison compareProgram(unsigned seed);
} // namespace tamor::test
