/// \file
/// What the system counts of this process, for tests of code that is to take little.
#pragma once

#include <cstddef>

namespace tamor::test
{
/// How often the process has asked the system to read from a file. Asking takes a few more.
std::size_t readCalls();

/// The memory that the process has written to, in MiB.
std::size_t residentMegabytes();
} // namespace tamor::test
