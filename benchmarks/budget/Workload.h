/// \file
/// Work whose instructions are counted and held to a budget: `scripts/bench --budget`. A count says what
/// the engine itself does, on a machine that is busy with other things, too.
#pragma once

#include <functional>
#include <span>

namespace tamor::bench
{
/// One fixed piece of work.
struct Workload
{
    const char* name;
    /// Gets everything ready, and returns the work: true if it did what its name says.
    std::function<std::function<bool()>()> prepare;
};

std::span<const Workload> mediaWorkloads();
std::span<const Workload> guiWorkloads();
std::span<const Workload> scriptWorkloads();
} // namespace tamor::bench
