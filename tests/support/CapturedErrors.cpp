#include "tests/support/CapturedErrors.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace tamor::test
{
CapturedErrors::CapturedErrors() : savedDescriptor(dup(STDERR_FILENO))
{
    std::cerr.flush();
    std::fflush(stderr);
    char path[] = "/tmp/tamor-errors-XXXXXX";
    file = mkstemp(path);
    unlink(path);
    dup2(file, STDERR_FILENO);
}

CapturedErrors::~CapturedErrors()
{
    std::cerr.flush();
    std::fflush(stderr);
    dup2(savedDescriptor, STDERR_FILENO);
    close(savedDescriptor);
    close(file);
}

std::string CapturedErrors::text() const
{
    std::cerr.flush();
    std::fflush(stderr);
    struct stat status
    {};
    fstat(file, &status);
    std::string result(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t count = pread(file, result.data(), result.size(), 0);
    result.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return result;
}
} // namespace tamor::test
