/// \file
/// OpenGL calls from a file, to be made again by a program that does nothing else.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace tamor::bench
{
/// A list of calls with their arguments side by side.
class CallList
{
public:
    /// Reads what the program tamor-gui-frame-recorder wrote. Ends the program, in words, at a
    /// function that it does not know.
    explicit CallList(const std::string& file);

    /// Makes all the calls.
    void play() const;

    std::size_t size() const { return calls.size(); }

private:
    struct Call
    {
        void (*make)(const std::byte* arguments);
        std::size_t offset; ///< of its arguments
    };

    std::vector<Call> calls;
    std::vector<std::byte> arguments;
    std::deque<std::vector<std::byte>> data; ///< what the arguments point to
};
} // namespace tamor::bench
