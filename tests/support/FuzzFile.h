/// \file
/// A file of a fuzz target's bytes, and what is printed while it is read.
#pragma once

#include <string>

namespace tamor::test
{
/// A file without a place in any folder, for as long as it lives.
class FuzzFile
{
public:
    explicit FuzzFile(const std::string& bytes);
    ~FuzzFile();
    FuzzFile(const FuzzFile&) = delete;
    FuzzFile& operator=(const FuzzFile&) = delete;

    /// By which it can be opened.
    std::string path() const;

private:
    int descriptor;
};

/// Ends the program after saying what went wrong, as a fuzz target that has found something does.
[[noreturn]] void failFuzzing(const std::string& what);
} // namespace tamor::test
