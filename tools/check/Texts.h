/// \file
/// What becomes of a layout's words when they are drawn.
#pragma once

#include "tools/check/FieldReader.h"

namespace tamor::check
{
/// Reports what a text loses between the file and the screen.
/// \param wasCut  the reader left some of the line
void checkText(Source& source, const Field& text, bool wasCut);
} // namespace tamor::check
