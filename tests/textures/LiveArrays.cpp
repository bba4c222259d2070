#include "tests/textures/LiveArrays.h"

#include <cstdlib>
#include <new>

namespace
{
int count = 0;
} // namespace

namespace tamor::test
{
int liveArrays()
{
    return count;
}
} // namespace tamor::test

// From malloc, so that the sanitisers watch these arrays as they do all others.
void* operator new[](std::size_t size)
{
    void* const array = std::malloc(size == 0 ? 1 : size);
    if (array == nullptr)
        throw std::bad_alloc();
    count++;
    return array;
}

void operator delete[](void* array) noexcept
{
    if (array != nullptr)
        count--;
    std::free(array);
}

void operator delete[](void* array, std::size_t /*size*/) noexcept
{
    operator delete[](array);
}
