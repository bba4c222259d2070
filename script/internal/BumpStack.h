/// \file
/// Storage for what is made and given back in order. Not for hosts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace tamor::script
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
        std::size_t block;
        T* next;
    };

    Mark mark() const { return {block, next}; }

    /// Gives back all that was taken since the mark. What it holds stays until it is taken again.
    void release(Mark mark)
    {
        next = mark.next;
        if (block != mark.block || next == nullptr)
            enterBlock(mark.block);
    }

    void clear() { release({0, nullptr}); }

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
        constexpr std::size_t leastSize = 8;
        constexpr std::size_t usualSize = 64;
        const std::size_t following = blocks.empty() ? 0 : block + 1;
        if (following >= blocks.size() || blocks[following].size < count) {
            const std::size_t size = std::max(following == 0 ? leastSize : usualSize, count);
            blocks.resize(std::max(blocks.size(), following + 1));
            blocks[following] = {std::make_unique<T[]>(size), size};
        }
        next = nullptr;
        enterBlock(following);
    }

    /// The block in which `next` stands, or is to stand at the beginning.
    void enterBlock(std::size_t number)
    {
        block = number;
        if (blocks.empty())
            return;
        T* const first = blocks[number].objects.get();
        end = first + blocks[number].size;
        if (next == nullptr)
            next = first;
    }

    std::vector<Block> blocks;
    std::size_t block = 0;
    /// In the current block: what is taken next, and the end.
    T* next = nullptr;
    T* end = nullptr;
};
} // namespace tamor::script
