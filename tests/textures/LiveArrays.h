/// \file
/// The arrays that the program holds, for tests of storage that is left or let go on purpose, and of
/// code that stays inside it.
#pragma once

#include <cstddef>

namespace tamor::test
{
/// The arrays from array new that have not been freed. This program's array new counts them.
int liveArrays();

/// The bytes that they take, and a few more for each.
std::size_t liveArrayBytes();

/// While one lives, each new array ends where the memory does: whoever reads or writes the byte
/// behind it, libraries included, ends the program.
class GuardedArrays
{
public:
    GuardedArrays();
    ~GuardedArrays();
    GuardedArrays(const GuardedArrays&) = delete;
    GuardedArrays& operator=(const GuardedArrays&) = delete;
};
} // namespace tamor::test
