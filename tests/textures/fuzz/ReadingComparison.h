/// \file
/// What the fuzz targets of the picture readers share.
#pragma once

#include "tests/support/FuzzFile.h"
#include "tests/support/KeptArrays.h"
#include "tests/support/PrintedBy.h"
#include "tests/textures/PlainPictures.h"

#include <string>

namespace tamor::test
{
/// Ends the program if a reader reads or prints other than the plain one did.
template <typename Read>
void compareReading(Read read, const FuzzFile& file, const PlainPicture& plain)
{
    const KeptArrays keptArrays;
    Image image;
    bool wasRead = false;
    const std::string errors = printedBy([&] { wasRead = read(image, {file.path(), 0}); });

    if (wasRead != plain.wasRead || errors != plain.errors)
        failFuzzing("the plain reader prints: " + plain.errors);
    const std::string found = difference(image, plain);
    if (!found.empty())
        failFuzzing("the plain reader differs: " + found);
}
} // namespace tamor::test
