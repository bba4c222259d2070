#include "tests/support/HeldBytes.h"

#include <malloc.h>

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
// Of the sanitiser's library; its header does not come with every compiler.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace tamor::test
{
std::int64_t heldBytes()
{
#if defined(__SANITIZE_ADDRESS__)
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
#endif
}
} // namespace tamor::test
