/// \file
/// The evaluator's working storage. Not for hosts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace tamor
{
/// Objects that are taken in rows and given back in the reverse order. Their places never move, and
/// they are made once and used again and again: taking one costs no constructor and no allocation.
template <typename T>
class BumpStack
{
public:
    /// A height to go back to.
    struct Mark
    {
        std::size_t block = 0;
        std::size_t used = 0;
    };

    Mark mark() const { return top; }

    /// Gives back all that was taken since the mark. What it holds stays until it is taken again.
    void release(Mark mark) { top = mark; }

    /// `count` objects in a row, with whatever their last user left in them.
    T* take(std::size_t count)
    {
        if (top.block == blocks.size() || blocks[top.block].size - top.used < count)
            openBlock(count);
        T* const first = blocks[top.block].objects.get() + top.used;
        top.used += count;
        return first;
    }

private:
    struct Block
    {
        std::unique_ptr<T[]> objects;
        std::size_t size;
    };

    void openBlock(std::size_t count)
    {
        constexpr std::size_t usualSize = 32;
        if (top.block < blocks.size())
            ++top.block;
        top.used = 0;
        if (top.block < blocks.size() && blocks[top.block].size >= count)
            return;
        const std::size_t size = std::max(usualSize, count);
        Block block{std::make_unique<T[]>(size), size};
        if (top.block < blocks.size())
            blocks[top.block] = std::move(block);
        else
            blocks.push_back(std::move(block));
    }

    std::vector<Block> blocks;
    Mark top;
};
} // namespace tamor
