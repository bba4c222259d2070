#include "kernel/Diagnostics.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace tamor
{
namespace
{
/// One signal and its words.
struct SignalInfo
{
    std::int32_t number;
    char name[10];
    char description[64];
};

/// How long an exit from within a signal handler may take, in seconds.
constexpr unsigned exitLimit = 10;

void endAtOnce(int /*signal*/)
{
    _exit(1);
}
} // namespace

CallStack callStack;

void enableCallStack()
{
    callStack.enabled = true;
}

void pushCall(const std::string& name)
{
    if (callStack.enabled)
        callStack.frames.push_back(name);
}

void popCall()
{
    if (callStack.enabled && !callStack.frames.empty())
        callStack.frames.pop_back();
}

bool dumpCallStack()
{
    std::size_t number = callStack.frames.size();
    for (auto frame = callStack.frames.rbegin(); frame != callStack.frames.rend(); ++frame)
        std::cerr << std::to_string(number--) << " -> " << *frame << std::endl;
    return true;
}

bool installSignalHandlers()
{
    for (const int number : {SIGQUIT, SIGHUP, SIGINT, SIGILL, SIGABRT, SIGSEGV})
        std::signal(number, signalHandler);
    return true;
}

// Meant: the handler uses a stream and exit(), which a signal handler should not, and prints the
// heading of a trace without a trace. `SignalHandler.ReportsAnInterruptAndEndsWithStatus1` holds
// it.
void signalHandler(int signal)
{
    const SignalInfo signals[] = {
        {1, "SIGHUP", "Hangup (POSIX)"},
        {2, "SIGINT", "Terminal interrupt (ANSI)"},
        {3, "SIGQUIT", "Terminal quit (POSIX)"},
        {4, "SIGILL", "Illegal instruction (ANSI)"},
        {5, "SIGTRAP", "Trace trap (POSIX)"},
        {6, "SIGIOT", "IOT Trap (4.2 BSD)"},
        {7, "SIGBUS", "BUS error (4.2 BSD)"},
        {8, "SIGFPE", "Floating point exception (ANSI)"},
        {9, "SIGKILL", "Kill(can't be caught or ignored) (POSIX)"},
        {10, "SIGUSR1", "User defined signal 1 (POSIX)"},
        {11, "SIGSEGV", "Invalid memory segment access (ANSI)"},
        {12, "SIGUSR2", "User defined signal 2 (POSIX)"},
        {13, "SIGPIPE", "Write on a pipe with no reader, Broken pipe (POSIX)"},
        {14, "SIGALRM", "Alarm clock (POSIX)"},
        {15, "SIGTERM", "Termination (ANSI)"},
        {16, "SIGSTKFLT", "Stack fault"},
        {17, "SIGCHLD", "Child process has stopped or exited, changed (POSIX)"},
        {18, "SIGCONT", "Continue executing, if stopped (POSIX)"},
        {19, "SIGSTOP", "Stop executing(can't be caught or ignored) (POSIX)"},
        {20, "SIGTSTP", "Terminal stop signal (POSIX)"},
        {21, "SIGTTIN", "Background process trying to read, from TTY (POSIX)"},
        {22, "SIGTTOU", "Background process trying to write, to TTY (POSIX)"},
        {23, "SIGURG", "Urgent condition on socket (4.2 BSD)"},
        {24, "SIGXCPU", "CPU limit exceeded (4.2 BSD)"},
        {25, "SIGXFSZ", "File size limit exceeded (4.2 BSD)"},
        {26, "SIGVTALRM", "Virtual alarm clock (4.2 BSD)"},
        {27, "SIGPROF", "Profiling alarm clock (4.2 BSD)"},
        {28, "SIGWINCH", "Window size change (4.3 BSD, Sun)"},
        {29, "SIGIO", "I/O now possible (4.2 BSD)"},
        {30, "SIGPWR", "Power failure restart (System V)"},
    };
    for (const SignalInfo& info : signals) {
        if (info.number == signal)
            std::cerr << "Caught signal " << info.name << " - " << info.description << std::endl;
    }
    std::cerr << "Stack Trace:" << std::endl;
    std::signal(SIGALRM, endAtOnce);
    alarm(exitLimit);
    std::exit(1);
}

bool assertTrue(const std::string& message, bool condition)
{
    if (!condition) {
        std::cerr << "Assert failed: " << message << std::endl;
        std::exit(0);
    }
    return condition;
}
} // namespace tamor
