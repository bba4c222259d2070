#include "tests/support/VirtualDisplay.h"

#include "tests/support/ChildProcess.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace tamor::test
{
namespace
{
constexpr int startLimit = 60'000; // milliseconds
} // namespace

VirtualDisplay::VirtualDisplay() : owner(getpid())
{
    int numberPipe[2];
    if (pipe(numberPipe) != 0) {
        std::perror("a pipe for Xvfb");
        std::exit(2);
    }
    server = fork();
    if (server == 0) {
        // The server must not outlive a test that is killed.
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != owner)
            _exit(2);
        close(numberPipe[0]);
        const std::string descriptor = std::to_string(numberPipe[1]);
        // Xvfb's own remarks are no part of a test's output.
        if (std::freopen("/dev/null", "w", stderr) == nullptr)
            _exit(2);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", "1024x768x24",
               "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
        _exit(2);
    }
    close(numberPipe[1]);

    // The number comes, with a newline, when the server is ready for clients.
    displayName = ":";
    char digit = 0;
    pollfd number = {numberPipe[0], POLLIN, 0};
    while (poll(&number, 1, startLimit) == 1 && read(numberPipe[0], &digit, 1) == 1 &&
           digit != '\n')
        displayName += digit;
    close(numberPipe[0]);
    if (digit != '\n') {
        std::fputs("Xvfb did not start: install the package xvfb\n", stderr);
        kill(server, SIGKILL);
        std::exit(2);
    }
}

VirtualDisplay::~VirtualDisplay()
{
    // A copy of the process that exits leaves the server to the process that started it.
    if (getpid() != owner)
        return;
    // A signal that comes just before the server falls asleep does not wake it, so one may not do.
    const bool hasEnded = becomesTrue([this] {
        kill(server, SIGTERM);
        return waitpid(server, nullptr, WNOHANG) != 0;
    });
    if (hasEnded)
        return;
    kill(server, SIGKILL);
    waitpid(server, nullptr, 0);
}

void useTestDisplay()
{
    static bool chosen = false;
    if (chosen)
        return;
    chosen = true;
    if (const char* shared = std::getenv("TAMOR_TEST_DISPLAY")) {
        setenv("DISPLAY", shared, 1);
        return;
    }
    static const auto own = std::make_unique<VirtualDisplay>();
    setenv("DISPLAY", own->name().c_str(), 1);
}
} // namespace tamor::test
