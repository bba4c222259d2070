/// \file
/// The OpenGL calls that a program makes, frame by frame, as apitrace sees them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace tamor::test
{
/// One program's calls, in a file.
class Trace
{
public:
    /// \param file  its path, absolute, which the program writes
    explicit Trace(std::string file) : path(std::move(file)) {}

    /// The words in front of the program's own that have it traced, which needs `environment`.
    std::vector<std::string> tracer() const { return {"apitrace", "trace", "-o", path}; }
    static std::map<std::string, std::string> environment();

    /// The calls before each showing of a frame and those after the last, as apitrace writes them:
    /// whole floats, with what pointers point to and what was returned. The showing is left out.
    std::vector<std::vector<std::string>> frames() const;

private:
    std::string path;
};
} // namespace tamor::test
