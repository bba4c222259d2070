/// \file
/// The entry of every test program.
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    // Pictures are compared with those of Mesa's software renderer, whatever the machine has.
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
