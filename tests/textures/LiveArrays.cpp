#include "tests/textures/LiveArrays.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <new>
#include <unordered_map>

namespace
{
int count = 0;
std::size_t bytes = 0;
bool guards = false;

/// Pages that hold a guarded array, with one behind them that nobody may touch.
struct GuardedPages
{
    void* start = nullptr;
    std::size_t size = 0;
};

/// By the array that lies in them.
std::unordered_map<void*, GuardedPages>& guardedPages()
{
    static std::unordered_map<void*, GuardedPages> pages;
    return pages;
}

void* newGuardedArray(std::size_t size)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t whole = (size + page - 1) / page * page;
    void* const start =
        mmap(nullptr, whole + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED)
        throw std::bad_alloc();
    mprotect(static_cast<char*>(start) + whole, page, PROT_NONE);
    void* const array = static_cast<char*>(start) + (whole - size);
    guardedPages()[array] = {start, whole + page};
    return array;
}

/// From malloc, so that the sanitisers watch these arrays as they do all others.
void* newArray(std::size_t size)
{
    if (guards)
        return newGuardedArray(size);
    return std::malloc(size == 0 ? 1 : size);
}
} // namespace

namespace tamor::test
{
int liveArrays()
{
    return count;
}

std::size_t liveArrayBytes()
{
    return bytes;
}

GuardedArrays::GuardedArrays()
{
    guards = true;
}

GuardedArrays::~GuardedArrays()
{
    guards = false;
}
} // namespace tamor::test

void* operator new[](std::size_t size)
{
    void* const array = newArray(size);
    if (array == nullptr)
        throw std::bad_alloc();
    count++;
    bytes += guards ? 0 : malloc_usable_size(array);
    return array;
}

void operator delete[](void* array) noexcept
{
    if (array != nullptr)
        count--;
    const auto pages = guardedPages().find(array);
    if (pages == guardedPages().end()) {
        bytes -= malloc_usable_size(array);
        std::free(array);
        return;
    }
    munmap(pages->second.start, pages->second.size);
    guardedPages().erase(pages);
}

void operator delete[](void* array, std::size_t /*size*/) noexcept
{
    operator delete[](array);
}
