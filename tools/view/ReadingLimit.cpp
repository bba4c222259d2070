#include "tools/view/ReadingLimit.h"

#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <tuple>

namespace tamor::view
{
namespace
{
constexpr unsigned int seconds = 5;

// The handler may not allocate, so its words are made before.
std::string lastWords;

void endProcess(int)
{
    std::ignore = write(STDERR_FILENO, lastWords.data(), lastWords.size());
    _exit(1);
}
} // namespace

ReadingLimit::ReadingLimit(const std::string& file)
{
    lastWords = "tamor-view: " + file + ": the engine's reader does not come back from this file\n";
    std::signal(SIGALRM, endProcess);
    alarm(seconds);
}

ReadingLimit::~ReadingLimit()
{
    alarm(0);
}
} // namespace tamor::view
