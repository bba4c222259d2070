#include "tools/view/VirtualDisplay.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace tamor::view
{
namespace
{
bool isSet(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Becomes the server, which writes the number of its display to `numberPipe`. Only returns if
/// there is no server to become.
void becomeServer(const std::string& screen, int numberPipe)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, stream);
    const std::string number = std::to_string(numberPipe);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", screen.c_str(),
           "-nolisten", "tcp", "-noreset", nullptr);
}

std::string readLine(int descriptor)
{
    std::string line;
    char character = 0;
    while (read(descriptor, &character, 1) == 1 && character != '\n')
        line += character;
    return line;
}
} // namespace

bool hasDisplay()
{
    return isSet("DISPLAY");
}

VirtualDisplay::~VirtualDisplay()
{
    if (server <= 0)
        return;
    // A signal that comes just before the server falls asleep does not wake it, so one may not do.
    while (kill(server, SIGTERM) == 0 && waitpid(server, nullptr, WNOHANG) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

std::string VirtualDisplay::start(int width, int height)
{
    std::array<int, 2> numberPipe{};
    if (pipe(numberPipe.data()) != 0)
        return "there is no pipe for Xvfb's answer";
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    const pid_t child = fork();
    if (child == 0) {
        close(numberPipe[0]);
        becomeServer(screen, numberPipe[1]);
        _exit(errno == ENOENT ? 127 : 126);
    }
    close(numberPipe[1]);
    const std::string number = child > 0 ? readLine(numberPipe[0]) : "";
    close(numberPipe[0]);
    if (!number.empty()) {
        server = child;
        setenv("DISPLAY", (":" + number).c_str(), 1);
        return "";
    }

    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 127)
        return "there is no display, and Xvfb, which would stand in for one, is not installed "
               "(Debian's package xvfb)";
    return "there is no display, and Xvfb did not start";
}
} // namespace tamor::view
