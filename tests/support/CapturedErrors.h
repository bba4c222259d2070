/// \file
/// What is written to the standard error stream, kept for a test to compare.
///
/// The folder tests/support/ is the tests' harness: captured streams, files of a test's own, a
/// window under a virtual display, recorded OpenGL calls, child processes and golden pictures.
#pragma once

#include <string>

namespace tamor::test
{
/// Keeps what the process writes to file descriptor 2 for as long as it lives, whoever writes it:
/// streams, `fprintf` and libraries alike.
class CapturedErrors
{
public:
    CapturedErrors();
    ~CapturedErrors();
    CapturedErrors(const CapturedErrors&) = delete;
    CapturedErrors& operator=(const CapturedErrors&) = delete;

    /// All that was written so far.
    std::string text() const;

private:
    int savedDescriptor;
    int file;
};
} // namespace tamor::test
