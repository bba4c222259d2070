#include "tests/tools/script/Terminal.h"

#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <tuple>

namespace tamor::test
{
Terminal::Terminal(const std::vector<std::string>& arguments)
{
    std::vector<std::string> words = arguments;
    std::vector<char*> pointers;
    std::transform(words.begin(), words.end(), std::back_inserter(pointers),
                   [](std::string& word) { return word.data(); });
    pointers.push_back(nullptr);
    winsize size{24, 120, 0, 0};
    process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0) {
        setenv("TERM", "dumb", 1);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    fcntl(terminal, F_SETFL, O_NONBLOCK);
}

Terminal::~Terminal()
{
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    close(terminal);
}

void Terminal::type(const std::string& keys) const
{
    std::ignore = write(terminal, keys.data(), keys.size());
}

void Terminal::readMore()
{
    std::array<char, 4096> buffer;
    ssize_t size = 0;
    while ((size = read(terminal, buffer.data(), buffer.size())) > 0)
        output.append(buffer.data(), static_cast<std::size_t>(size));
}

bool Terminal::shows(const std::string& text)
{
    return becomesTrue([&] {
        readMore();
        const std::size_t at = output.find(text, seen);
        if (at == std::string::npos)
            return false;
        seen = at + text.size();
        return true;
    });
}

bool Terminal::takesKeys() const
{
    return becomesTrue([&] {
        termios settings{};
        return tcgetattr(terminal, &settings) == 0 && (settings.c_lflag & ICANON) == 0;
    });
}

int Terminal::end()
{
    int status = 0;
    const bool hasEnded = becomesTrue([&] {
        readMore();
        return waitpid(process, &status, WNOHANG) == process;
    });
    if (!hasEnded)
        return -1;
    process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
} // namespace tamor::test
