/// \file
/// What the machine's memory holds, and the pages under large arrays.
#pragma once

#include "TamorExport.h"

#include <cstddef>
#include <cstdint>

namespace tamor
{
/// Whether there is room for so many bytes more: asked before an array is made whose size only a
/// file or an argument claims. Small sizes are held without asking.
TAMOR_EXPORT bool memoryHolds(std::uint64_t bytes);

/// `a` times `b`; the largest number where the product is larger.
constexpr std::uint64_t saturatingProduct(std::uint64_t a, std::uint64_t b)
{
    return b != 0 && a > UINT64_MAX / b ? UINT64_MAX : a * b;
}

/// Asks for large pages under `size` bytes from `start` on, which are about to be written for the
/// first time. A hint, which may be refused and changes nothing but the time: writing a large array
/// a small page at a time can take longer than all the rest of making it.
TAMOR_EXPORT void useLargePages(void* start, std::size_t size);

/// Sets `size` bytes from `start` on to 0. Whole pages are given back, so that they take no memory
/// before they are written.
TAMOR_EXPORT void clearPages(void* start, std::size_t size);
} // namespace tamor
