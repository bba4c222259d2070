/// \file
/// What pictures of all formats share.
#pragma once

#include "tools/check/Source.h"

namespace tamor::check
{
/// Reports sides that are 0 or no powers of two.
void checkSides(Source& source, std::string_view code, std::size_t width, std::size_t height);
} // namespace tamor::check
