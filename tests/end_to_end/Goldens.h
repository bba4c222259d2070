/// \file
/// Pictures of text, compared more strictly than `matchesGolden` does.
#pragma once

#include "tests/support/Picture.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
/// Whether `picture` shows what tests/end_to_end/goldens/`name`.png shows. A pixel differs when a
/// channel is more than 32 of 255 off; six may, which is the rounding of an edge and less than the
/// smallest letter. With TAMOR_UPDATE_GOLDENS set, the file is written instead.
testing::AssertionResult showsTheSame(const Picture& picture, const std::string& name);
} // namespace tamor::test
