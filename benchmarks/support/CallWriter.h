/// \file
/// OpenGL calls into a file, by a program that has the tests' recorder in it.
#pragma once

#include "tests/support/GLRecorder.h"

#include <string>
#include <vector>

namespace tamor::bench
{
/// Writes the calls for a `CallList`, in the order in which they were made.
/// \return false if the file was not written
bool writeCalls(const std::vector<test::RecordedCall>& calls, const std::string& file);
} // namespace tamor::bench
