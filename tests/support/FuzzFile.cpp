#include "tests/support/FuzzFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace tamor::test
{
FuzzFile::FuzzFile(const std::string& bytes) : descriptor(memfd_create("fuzzed", MFD_CLOEXEC))
{
    if (write(descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
        failFuzzing("a file cannot be written");
}

FuzzFile::~FuzzFile()
{
    close(descriptor);
}

std::string FuzzFile::path() const
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

void failFuzzing(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}
} // namespace tamor::test
