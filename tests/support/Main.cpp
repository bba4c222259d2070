/// \file
/// The entry of every test program.
#include "tests/support/Environment.h"

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    tamor::test::pinEnvironment();
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
