/// \file
/// A fuzz target's bytes, taken one after the other as arguments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace tamor::test
{
/// Gives the bytes from the first to the last, and then zeros.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* newBytes, std::size_t newSize) : bytes(newBytes), size(newSize) {}

    bool hasMore() const { return size > 0; }

    /// The next bytes as they lie: any number that the type has, infinite ones too.
    template <class Number>
    Number take()
    {
        Number number{};
        const std::size_t count = size < sizeof number ? size : sizeof number;
        if (count > 0)
            std::memcpy(&number, bytes, count);
        bytes += count;
        size -= count;
        return number;
    }

    /// From 0 up to one less than `limit`, which is at most 256.
    int below(int limit) { return take<std::uint8_t>() % limit; }

    /// One of the entries of an array.
    template <class Entries>
    const auto& oneOf(const Entries& entries)
    {
        return entries[static_cast<std::size_t>(below(static_cast<int>(std::size(entries))))];
    }

private:
    const std::uint8_t* bytes;
    std::size_t size;
};
} // namespace tamor::test
