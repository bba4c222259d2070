/// \file
/// What the fuzz targets of the picture readers share.
#pragma once

#include "tests/support/FuzzFile.h"
#include "tests/support/KeptArrays.h"
#include "tests/textures/PlainPictures.h"

#include <iostream>
#include <sstream>
#include <string>

namespace tamor::test
{
/// Ends the program if a reader reads or prints other than the plain one did.
template <typename Read>
void compareReading(Read read, const FuzzFile& file, const PlainPicture& plain)
{
    std::ostringstream errors;
    std::streambuf* const before = std::cerr.rdbuf(errors.rdbuf());
    const KeptArrays keptArrays;
    Image image;
    const bool wasRead = read(image, {file.path(), 0});
    std::cerr.rdbuf(before);

    if (wasRead != plain.wasRead || errors.str() != plain.errors)
        failFuzzing("the plain reader prints: " + plain.errors);
    const std::string found = difference(image, plain);
    if (!found.empty())
        failFuzzing("the plain reader differs: " + found);
}
} // namespace tamor::test
