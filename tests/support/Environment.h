/// \file
/// What the tests' results depend on besides the code.
#pragma once

namespace tamor::test
{
/// Sets, for this process and those that it starts, all that pictures and texts depend on: the
/// renderer and the code that it makes, the rules by which letters are drawn, the locale.
void pinEnvironment();
} // namespace tamor::test
