/// \file
/// The examples as programs of their own.
#pragma once

#include "tests/support/Picture.h"

#include <string>
#include <vector>

namespace tamor::test
{
/// Runs an example to its end on a display that nobody sees, in the test's own directory.
/// \return its exit status. Anything but `expectedErrors` on its error stream fails the test.
int runExample(const std::vector<std::string>& arguments, const std::string& expectedErrors = "");

/// Reads the PPM file that an example wrote; a picture of size 0 if it is none.
Picture readScreenshot(const std::string& path);
} // namespace tamor::test
