#include "maths/Memory.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <string>

namespace tamor
{
namespace
{
/// So much is not asked for: what the system tells is an estimate, and asking takes time.
constexpr std::uint64_t smallSize = std::uint64_t{64} << 20;

/// What the system can give to programs without swapping; all there is where it does not tell.
std::uint64_t availableMemory()
{
    std::ifstream file("/proc/meminfo");
    std::string name;
    std::uint64_t kibibytes = 0;
    std::string unit;
    while (file >> name >> kibibytes && std::getline(file, unit))
        if (name == "MemAvailable:")
            return kibibytes * 1024;
    return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

/// What the process may still take of the addresses that there are, or that it was limited to.
std::uint64_t addressesLeft()
{
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return std::numeric_limits<std::ptrdiff_t>::max(); // as much as one piece can have
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const std::uint64_t taken = pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    return limit.rlim_cur > taken ? limit.rlim_cur - taken : 0;
}
} // namespace

bool memoryHolds(std::uint64_t bytes)
{
    return bytes <= smallSize || (bytes <= availableMemory() && bytes <= addressesLeft());
}

void useLargePages(void* start, std::size_t size)
{
    constexpr std::size_t largePage = std::size_t{2} << 20;
    if (std::align(largePage, largePage, start, size) != nullptr)
        madvise(start, size / largePage * largePage, MADV_HUGEPAGE);
}

void clearPages(void* start, std::size_t size)
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    auto* const end = static_cast<char*>(start) + size;
    void* whole = start;
    std::size_t left = size;
    if (std::align(page, page, whole, left) == nullptr) {
        std::memset(start, 0, size);
        return;
    }
    const std::size_t wholeSize = left / page * page;
    auto* const wholeEnd = static_cast<char*>(whole) + wholeSize;
    std::memset(start, 0, size - left);
    if (madvise(whole, wholeSize, MADV_DONTNEED) != 0)
        std::memset(whole, 0, wholeSize);
    std::memset(wholeEnd, 0, static_cast<std::size_t>(end - wholeEnd));
}
} // namespace tamor
