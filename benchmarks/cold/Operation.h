/// \file
/// What is done for the first time in a process of its own: `tamor-cold-benchmarks`.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>

namespace tamor::bench
{
/// What an operation leaves.
struct Outcome
{
    bool isRight = false;   ///< whether it did what its name says
    std::size_t held = 0;   ///< bytes that its result must hold; 0 if that has no plain answer
    std::size_t leftBy = 0; ///< bytes that it leaves allocated beside, by design
};

/// Gets everything ready, and returns what is to be done.
using Preparation = std::function<std::function<Outcome()>()>;

/// An operation, and what one would do instead.
struct Operation
{
    const char* name;
    Preparation ours;
    const char* peer = nullptr; ///< nullptr without one
    Preparation peers = nullptr;
};

std::span<const Operation> operations();
} // namespace tamor::bench
