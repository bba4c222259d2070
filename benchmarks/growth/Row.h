/// \file
/// Work of several sizes, to see how fast it grows: `tamor-growth-benchmarks`.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace tamor::bench
{
/// An operation, and the sizes that it is tried with.
struct Row
{
    const char* name;
    const char* unit; ///< what the sizes count
    std::vector<std::size_t> sizes;
    /// Gets everything ready for a size, and returns the work, which may be done several times: true if
    /// it did what the row's name says.
    std::function<std::function<bool()>(std::size_t)> prepare;
};

std::span<const Row> rows();
} // namespace tamor::bench
