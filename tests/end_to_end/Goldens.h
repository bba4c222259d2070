/// \file
/// The pictures of the demonstration that were found good.
#pragma once

#include "tests/support/Picture.h"

#include <gtest/gtest.h>

#include <string>

namespace tamor::test
{
/// Whether `picture` shows what tests/end_to_end/goldens/`name`.png shows, as `matchesGolden` does.
testing::AssertionResult showsTheSame(const Picture& picture, const std::string& name);
} // namespace tamor::test
