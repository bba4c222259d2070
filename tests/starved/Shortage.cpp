#include "tests/starved/Shortage.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

namespace
{
// Only the thread that asks for a shortage has one: those of libraries are left alone.
thread_local bool isShort = false;
thread_local bool isLasting = false;
thread_local bool hasRefused = false;
thread_local int granted = 0;

bool refuses()
{
    if (!isShort || granted-- > 0)
        return false;
    granted = 0;
    isShort = isLasting;
    hasRefused = true;
    return true;
}
} // namespace

namespace tamor::test
{
void Shortage::begin() const
{
    granted = newGranted;
    isLasting = newIsLasting;
    hasRefused = false;
    isShort = true;
}

void Shortage::end()
{
    isShort = false;
    isMet = hasRefused;
}

int openDescriptors()
{
    return static_cast<int>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}
} // namespace tamor::test

// From malloc, so that the sanitisers watch this memory as they do all other. Not to be inlined, or
// the compiler sees a `new` that is answered by a `free`.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (!refuses()) {
        if (void* const memory = std::malloc(size != 0 ? size : 1))
            return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new[](std::size_t size)
{
    return operator new(size);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
