/// \file
/// OpenGL calls from a file, to be made again by a program that does nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace tamor::bench
{
/// A list of calls with their arguments side by side.
class CallList
{
public:
    /// Reads what `writeCalls` wrote. Ends the program, in words, at a
    /// function that it does not know.
    explicit CallList(const std::string& file);

    // The arguments point into the data, which a move takes along and a copy does not.
    CallList(CallList&&) = default;
    CallList& operator=(CallList&&) = default;

    /// Makes all the calls.
    void play() const;

    std::size_t size() const { return calls.size(); }

    /// The calls of a frame of `widgets` widgets, which the program `recorder` draws. Empty if it did
    /// not, or made fewer than the 10 calls and more that a widget takes.
    static CallList ofFrame(const std::string& recorder, std::int64_t widgets);

private:
    CallList() = default;

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
