/// \file
/// What the program holds of the heap.
#pragma once

#include <cstdint>

namespace tamor::test
{
/// In bytes, as the allocator counts: with what it takes for each piece.
std::int64_t heldBytes();
} // namespace tamor::test
