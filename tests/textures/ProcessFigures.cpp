#include "tests/textures/ProcessFigures.h"

#include <unistd.h>

#include <fstream>
#include <string>

namespace tamor::test
{
std::size_t readCalls()
{
    std::ifstream file("/proc/self/io");
    std::string name;
    std::size_t count = 0;
    while (file >> name >> count && name != "syscr:")
        continue;
    return count;
}

std::size_t residentMegabytes()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) >> 20;
}
} // namespace tamor::test
