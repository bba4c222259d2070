/// \file
/// A program in a terminal.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tamor::test
{
/// Runs a program whose three streams are a pseudo-terminal, and types into it. The program is
/// ended if it outlives this object.
class Terminal
{
public:
    explicit Terminal(const std::vector<std::string>& arguments);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Sends keys as they stand: "\r" is the return key, "\t" the tab key, "\x03" Ctrl-C, "\x04"
    /// Ctrl-D, "\x1b[A" the key up.
    void type(const std::string& keys) const;

    /// Waits until what was written since the last wait that succeeded holds `text`.
    bool shows(const std::string& text);

    /// Waits until the program takes key by key what is typed, which it does a little behind its
    /// prompt: until then the terminal itself would take some keys.
    bool takesKeys() const;

    /// Waits for the end of the program. \return its exit status, or -1 if it does not end
    int end();

    /// All that was written.
    const std::string& written() const { return output; }

private:
    void readMore();

    pid_t process = -1;
    int terminal = -1;
    std::string output;
    std::size_t seen = 0;
};
} // namespace tamor::test
