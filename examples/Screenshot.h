/// \file
/// A picture of what an example drew.
#pragma once

#include <string>

/// Writes the back buffer to a PPM file. Prints the path and the reason if that cannot be opened.
void writeScreenshot(const std::string& path);
