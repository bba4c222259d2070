/// \file
/// How many arrays the program holds, for tests of storage that is left or let go on purpose.
#pragma once

namespace tamor::test
{
/// The arrays from array new that have not been freed. This program's array new counts them.
int liveArrays();
} // namespace tamor::test
