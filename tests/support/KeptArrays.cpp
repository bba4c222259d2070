#include "tests/support/KeptArrays.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <vector>

namespace
{
bool isNoting = false;

std::vector<void*>& noted()
{
    static std::vector<void*> arrays;
    return arrays;
}
} // namespace

namespace tamor::test
{
KeptArrays::KeptArrays()
{
    isNoting = true;
}

KeptArrays::~KeptArrays()
{
    isNoting = false;
    for (void* const array : noted())
        std::free(array);
    noted().clear();
}
} // namespace tamor::test

/// From malloc, so that the sanitisers watch these arrays as they do all others.
void* operator new[](std::size_t size)
{
    void* const array = std::malloc(size == 0 ? 1 : size);
    if (array == nullptr)
        throw std::bad_alloc();
    if (isNoting)
        noted().push_back(array);
    return array;
}

void operator delete[](void* array) noexcept
{
    if (isNoting)
        std::erase(noted(), array);
    std::free(array);
}

void operator delete[](void* array, std::size_t /*size*/) noexcept
{
    operator delete[](array);
}
