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
    BumpStack() { openBlock(0); }

    /// A height to go back to.
    struct Mark
    {
        std::size_t block;
        T* next;
    };

    Mark mark() const { return {block, next}; }

    /// Gives back all that was taken since the mark. What it holds stays until it is taken again.
    void release(Mark mark)
    {
        next = mark.next;
        if (block != mark.block)
            enterBlock(mark.block);
    }

    /// `count` objects in a row, with whatever their last user left in them.
    T* take(std::size_t count)
    {
        if (static_cast<std::size_t>(end - next) < count)
            openBlock(count);
        T* const first = next;
        next += count;
        return first;
    }

private:
    struct Block
    {
        std::unique_ptr<T[]> objects;
        std::size_t size;
    };

    /// Goes on in the next block, which is made if there is none or if it is too small.
    [[gnu::noinline]] void openBlock(std::size_t count)
    {
        constexpr std::size_t usualSize = 32;
        const std::size_t following = blocks.empty() ? 0 : block + 1;
        if (following >= blocks.size() || blocks[following].size < count) {
            const std::size_t size = std::max(usualSize, count);
            blocks.resize(std::max(blocks.size(), following + 1));
            blocks[following] = {std::make_unique<T[]>(size), size};
        }
        enterBlock(following);
        next = blocks[following].objects.get();
    }

    void enterBlock(std::size_t number)
    {
        block = number;
        end = blocks[number].objects.get() + blocks[number].size;
    }

    std::vector<Block> blocks;
    std::size_t block = 0;
    /// In the current block: what is taken next, and the end.
    T* next = nullptr;
    T* end = nullptr;
};
} // namespace tamor
