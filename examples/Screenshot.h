/// \file
/// A picture of what an example drew.
#pragma once

#include <string>

/// Writes the back buffer to a PPM file.
void writeScreenshot(const std::string& path);
