#include "tools/script/Interrupt.h"

#include "tools/script/Watch.h"

#include <csignal>

namespace tamor::scripts
{
namespace
{
volatile std::sig_atomic_t wasInterrupted = 0;

void note(int)
{
    wasInterrupted = 1;
    Watch::interrupt(true);
}
} // namespace

void catchInterrupts()
{
    struct sigaction action = {};
    action.sa_handler = note;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0; // a line that is being read is to end
    sigaction(SIGINT, &action, nullptr);
}

bool takeInterrupt()
{
    const bool result = wasInterrupted != 0;
    wasInterrupted = 0;
    Watch::interrupt(false);
    return result;
}
} // namespace tamor::scripts
